// The scripts of tests/scripts through `format` and `compile`.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <vector>

#include "quorvelin/syntax_commands.h"
#include "support/process.h"

namespace quorvelin::tool {
namespace {

// What becomes of a formatted text that is formatted again. Mostly it stays as it is. The written form loses
// some of what the tree holds, and then the second text differs and stays as it is from there on, or cannot
// be parsed.
enum class FormattedAgain { same, settles, isNoScript };

struct Exception {
    FormattedAgain again;
    const char* reason;
};

const std::map<std::string, Exception> kExceptions = {
    {"absent_operands.js", {FormattedAgain::settles, "(none) for an absent operand reads back as a name"}},
    {"argument_groups.js", {FormattedAgain::settles, "a comma or an operator in parentheses loses them"}},
    {"arrays.js", {FormattedAgain::isNoScript, "array literals are written without brackets"}},
    {"defaults.js", {FormattedAgain::isNoScript, "a default clause is written as case ((default))"}},
    {"empty_parts.js", {FormattedAgain::isNoScript, "an absent parameter list is written as (none)"}},
    {"escaped_characters.js", {FormattedAgain::settles, "a tab in a string reads back as a blank"}},
    {"escaped_nul.js", {FormattedAgain::isNoScript, "U+0000 ends a text"}},
    {"escaped_quotes.js", {FormattedAgain::isNoScript, "nothing in strings is escaped"}},
    {"nested_block.js", {FormattedAgain::settles, "a block gets no braces of its own"}},
    {"single_statements.js",
     {FormattedAgain::settles, "a single statement gets a list when it is read back"}},
};

std::vector<std::string> scripts() {
    std::vector<std::string> names;
    const std::filesystem::path folder = std::filesystem::path(QUORVELIN_TESTS_FOLDER) / "scripts";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".js") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string scriptText(const std::string& name) {
    return support::readFile(std::string(QUORVELIN_TESTS_FOLDER) + "/scripts/" + name);
}

// The formatted text; "error" when it could not be parsed.
std::string formatted(const std::string& text) {
    std::string result;
    std::string ignored;
    Output results(&result);
    Output messages(&ignored);
    return formatScript({"script", text}, {results, messages}) == kFine ? result : "error";
}

class FixtureScript : public testing::TestWithParam<std::string> {};

TEST_P(FixtureScript, FormattedAgain) {
    const std::string first = formatted(scriptText(GetParam()));
    ASSERT_NE(first, "error");
    const std::string second = formatted(first);
    const auto exception = kExceptions.find(GetParam());
    if (exception == kExceptions.end()) {
        EXPECT_EQ(second, first);
    } else if (exception->second.again == FormattedAgain::isNoScript) {
        EXPECT_EQ(second, "error") << "though " << exception->second.reason;
    } else {
        EXPECT_NE(second, first) << "though " << exception->second.reason;
        EXPECT_EQ(formatted(second), second);
    }
}

TEST_P(FixtureScript, SavedTreeFormatsAsTheScript) {
    const support::TemporaryFolder folder;
    const std::string target = folder.file("tree");
    std::string ignored;
    std::string warnings;
    Output results(&ignored);
    Output messages(&warnings);
    ASSERT_EQ(compileScript({"script", scriptText(GetParam())}, target, {results, messages}), kFine);
    const std::string fromTree = formatted(support::readFile(target));
    const std::string fromText = formatted(scriptText(GetParam()));
    if (GetParam() == "labels.js") {
        EXPECT_EQ(fromTree, "outer:;\nsingle:;\n;\n");  // the form has no place for their statements
        EXPECT_NE(warnings, "");
    } else if (GetParam() == "escaped_nul.js") {
        EXPECT_EQ(fromTree, "(nul)=(\"a\");\n;\n");  // nor for what follows a U+0000
        EXPECT_NE(warnings, "");
    } else {
        EXPECT_EQ(fromTree, fromText);
        EXPECT_EQ(warnings, "");
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, FixtureScript, testing::ValuesIn(scripts()),
                         [](const testing::TestParamInfo<std::string>& information) {
                             return information.param.substr(0, information.param.find('.'));
                         });

TEST(FixtureScripts, EveryExceptionIsAScript) {
    const std::vector<std::string> names = scripts();
    for (const auto& [name, exception] : kExceptions) {
        EXPECT_TRUE(std::binary_search(names.begin(), names.end(), name)) << name;
    }
}

}  // namespace
}  // namespace quorvelin::tool
