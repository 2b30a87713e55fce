// What the commands write, over scripts in memory.
#include "quorvelin/syntax_commands.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/process.h"

namespace quorvelin::tool {
namespace {

struct Answer {
    ExitStatus status = kFine;
    std::string results;
    std::string messages;
};

template <typename CommandFunction, typename... Arguments>
Answer answer(CommandFunction command, std::string_view script, Arguments... arguments) {
    Answer answer;
    Output results(&answer.results);
    Output messages(&answer.messages);
    answer.status =
        command(Input{"file.js", std::string(script)}, arguments..., ProgramOutput{results, messages});
    return answer;
}

// ---- tokens ----

TEST(TokensCommand, OneTokenALine) {
    const Answer tokens = answer(showTokens, "a = 'x\\ny';\nb");
    EXPECT_EQ(tokens.status, kFine);
    EXPECT_EQ(tokens.results,
              "1\t3\tJSTT_IDENFICATOR\ta\n"
              "1\t5\tJSTT_OPERATORS\t=\n"
              "1\t11\tJSTT_STRING\tx\\ny\n"
              "1\t12\tJSTT_OPERSEPARATOR\t;\n"
              "2\t1\tJSTT_OPERSEPARATOR\t\\n\n"
              "2\t2\tJSTT_IDENFICATOR\tb\n"
              "2\t2\tJSTT_EOF\t\n");
    EXPECT_EQ(tokens.messages, "");
}

TEST(TokensCommand, ErrorTokenIsToldAndScanningGoesOn) {
    const Answer tokens = answer(showTokens, "a # b");
    EXPECT_EQ(tokens.status, kScriptError);
    EXPECT_EQ(tokens.results,
              "1\t3\tJSTT_IDENFICATOR\ta\n1\t4\tJSTT_ERROR_UNEXPECTEDCHAR\t#\n1\t6\tJSTT_"
              "IDENFICATOR\tb\n1\t6\tJSTT_"
              "EOF\t\n");
    EXPECT_EQ(tokens.messages, "file.js:1:4: JSTT_ERROR_UNEXPECTEDCHAR #\na # b\n  ^\n");
}

TEST(TokensCommand, SyntaxErrorIsNoneOfItsBusiness) {
    EXPECT_EQ(answer(showTokens, "x y (").status, kFine);
}

TEST(TokensCommand, SavedTreeHasNoTokens) {
    const Answer tokens = answer(showTokens, "\x01\x1C\x1D");
    EXPECT_EQ(tokens.status, kUnusable);
    EXPECT_EQ(tokens.messages, "file.js: is a saved tree, which has no tokens\n");
}

// ---- tree ----

TEST(TreeCommand, Outline) {
    const Answer tree =
        answer(showTree, "var x = [f(), 'a\\n'];\nfunction g(a, b) { switch (a) { case 1: b; } }",
               TreeForm::outline);
    EXPECT_EQ(tree.status, kFine);
    EXPECT_EQ(tree.results,
              R"(JSStatementListNode 1:1
  entries
    JSStatementListNode 1:5
      entries
        JSVarNode 1:7
          variables
            variable "x"
              initialiser: JSArrayNode 1:12
                entries
                  JSCallNode 1:12
                    callee: JSIdentifierNode 1:12 name "f"
                    arguments: JSArgumentsNode 1:13
                      entries (empty)
                  JSLiteralNode 1:20 tokenKind 3 (JSTT_STRING) text "a\n"
        JSFunctionNode 2:10 name "g"
          parameters: JSParametersNode 2:14 parameters "a", "b"
          body: JSStatementListNode 2:27
            entries
              JSSwitchNode 2:27
                discriminant: JSIdentifierNode 2:30 name "a"
                cases
                  case
                    test: JSLiteralNode 2:40 tokenKind 5 (JSTT_INT) text "1"
                    statements: JSStatementListNode 2:43
                      entries
                        JSIdentifierNode 2:43 name "b"
)");
}

TEST(TreeCommand, OutlineOfADeepTreeNumbersItsLevels) {
    std::string script = "a";
    for (int i = 0; i < 100000; ++i) script += "+a";
    const Answer tree = answer(showTree, script, TreeForm::outline);
    EXPECT_EQ(tree.status, kFine);
    EXPECT_NE(tree.results.find("\n" + std::string(80, ' ') + "[100004] left: JSIdentifierNode"),
              std::string::npos);
    EXPECT_LT(tree.results.size(), 40u * 1000 * 1000);
}

TEST(TreeCommand, Json) {
    const Answer tree = answer(
        showTree, "var x = \"\\xE4\\\"\", y; function g(a, b) { } ; switch (x) { default: }", TreeForm::json);
    EXPECT_EQ(tree.status, kFine);
    const nlohmann::json root = nlohmann::json::parse(tree.results);
    EXPECT_EQ(root["class"], "JSStatementListNode");
    EXPECT_EQ(root["kind"], 24);
    EXPECT_EQ(root["line"], 1);
    EXPECT_EQ(root["column"], 1);
    const nlohmann::json& statements = root["entries"][0]["entries"];
    EXPECT_EQ(statements.size(), 3u);
    EXPECT_EQ(statements[0]["variables"][0]["name"], "x");
    EXPECT_EQ(statements[0]["variables"][0]["initialiser"]["text"], "\xC3\xA4\"");
    EXPECT_EQ(statements[0]["variables"][0]["initialiser"]["tokenKind"], 3);
    EXPECT_TRUE(statements[0]["variables"][1]["initialiser"].is_null());
    EXPECT_EQ(statements[1]["parameters"]["parameters"], nlohmann::json({"a", "b"}));
    EXPECT_TRUE(statements[1]["body"].is_null());
    EXPECT_TRUE(statements[2]["cases"][0]["test"].is_null());
}

TEST(TreeCommand, JsonIsAsciiAndEscapesUnpairedSurrogates) {
    // UTF-16 with an unpaired surrogate between the quotes.
    const Answer tree = answer(showTree, std::string_view("\xFF\xFE'\0\x00\xD8'\0", 8), TreeForm::json);
    EXPECT_EQ(tree.status, kFine);
    EXPECT_NE(tree.results.find("\"text\":\"\\uD800\""), std::string::npos) << tree.results;
}

TEST(TreeCommand, JsonOfADeepTree) {
    std::string script = "a";
    for (int i = 0; i < 100000; ++i) script += ".b";
    const Answer tree = answer(showTree, script, TreeForm::json);
    EXPECT_EQ(tree.status, kFine);
    EXPECT_EQ(tree.results.back(), '\n');
    EXPECT_EQ(std::count(tree.results.begin(), tree.results.end(), '{'),
              std::count(tree.results.begin(), tree.results.end(), '}'));
}

TEST(TreeCommand, SyntaxError) {
    for (const TreeForm form : {TreeForm::outline, TreeForm::json}) {
        const Answer tree = answer(showTree, "x y;", form);
        EXPECT_EQ(tree.status, kScriptError);
        EXPECT_EQ(tree.results, "");
        EXPECT_EQ(tree.messages, "file.js:1:5: need ;\nx y;\n   ^\n");
    }
}

// ---- format ----

TEST(FormatCommand, SourceOfTheTree) {
    const Answer format = answer(formatScript, "x=1 // c\n\xC3\xA4 = '\xE4\xB8\xAD'");
    EXPECT_EQ(format.status, kFine);
    EXPECT_EQ(format.results, "(x)=(1);\n(\xC3\xA4)=(\"\xE4\xB8\xAD\");\n;\n");
}

TEST(FormatCommand, UnpairedSurrogateBecomesTheReplacementCharacter) {
    EXPECT_EQ(answer(formatScript, std::string_view("\xFF\xFE'\0\x00\xD8'\0", 8)).results,
              "\"\xEF\xBF\xBD\";\n;\n");
}

TEST(FormatCommand, TextBehindNulIsNoPartOfTheScript) {
    EXPECT_EQ(answer(formatScript, std::string_view("a\0 b c", 6)).results, "a;\n;\n");
}

TEST(FormatCommand, EmptyScript) {
    const Answer format = answer(formatScript, "");
    EXPECT_EQ(format.status, kFine);
    EXPECT_EQ(format.results, "");
}

// ---- check ----

TEST(CheckCommand, FineScriptGivesNothing) {
    const Answer check = answer(checkScript, "x = 1");
    EXPECT_EQ(check.status, kFine);
    EXPECT_EQ(check.results + check.messages, "");
}

TEST(CheckCommand, Error) {
    const Answer check = answer(checkScript, "if (a {\n}");
    EXPECT_EQ(check.status, kScriptError);
    EXPECT_EQ(check.messages, "file.js:1:8: need )\nif (a {\n      ^\n");
}

TEST(CheckCommand, SavedTrees) {
    EXPECT_EQ(answer(checkScript, "\x01\x1C\x1D").status, kFine);
    const Answer empty = answer(checkScript, "\x01");
    EXPECT_EQ(empty.status, kScriptError);
    EXPECT_EQ(empty.messages, "file.js: the saved tree is empty or damaged\n");
}

TEST(CheckCommand, SavedTreeThatNestsTooDeeply) {
    std::string bytes = "\x01";
    for (int i = 0; i < 1000000; ++i) bytes += '\x16';
    const Answer check = answer(checkScript, bytes);
    EXPECT_EQ(check.status, kScriptError);
    EXPECT_EQ(check.messages, "file.js: too deep\n");
}

TEST(CheckCommand, DeepNestingIsAnErrorOfTheScript) {
    const Answer check = answer(checkScript, std::string(1000000, '('));
    EXPECT_EQ(check.status, kScriptError);
    EXPECT_NE(check.messages.find(": too deep\n"), std::string::npos);
}

// ---- compile ----

TEST(CompileCommand, TargetIsASavedTree) {
    const support::TemporaryFolder folder;
    const Answer compile = answer(compileScript, "", folder.file("out"));
    EXPECT_EQ(compile.status, kFine);
    EXPECT_EQ(support::readFile(folder.file("out")), "\x01\x1C\x1D");
}

TEST(CompileCommand, WarnsOfStatementsOfLabels) {
    const support::TemporaryFolder folder;
    const Answer compile = answer(compileScript, "a = 1\nl: b", folder.file("out"));
    EXPECT_EQ(compile.status, kFine);
    EXPECT_EQ(compile.messages,
              "file.js:2:3: warning: the statement of label \"l\" is lost: a saved tree has no place for "
              "it\nl: b\n "
              "^\n");
    EXPECT_EQ(answer(compileScript, "l: ;", folder.file("out")).messages, "");
}

TEST(CompileCommand, WarnsOfTextsWithNul) {
    const support::TemporaryFolder folder;
    const Answer compile = answer(compileScript, "a = 'b\\0c'", folder.file("out"));
    EXPECT_EQ(compile.status, kFine);
    EXPECT_EQ(compile.messages.substr(0, compile.messages.find('\n')),
              "file.js:1:11: warning: a text is cut short at its U+0000: in a saved tree that ends a text");
    EXPECT_NE(support::readFile(folder.file("out")), "");
}

TEST(CompileCommand, ScriptWithAnErrorIsNotWritten) {
    const support::TemporaryFolder folder;
    const std::string target = folder.write("out", "old");
    EXPECT_EQ(answer(compileScript, "x y", target).status, kScriptError);
    EXPECT_EQ(support::readFile(target), "old");
}

TEST(CompileCommand, SavedTreeCanBeCompiledAgain) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(answer(compileScript, "a = [1, 2]", folder.file("first")).status, kFine);
    const std::string first = support::readFile(folder.file("first"));
    ASSERT_EQ(answer(compileScript, first, folder.file("second")).status, kFine);
    EXPECT_EQ(support::readFile(folder.file("second")), first);
}

}  // namespace
}  // namespace quorvelin::tool
