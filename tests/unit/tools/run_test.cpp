// `run` and `eval` as processes: what they print, where, and how they end.
#include <fcntl.h>
#include <gtest/gtest.h>

#include <chrono>

#include "support/partner_process.h"
#include "support/process.h"

namespace quorvelin::tool {
namespace {

using support::ProcessResult;
using support::TemporaryFolder;

ProcessResult run(const std::vector<std::string>& arguments, std::string_view input = {}) {
    return support::runProcess(QUORVELIN_PROGRAM_FILE, arguments, input);
}

// A script as standard input.
ProcessResult runText(std::string_view script) {
    return run({"run", "-"}, script);
}

const std::string kCompiledAtRunTime = "    (in a text compiled at run time)\n";

// ---- output ----

TEST(Run, ConsoleOutputGoesToStandardOutputLineByLine) {
    const ProcessResult result =
        runText("console.println(1 + 2); console.println('a\\nb'); console.println('');");
    EXPECT_EQ(result.output, "3\na\nb\n\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(Run, OutputIsUtf8) {
    EXPECT_EQ(runText("console.println('\\xE4\xE4\xB8\xAD\xF0\x9F\x98\x80')").output,
              "\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80\n");
    // An unpaired surrogate has no form in UTF-8.
    EXPECT_EQ(runText(std::string_view("\xFF\xFE"
                                       "c\0o\0n\0s\0o\0l\0e\0.\0p\0r\0i\0n\0t\0l\0n\0(\0'\0\x00\xD8'\0)\0",
                                       42))
                  .output,
              "\xEF\xBF\xBD\n");
}

TEST(Run, GlobalPrintlnPrintsNothing) {
    EXPECT_EQ(runText("println('x'); println(1);").output, "");
}

TEST(Run, ResultIsNotPrinted) {
    EXPECT_EQ(runText("1 + 2").output, "");
}

TEST(Run, EmptyScript) {
    const ProcessResult result = runText("");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.errors, "");
}

// Both on one pipe, as on a terminal.
TEST(Run, ResultsStandBeforeTheMessagesThatFollowThem) {
    const TemporaryFolder folder;
    const std::string script =
        folder.write("a.js", "console.println('one'); Array = 1; console.println('two'); Array = 2;");
    const ProcessResult result = support::runProcess(
        "/bin/sh", {"-c", std::string(QUORVELIN_PROGRAM_FILE) + " run " + script + " 2>&1"});
    const size_t one = result.output.find("one\n");
    const size_t first = result.output.find(script + ":1:33: ");
    const size_t two = result.output.find("\ntwo\n");
    const size_t second = result.output.find(script + ":1:68: ");
    EXPECT_NE(second, std::string::npos) << result.output;
    EXPECT_LT(one, first);
    EXPECT_LT(first, two);
    EXPECT_LT(two, second);
}

TEST(Run, ScriptEndsWhenNobodyReadsItsOutput) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    const ProcessResult result = support::runProcessWithOutput(QUORVELIN_PROGRAM_FILE, {"run", "-"},
                                                               "while (1) console.println('yes');", ends[1]);
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
}

TEST(Run, OutputThatCannotBeWritten) {
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) GTEST_SKIP() << "there is no /dev/full";
    const ProcessResult result =
        support::runProcessWithOutput(QUORVELIN_PROGRAM_FILE, {"run", "-"}, "console.println('x');", full);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "standard output: No space left on device\n");
}

// ---- messages ----

TEST(Run, MessageWithPlaceSourceLineAndMark) {
    const TemporaryFolder folder;
    const std::string script = folder.write("a.js", "x = 1;\n\tArray = x;\nconsole.println('on');");
    const ProcessResult result = run({"run", script});
    EXPECT_EQ(result.errors, script + ":2:17: not correct use prototype\n\tArray = x;\n\t       ^\n");
    EXPECT_EQ(result.output, "on\n");
    EXPECT_EQ(result.status, 0);
}

TEST(Run, SyntaxErrorAsCheckShowsIt) {
    const TemporaryFolder folder;
    const std::string script = folder.write("a.js", "console.println('never');\nx y;");
    const ProcessResult result = run({"run", script});
    EXPECT_EQ(result.errors, script + ":2:5: need ;\nx y;\n   ^\n");
    EXPECT_EQ(result.errors, run({"check", script}).errors);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 1);
}

TEST(Run, MessageInTextCompiledAtRunTimeShowsNoLineOfTheFile) {
    const std::string script = "\n\nx = 5; f = new Function('\\nArray = 1;'); f();\n_eval('Array = 2');";
    EXPECT_EQ(runText(script).errors, "-:2:9: not correct use prototype\n" + kCompiledAtRunTime +
                                          "-:1:9: not correct use prototype\n" + kCompiledAtRunTime);
}

TEST(Run, SyntaxErrorInTextCompiledAtRunTime) {
    EXPECT_EQ(runText("x = 5;\n_eval('\\n\\nx y;'); console.println('on');").errors,
              "-:3:5: need ;\n" + kCompiledAtRunTime);
    // `Function` reports at the place where it is called.
    const std::string errors = runText("x = 5;\nf = new Function('x y;');").errors;
    EXPECT_EQ(errors.substr(0, 5), "-:2:1");
    EXPECT_NE(errors.find("f = new Function('x y;');\n"), std::string::npos);
}

TEST(Run, MessageOfAFunctionNamesTheFileThatDefinedTheCall) {
    const TemporaryFolder folder;
    const std::string library =
        folder.write("library.js", "\n\nf = new Function('a', 'Array = a;');\nArray = 0;");
    const std::string script = folder.write("a.js", "Array = 1;\nf(2);");
    EXPECT_EQ(run({"run", "--load", library, script}).errors,
              library + ":4:9: not correct use prototype\nArray = 0;\n       ^\n" + script +
                  ":1:9: not correct use prototype\nArray = 1;\n       ^\n" + script +
                  ":1:9: not correct use prototype\n" + kCompiledAtRunTime);
}

TEST(Run, MessageCannotControlTheTerminal) {
    EXPECT_EQ(runText("x = 1;\n_eval('\\x1b[2J');").errors,
              "-:1:2: JSTT_ERROR_UNEXPECTEDCHAR \\u001B\n" + kCompiledAtRunTime);
}

// ---- exit statuses ----

TEST(Run, StrictGivesStatusOneForAnyMessage) {
    EXPECT_EQ(run({"run", "--strict", "-"}, "Array = 1;").status, 1);
    EXPECT_EQ(run({"run", "--strict", "-"}, "x = 1;").status, 0);
    EXPECT_EQ(run({"run", "-"}, "Array = 1;").status, 0);
}

TEST(Run, StatusTwoForAFileThatCannotBeRead) {
    const TemporaryFolder folder;
    const ProcessResult result = run({"run", folder.file("missing.js")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, folder.file("missing.js") + ": No such file or directory\n");
    // The other file does not run either.
    const std::string good = folder.write("good.js", "console.println('x');");
    const ProcessResult both = run({"run", "--load", good, folder.path()});
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(both.output, "");
}

TEST(Run, WrongArguments) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"run"},
                                               {"run", "--strict"},
                                               {"run", "--load"},
                                               {"run", "--nonsense", "-"},
                                               {"run", "-x", "-"}}) {
        const ProcessResult result = run(arguments, "console.println('ran')");
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors, "");
    }
}

// ---- arguments ----

TEST(Run, ArgumentsAreTheScripts) {
    const std::string script =
        "console.println(args.length); for (i = 0; i < args.length; i++) console.println(args[i]);";
    EXPECT_EQ(run({"run", "-"}, script).output, "0\n");
    // Whatever they look like.
    EXPECT_EQ(
        run({"run", "-", "a b", "", "--strict", "-x", "--", "[1,2]", "{}", "--help", "check", "\xC3\xA4"},
            script)
            .output,
        "10\na b\n\n--strict\n-x\n--\n[1,2]\n{}\n--help\ncheck\n\xC3\xA4\n");
}

TEST(Run, ArgumentsAreTexts) {
    EXPECT_EQ(
        run({"run", "-", "12"}, "console.println(typeof args[0]); console.println(args[0] + 1);").output,
        "string\n121\n");
}

// ---- several files ----

TEST(Run, FilesRunOnOneMachineInTurn) {
    const TemporaryFolder folder;
    const std::string first = folder.write("1.js", "x = 1; console.println('first');");
    const std::string second = folder.write("2.js", "x = x + 1; console.println('second');");
    const ProcessResult result =
        run({"run", "--load", first, "--load", second, "-", "argument"}, "console.println(x + args[0]);");
    EXPECT_EQ(result.output, "first\nsecond\n2argument\n");
    EXPECT_EQ(result.errors, "");
}

TEST(Run, PendingJumpEndsOnlyItsFile) {
    const TemporaryFolder folder;
    for (const std::string jump : {"return 1;", "break;", "continue;"}) {
        const std::string first = folder.write("1.js", "x = 1; " + jump + " x = 2;");
        EXPECT_EQ(run({"run", "--load", first, "-"}, "var y = x; console.println(y);").output, "1\n") << jump;
    }
}

TEST(Run, NothingRunsWhenOneFileHasASyntaxError) {
    const TemporaryFolder folder;
    const std::string good = folder.write("good.js", "console.println('ran');");
    const std::string bad = folder.write("bad.js", "x y;");
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"run", "--load", good, bad}, {"run", "--load", bad, good}}) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, bad + ":1:5: need ;\nx y;\n   ^\n");
    }
}

// ---- saved trees ----

TEST(Run, SavedTree) {
    const TemporaryFolder folder;
    const std::string tree = folder.file("tree");
    ASSERT_EQ(run({"compile", "-", "-o", tree}, "console.println(args[0]); Array = 1;").status, 0);
    const ProcessResult result = run({"run", tree, "hello"});
    EXPECT_EQ(result.output, "hello\n");
    EXPECT_EQ(result.errors, tree + ": not correct use prototype\n");
    EXPECT_EQ(run({"run", "-", "hello"}, support::readFile(tree)).output, "hello\n");
}

TEST(Run, DamagedSavedTree) {
    const ProcessResult empty = runText("\x01");
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.errors, "-: the saved tree is empty or damaged\n");
    // A list of one `with`, which lacks its object.
    const ProcessResult refused = runText(std::string_view("\x01\x1C\x1C\x1A\0\0\x1D", 7));
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, "-: the script is refused: a part of its tree is missing\n");
}

// ---- depth ----

TEST(Run, EndlessRecursionEndsWithAMessageOnTheUsualStack) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = runText("f = new Function('f();'); f(); console.println('on');");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "on\n");
    EXPECT_NE(result.errors.find(": stack overflow\n"), std::string::npos);
}

class Recursion : public testing::TestWithParam<const char*> {};

TEST_P(Recursion, EndlessOneEndsWithAMessage) {
    const std::string script = std::string(GetParam()) + " console.println('on');";
    const ProcessResult result = run({"--stack", "3", "run", "--strict", "-"}, script);
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "on\n");
    EXPECT_NE(result.errors.find(": stack overflow\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Scripts, Recursion,
    testing::Values("f = new Function('f();'); f();", "f = new Function('_eval(\"f()\");'); f();",
                    "f = new Function('new f();'); f();",
                    "f = new Function('this.f();'); o = new Object(); o.f = f; o.f();",
                    "a = [1]; a.join = new Function('return \\'\\' + a;'); x = '' + a;"));

TEST(Stack, LargerOneReachesDeeper) {
    const std::string script = "n = 0; f = new Function('n++; f();'); f(); console.println(n);";
    const int shallow = std::stoi(run({"--stack", "2", "run", "-"}, script).output);
    const int deep = std::stoi(run({"--stack", "4", "run", "-"}, script).output);
    EXPECT_GT(shallow, 100);
    EXPECT_GT(deep, shallow * 3 / 2);
}

TEST(Stack, SizeThatIsNone) {
    for (const std::string size : {"0", "-1", "65537", "x"}) {
        EXPECT_EQ(run({"--stack", size, "eval", "1"}).status, 2) << size;
    }
}

TEST(Stack, SmallerOneIsTakenWhereTheSystemRefusesIt) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer needs more address space than the limit leaves";
#endif
    const ProcessResult result = support::runProcess(
        "/bin/sh",
        {"-c", "ulimit -v 300000; exec " + std::string(QUORVELIN_PROGRAM_FILE) + " --stack 1024 eval 1+2"});
    EXPECT_EQ(result.output, "3\n");
}

// ---- eval ----

TEST(Eval, PrintsTheTextOfTheResult) {
    EXPECT_EQ(run({"eval", "1 + 2"}).output, "3\n");
    EXPECT_EQ(run({"eval", "'a' + 'b'"}).output, "ab\n");
    EXPECT_EQ(run({"eval", "x = 1; x == 1"}).output, "true\n");
    EXPECT_EQ(run({"eval", "'\xC3\xA4'"}).output, "\xC3\xA4\n");
    EXPECT_EQ(run({"eval", "''"}).output, "\n");
    EXPECT_EQ(run({"eval", "[1,2]"}).output, "1,2\n");
    EXPECT_EQ(run({"eval", "console.println('printed'); 5"}).output, "printed\n5\n");
}

TEST(Eval, UndefinedPrintsNothing) {
    for (const std::string text : {"", ";", "void 0", "nope", "var v; v", "return 1;", "console.println()"}) {
        const ProcessResult result = run({"eval", text});
        EXPECT_EQ(result.output, "") << text;
        EXPECT_EQ(result.status, 0) << text;
    }
}

TEST(Eval, TypeStandsInFront) {
    const std::pair<const char*, const char*> cases[] = {
        {"1", "number 1\n"},   {"'a b'", "string a b\n"}, {"1 == 1", "boolean true\n"},
        {"", "undefined\n"},   {"nope", "undefined\n"},   {"var v; v", "undefined\n"},
        {"[1]", "object 1\n"}, {"''", "string \n"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(run({"eval", "--type", text}).output, expected) << text;
    EXPECT_EQ(run({"eval", "--type", "new Function('1')"}).output.substr(0, 9), "function ");
}

TEST(Eval, MessagesAndStatuses) {
    const ProcessResult message = run({"eval", "Array = 1; 5"});
    EXPECT_EQ(message.errors, "(text):1:9: not correct use prototype\nArray = 1; 5\n       ^\n");
    EXPECT_EQ(message.output, "5\n");
    EXPECT_EQ(message.status, 0);
    EXPECT_EQ(run({"eval", "--strict", "Array = 1; 5"}).status, 1);
    EXPECT_EQ(run({"eval", "--strict", "5"}).status, 0);

    const ProcessResult error = run({"eval", "x y"});
    EXPECT_EQ(error.errors, "(text):1:4: need ;\nx y\n  ^\n");
    EXPECT_EQ(error.status, 1);
    EXPECT_EQ(run({"eval"}).status, 2);
    EXPECT_EQ(run({"eval", "1", "2"}).status, 2);
}

TEST(Eval, MessageWhileTheResultIsConvertedCounts) {
    const ProcessResult result =
        run({"eval", "--strict", "a = [1]; a.join = new Function('Array = 1; return \\'t\\';'); a"});
    EXPECT_EQ(result.output, "t\n");
    EXPECT_EQ(result.errors, "(text):1:9: not correct use prototype\n" + kCompiledAtRunTime);
    EXPECT_EQ(result.status, 1);
}

TEST(Eval, TextThatLooksLikeAnOption) {
    EXPECT_EQ(run({"eval", "--", "--x"}).errors.substr(0, 6), "(text)");
}

}  // namespace
}  // namespace quorvelin::tool
