// The programs of tests/programs. Each has a file beside it with the lines that it prints; a message,
// "! TEXT" there, is as much a part of what it says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "documents/script_runs.h"
#include "support/process.h"

namespace quorvelin::documents {
namespace {

std::vector<std::filesystem::path> filesEndingIn(const char* extension) {
    std::vector<std::filesystem::path> found;
    const auto folder = std::filesystem::path(QUORVELIN_TESTS_FOLDER) / "programs";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

// The account that a file of expected lines stands for.
Account expectedIn(const std::string& text) {
    Account account;
    for (const std::string& line : linesOf(text)) {
        account.push_back(line.starts_with("! ") ? line : line.empty() ? "->" : "-> " + line);
    }
    return account;
}

class Program : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Program, PrintsWhatIsExpected) {
    const std::string script = support::readFile(GetParam().string());
    const std::string expected =
        support::readFile(std::filesystem::path(GetParam()).replace_extension(".expected").string());
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(difference(expectedIn(expected), accountOf(script)), "");
}

INSTANTIATE_TEST_SUITE_P(Scripts, Program, testing::ValuesIn(filesEndingIn(".js")),
                         [](const testing::TestParamInfo<std::filesystem::path>& information) {
                             return information.param.stem().string();
                         });

TEST(Programs, EveryExpectationHasItsProgram) {
    for (const std::filesystem::path& file : filesEndingIn(".expected")) {
        EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(file).replace_extension(".js"))) << file;
    }
}

}  // namespace
}  // namespace quorvelin::documents
