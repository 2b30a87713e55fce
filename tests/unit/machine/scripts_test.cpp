// The scripts of tests/scripts that have an expected output: each is run on a machine, and by the program
// where there is one, and must print exactly that, without a message.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::path(QUORVELIN_TESTS_FOLDER) / "scripts";

std::vector<std::string> scriptsWithOutput() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(kFolder)) {
        if (entry.path().extension() == ".expected") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

class ExampleScripts : public testing::TestWithParam<std::string> {};

TEST_P(ExampleScripts, PrintsWhatIsExpected) {
    const std::string source = contentOf(kFolder / (GetParam() + ".js"));
    const auto transcript = std::make_shared<support::Transcript>();
    const Owned<support::RecordingMachine> machine(new support::RecordingMachine(transcript));
    const BString text = support::textOf(std::u16string(source.begin(), source.end()));
    const Value value(machine->evaluateText(text, nullptr));
    EXPECT_EQ(transcript->takeMessagesWithPositions(), "");
    std::string printed;
    for (const std::string& line : transcript->printed) printed += line + "\n";
    EXPECT_EQ(printed, contentOf(kFolder / (GetParam() + ".expected")));
    EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
}

TEST_P(ExampleScripts, PrintsTheSameWhenTheProgramRunsIt) {
    if (!fs::exists(QUORVELIN_PROGRAM_FILE)) GTEST_SKIP() << "the program is not built";
    const std::string command =
        "'" QUORVELIN_PROGRAM_FILE "' run '" + (kFolder / (GetParam() + ".js")).string() + "' 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string printed;
    std::array<char, 4096> block;
    while (const size_t count = fread(block.data(), 1, block.size(), pipe))
        printed.append(block.data(), count);
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_EQ(printed, contentOf(kFolder / (GetParam() + ".expected")));
}

INSTANTIATE_TEST_SUITE_P(Scripts, ExampleScripts, testing::ValuesIn(scriptsWithOutput()),
                         [](const testing::TestParamInfo<std::string>& information) {
                             return information.param;
                         });

TEST(ExampleScriptsFolder, HoldsTenScriptsWithExpectedOutput) {
    EXPECT_GE(scriptsWithOutput().size(), 10u);
}

}  // namespace
}  // namespace quorvelin
