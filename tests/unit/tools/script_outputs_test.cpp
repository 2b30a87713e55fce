// Every script of tests/scripts with an .expected file beside it through `run`.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "support/process.h"

namespace quorvelin::tool {
namespace {

// Paths without their endings.
std::vector<std::string> scripts() {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(QUORVELIN_TESTS_FOLDER) + "/scripts")) {
        std::filesystem::path script = entry.path();
        if (script.extension() != ".expected") continue;
        names.push_back(script.replace_extension().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ScriptOutput : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override { ::setenv("TZ", "UTC", 1); }
};

TEST_P(ScriptOutput, IsAsExpected) {
    const support::ProcessResult result =
        support::runProcess(QUORVELIN_PROGRAM_FILE, {"run", GetParam() + ".js"});
    EXPECT_EQ(result.output, support::readFile(GetParam() + ".expected"));
    EXPECT_EQ(result.status, 0) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptOutput, testing::ValuesIn(scripts()),
                         [](const testing::TestParamInfo<std::string>& information) {
                             return std::filesystem::path(information.param).filename().string();
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScriptOutput);

}  // namespace
}  // namespace quorvelin::tool
