// The commands that README.md and docs/*.md show, run: in blocks fenced as `sh`, a line "$ COMMAND" is
// followed by all that the command writes. "$ cat FILE" stands for a file with the lines that follow.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <vector>

#include "support/process.h"

namespace quorvelin::tool {
namespace {

const std::filesystem::path kProject = std::filesystem::path(QUORVELIN_TESTS_FOLDER).parent_path();

struct ShownCommand {
    int line;
    std::string command;
    std::string output;
};

std::vector<ShownCommand> commandsOf(const std::string& document) {
    std::vector<ShownCommand> commands;
    bool inside = false;
    bool follows = false;  // a command of the same block
    int number = 0;
    std::istringstream lines(document);
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.starts_with("```")) {
            inside = !inside && line == "```sh";
            follows = false;
        } else if (inside && line.starts_with("$ ")) {
            commands.push_back({number, line.substr(2), ""});
            follows = true;
        } else if (follows) {
            commands.back().output += line + '\n';
        }
    }
    return commands;
}

std::vector<std::filesystem::path> documents() {
    std::vector<std::filesystem::path> found = {kProject / "README.md"};
    for (const auto& entry : std::filesystem::directory_iterator(kProject / "docs")) {
        if (entry.path().extension() == ".md") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

class DocumentCommands : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(DocumentCommands, WriteWhatIsShown) {
    const support::TemporaryFolder folder;
    const std::string programs = std::filesystem::path(QUORVELIN_PROGRAM_FILE).parent_path().string();
    for (const ShownCommand& shown : commandsOf(support::readFile(GetParam().string()))) {
        const std::string cat = "cat ";
        if (shown.command.starts_with(cat)) {
            folder.write(shown.command.substr(cat.size()), shown.output);
            continue;
        }
        const std::string line =
            "cd '" + folder.path() + "' && PATH='" + programs + "':$PATH && { " + shown.command + "; } 2>&1";
        EXPECT_EQ(support::runProcess("/bin/sh", {"-c", line}).output, shown.output)
            << GetParam().filename().string() << ", line " << shown.line << ": " << shown.command;
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentCommands, testing::ValuesIn(documents()),
                         [](const testing::TestParamInfo<std::filesystem::path>& information) {
                             std::string name = information.param.stem().string();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(DocumentCommands, TheCommandLineIsFullOfThem) {
    EXPECT_GT(commandsOf(support::readFile((kProject / "docs" / "command-line.md").string())).size(), 20u);
}

TEST(DocumentCommands, AreReadWithTheirOutput) {
    const std::vector<ShownCommand> commands = commandsOf(
        "$ no\n```sh\nusage\n$ first\none\ntwo\n$ second\n```\n$ no\n```text\n$ no\n```\n```sh\n$ "
        "third\n```\n");
    ASSERT_EQ(commands.size(), 3u);
    EXPECT_EQ(commands[0].command, "first");
    EXPECT_EQ(commands[0].output, "one\ntwo\n");
    EXPECT_EQ(commands[0].line, 4);
    EXPECT_EQ(commands[1].output, "");
    EXPECT_EQ(commands[2].command, "third");
}

}  // namespace
}  // namespace quorvelin::tool
