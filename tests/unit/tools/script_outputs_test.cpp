// Every script of tests/scripts and tests/programs with an .expected file beside it through `run`. A line "!
// TEXT" there stands for a message, every other for a printed line.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <vector>

#include "support/process.h"

namespace quorvelin::tool {
namespace {

// The scripts, by their .expected files.
std::vector<std::filesystem::path> expectations() {
    std::vector<std::filesystem::path> found;
    for (const char* folder : {"scripts", "programs"}) {
        const std::filesystem::path path = std::filesystem::path(QUORVELIN_TESTS_FOLDER) / folder;
        if (!std::filesystem::exists(path)) continue;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            if (entry.path().extension() == ".expected") found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

class ScriptOutput : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(ScriptOutput, IsAsExpected) {
    ::setenv("TZ", "UTC", 1);
    const std::string script = std::filesystem::path(GetParam()).replace_extension(".js").string();
    const support::ProcessResult result = support::runProcess(QUORVELIN_PROGRAM_FILE, {"run", script});
    EXPECT_EQ(result.status, 0);

    std::string printed;
    size_t position = 0;
    std::istringstream lines(support::readFile(GetParam().string()));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("! ")) {
            printed += line + '\n';
            continue;
        }
        position = result.errors.find(": " + line.substr(2) + "\n", position);
        ASSERT_NE(position, std::string::npos) << line << " is not among:\n" << result.errors;
        ++position;
    }
    EXPECT_EQ(result.output, printed) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptOutput, testing::ValuesIn(expectations()),
                         [](const testing::TestParamInfo<std::filesystem::path>& information) {
                             return information.param.stem().string();
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScriptOutput);

}  // namespace
}  // namespace quorvelin::tool
