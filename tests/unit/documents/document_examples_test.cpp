// The examples in README.md and docs/*.md, run.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "documents/script_runs.h"
#include "support/process.h"

namespace quorvelin::documents {
namespace {

const std::filesystem::path kProject = std::filesystem::path(QUORVELIN_TESTS_FOLDER).parent_path();

std::vector<std::filesystem::path> documents() {
    std::vector<std::filesystem::path> found = {kProject / "README.md"};
    for (const auto& entry : std::filesystem::directory_iterator(kProject / "docs")) {
        if (entry.path().extension() == ".md") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

class DocumentExamples : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(DocumentExamples, SayWhatTheyPromise) {
    const std::string name = GetParam().filename().string();
    const std::string text = support::readFile(GetParam().string());
    ASSERT_FALSE(text.empty());
    const DocumentBlocks blocks = blocksOf(text);
    for (const std::string& fault : blocks.faults) ADD_FAILURE() << name << ", " << fault;
    for (const Example& example : blocks.examples) {
        EXPECT_EQ(difference(example.expected, accountOf(example.script)), "")
            << name << ", line " << example.line << ":\n"
            << example.script;
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentExamples, testing::ValuesIn(documents()),
                         [](const testing::TestParamInfo<std::filesystem::path>& information) {
                             std::string name = information.param.stem().string();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(DocumentExamples, TheLanguageIsFullOfThem) {
    EXPECT_GT(blocksOf(support::readFile((kProject / "docs" / "language.md").string())).examples.size(), 90u);
}

// ---- how examples are read and compared ----

const char* const kDocument =
    "Text\n"
    "```js\n"
    "console.println(1)  // -> 1\n"
    "(void 0).x;         // ! wrong object\n"
    "                    // ->\n"
    "```\n"
    "```text\n"
    "console.println(2)  // -> 2\n"
    "```\n";

TEST(DocumentBlocks, OnlyScriptsAreExamples) {
    const DocumentBlocks blocks = blocksOf(kDocument);
    EXPECT_TRUE(blocks.faults.empty());
    ASSERT_EQ(blocks.examples.size(), 1u);
    EXPECT_EQ(blocks.examples[0].line, 2);
    EXPECT_EQ(blocks.examples[0].expected, (Account{"-> 1", "! wrong object", "->"}));
}

TEST(DocumentBlocks, FaultsAreFound) {
    EXPECT_EQ(blocksOf("```\na\n```\n").faults.size(), 1u);        // does not say what it is
    EXPECT_EQ(blocksOf("```js\na // -> 1\n").faults.size(), 1u);   // no end
    EXPECT_EQ(blocksOf("```js\na = 1\n```\n").faults.size(), 1u);  // expects nothing
    EXPECT_EQ(blocksOf("```js\na // -> 1\n```\n").faults.size(), 0u);
}

TEST(Account, HoldsLinesAndMessagesInOrder) {
    EXPECT_EQ(accountOf("console.println('a\\n\\nb'); (void 0).x; console.println('');"),
              (Account{"-> a", "->", "-> b", "! wrong object", "->"}));
    EXPECT_EQ(accountOf("x y"), (Account{"! Error(Ln 1, Col 4): need ;"}));
    EXPECT_EQ(accountOf("console.println('\xC3\xA4')"), (Account{"the script is not ASCII"}));
}

TEST(Account, DifferencesAreFound) {
    EXPECT_EQ(difference({"-> 1"}, {"-> 1"}), "");
    EXPECT_EQ(difference({"-> 1", "-> 2"}, {"-> 1", "-> 3"}),
              "after 1 as expected: expected \"-> 2\", came \"-> 3\"");
    EXPECT_EQ(difference({"-> 1"}, {}), "after 0 as expected: expected \"-> 1\", came nothing more");
    EXPECT_EQ(difference({"-> 1"}, {"-> 1", "! wrong object"}),
              "after 1 as expected: expected nothing more, came \"! wrong object\"");
}

}  // namespace
}  // namespace quorvelin::documents
