// Conversations with the built program.
#include "quorvelin/repl_command.h"

#include <gtest/gtest.h>

#include "support/partner_process.h"
#include "support/process.h"

namespace quorvelin::tool {
namespace {

using support::PartnerProcess;
using support::ProcessResult;

ProcessResult converse(std::string_view lines) {
    return support::runProcess(QUORVELIN_PROGRAM_FILE, {"repl"}, lines);
}

TEST(Repl, ResultsOfLines) {
    const ProcessResult result = converse("1 + 2\n'a'\nx = 5\nvoid 0\n\nnope\nx");
    EXPECT_EQ(result.output, "3\na\n5\n5\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(Repl, NoPromptsWithoutATerminal) {
    EXPECT_EQ(converse("").output, "");
    EXPECT_EQ(converse("f = new Function('a', (\n'return a;'\n));\nf(3)\n").output.find("> "),
              std::string::npos);
}

TEST(Repl, MessagesNameTheInput) {
    const ProcessResult result = converse("1\nArray = 1\nx y\n2\n");
    EXPECT_EQ(result.output, "1\n2\n");
    EXPECT_EQ(result.errors,
              "(input 2):1:9: not correct use prototype\nArray = 1\n       ^\n"
              "(input 3):1:4: need ;\nx y\n  ^\n");
    EXPECT_EQ(result.status, 0);
}

TEST(Repl, PendingJumpEndsOnlyItsInput) {
    EXPECT_EQ(converse("x = 1; return 5;\nvar y = x; y\nbreak;\nx\n").output, "1\n1\n");
}

TEST(Repl, OpenBracketsAskForMore) {
    EXPECT_EQ(converse("if (1) {\nx = 5;\n\n}\nx\n").output.substr(0, 2), "5\n");
    EXPECT_EQ(converse("[1,\n2\n]\n(3 +\n4)\n").output, "1,2\n7\n");
}

TEST(Repl, EndOfInputInsideBracketsShowsTheError) {
    const ProcessResult result = converse("(1,\n2");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "(input 1):2:2: need )\n2\n^\n");
}

TEST(Repl, LinesOfAnotherInputArrivingLate) {
    PartnerProcess program(QUORVELIN_PROGRAM_FILE, {"repl"}, PartnerProcess::Link::pipes);
    program.write("x = 1\n");
    EXPECT_EQ(program.readUntil("\n"), "1\n");
    program.write("x +");
    program.write(" 1\n");
    EXPECT_EQ(program.readUntil("\n"), "2\n");
    program.closeInput();
    EXPECT_EQ(program.wait(), 0);
}

TEST(Repl, PromptsAtATerminal) {
    PartnerProcess program(QUORVELIN_PROGRAM_FILE, {"repl"}, PartnerProcess::Link::terminal);
    const auto type = [&](std::string_view keys) {
        program.waitForLineEditor();
        program.write(keys);
    };
    EXPECT_NE(program.readUntil("> ").find("> "), std::string::npos);
    type("(1 +\n");
    EXPECT_NE(program.readUntil("... ").find("... "), std::string::npos);
    type("41)\n");
    EXPECT_NE(program.readUntil("42\r\n").find("42\r\n"), std::string::npos);
    program.readUntil("> ");
    type("Array = 1\n");
    EXPECT_NE(program.readUntil("^").find("(input 2):1:9: not correct use prototype"), std::string::npos);
    program.readUntil("> ");
    // Ctrl-P calls the line before back.
    type("'back'\n");
    program.readUntil("back\r\n");
    program.readUntil("> ");
    type("\x10\n");
    EXPECT_NE(program.readUntil("\nback\r\n").find("\nback\r\n"), std::string::npos);
    program.readUntil("> ");
    type("\x04");
    EXPECT_EQ(program.wait(), 0);
}

TEST(Incomplete, OpenBrackets) {
    for (const char* input :
         {"(", "[1,", "if (a) {", "f(g(1)", "({", "a = [ // ]", "f('(' /* ) */", "{\n}\n{"}) {
        EXPECT_TRUE(isIncomplete(input)) << input;
    }
}

TEST(Incomplete, BracketsInStringsCommentsAndPatternsDoNotCount) {
    for (const char* input : {"", "1", "'('", "// (", "/* ( */", "a = /(/", "a = /[(]/", "f()", "{ }"}) {
        EXPECT_FALSE(isIncomplete(input)) << input;
    }
}

TEST(Incomplete, NotWhatNoFurtherLineMends) {
    for (const char* input : {")", "())", ") (", "f('abc", "x y", "( #", "\x01(("}) {
        EXPECT_FALSE(isIncomplete(input)) << input;
    }
}

}  // namespace
}  // namespace quorvelin::tool
