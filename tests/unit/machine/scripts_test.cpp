// The scripts of tests/scripts that have an expected output: each is run on a machine and must print exactly
// that, without a message.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

const std::string kFolder = std::string(QUORVELIN_TESTS_FOLDER) + "/scripts/";

std::vector<std::string> scriptsWithOutput() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        if (entry.path().extension() == ".expected") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ExampleScripts : public testing::TestWithParam<std::string> {};

TEST_P(ExampleScripts, PrintWhatIsExpected) {
    const std::string source = support::readFile(kFolder + GetParam() + ".js");
    ASSERT_FALSE(source.empty());
    const auto transcript = std::make_shared<support::Transcript>();
    const Owned<support::RecordingMachine> machine(new support::RecordingMachine(transcript));
    const BString text = support::textOf(std::u16string(source.begin(), source.end()));
    const Value value(machine->evaluateText(text, nullptr));
    EXPECT_EQ(transcript->takeMessagesWithPositions(), "");
    std::string printed;
    for (const std::string& line : transcript->printed) printed += line + "\n";
    EXPECT_EQ(printed, support::readFile(kFolder + GetParam() + ".expected"));
    EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
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
