// The built program, run as a process: arguments, files, exit statuses.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/process.h"

namespace quorvelin::tool {
namespace {

using support::ProcessResult;
using support::TemporaryFolder;

ProcessResult run(const std::vector<std::string>& arguments, std::string_view input = {}) {
    return support::runProcess(QUORVELIN_PROGRAM_FILE, arguments, input);
}

const char* const kCommands[] = {"tokens", "tree", "format", "check", "compile", "run"};

TEST(Program, Version) {
    const ProcessResult result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, std::string("quorvelin ") + QUORVELIN_VERSION + "\n");
}

TEST(Program, HelpEverywhere) {
    const ProcessResult program = run({"--help"});
    EXPECT_EQ(program.status, 0);
    EXPECT_EQ(program.errors, "");
    for (const std::string command : kCommands) {
        EXPECT_NE(program.output.find("\n  " + command + " "), std::string::npos) << command;
        const ProcessResult help = run({command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.output.find("FILE"), std::string::npos) << command;
        EXPECT_NE(help.output.find("U+FFFD"), std::string::npos) << command;
    }
}

TEST(Program, WrongArguments) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"nonsense"},
                                               {"--nonsense"},
                                               {"tokens"},
                                               {"check"},
                                               {"tokens", "--nonsense", "-"},
                                               {"tree", "-", "more"},
                                               {"compile", "-"},
                                               {"compile", "-", "-o"}}) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors, "");
    }
}

TEST(Program, StandardInput) {
    EXPECT_EQ(run({"format", "-"}, "x=1").output, "(x)=(1);\n;\n");
    EXPECT_EQ(run({"format", "-"}, "").status, 0);
    const ProcessResult check = run({"check", "-"}, "x y;");
    EXPECT_EQ(check.status, 1);
    EXPECT_EQ(check.errors, "-:1:5: need ;\nx y;\n   ^\n");
    EXPECT_EQ(check.output, "");
}

TEST(Program, StatusOneForAScriptWithAnError) {
    const TemporaryFolder folder;
    const std::string bad = folder.write("bad.js", "x = 'a\nb'");
    for (const std::string command : {"tokens", "tree", "format", "check"}) {
        EXPECT_EQ(run({command, bad}).status, 1) << command;
    }
    EXPECT_EQ(run({"tree", "--json", bad}).status, 1);
    EXPECT_EQ(run({"compile", bad, "-o", folder.file("out")}).status, 1);
    EXPECT_EQ(::access(folder.file("out").c_str(), F_OK), -1);
}

TEST(Program, FileThatCannotBeRead) {
    const TemporaryFolder folder;
    for (const std::string command : {"tokens", "tree", "format", "check"}) {
        const ProcessResult missing = run({command, folder.file("missing.js")});
        EXPECT_EQ(missing.status, 2) << command;
        EXPECT_EQ(missing.errors, folder.file("missing.js") + ": No such file or directory\n");
        const ProcessResult directory = run({command, folder.path()});
        EXPECT_EQ(directory.status, 2) << command;
        EXPECT_EQ(directory.errors, folder.path() + ": Is a directory\n");
    }
    EXPECT_EQ(run({"compile", folder.path(), "-o", folder.file("out")}).status, 2);
}

TEST(Program, CheckGoesOnAndGivesTheWorstStatus) {
    const TemporaryFolder folder;
    const std::string good = folder.write("good.js", "a");
    const std::string bad = folder.write("bad.js", "a b;");
    const std::string worse = folder.write("worse.js", "(");
    EXPECT_EQ(run({"check", good, good}).status, 0);
    const ProcessResult errors = run({"check", bad, good, worse});
    EXPECT_EQ(errors.status, 1);
    EXPECT_EQ(errors.errors, bad + ":1:5: need ;\na b;\n   ^\n" + worse + ":1:2: need )\n(\n^\n");
    const ProcessResult missing = run({"check", folder.file("missing"), bad});
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.errors.find(bad + ":1:5"), std::string::npos);
}

TEST(Program, Encodings) {
    const TemporaryFolder folder;
    const std::string expected = "(\xC3\xA4)=(1);\n;\n";
    EXPECT_EQ(run({"format", "-"}, "\xC3\xA4=1").output, expected);
    EXPECT_EQ(run({"format", "-"}, "\xEF\xBB\xBF\xC3\xA4=1").output, expected);
    EXPECT_EQ(run({"format", "-"}, std::string_view("\xFF\xFE\xE4\0=\0"
                                                    "1\0",
                                                    8))
                  .output,
              expected);
    EXPECT_EQ(run({"format", "-"}, std::string_view("\xFE\xFF\0\xE4\0=\0"
                                                    "1",
                                                    8))
                  .output,
              expected);
    EXPECT_EQ(run({"format", "-"}, "'\xFF'").output, "\"\xEF\xBF\xBD\";\n;\n");
}

TEST(Program, CompiledScriptIsTakenByTheOtherCommands) {
    const TemporaryFolder folder;
    const std::string script = folder.write("a.js", "x = [1, 'two']; if (x) { f(x[0]); }");
    const std::string tree = folder.file("a.tree");
    const ProcessResult compile = run({"compile", script, "-o", tree});
    EXPECT_EQ(compile.status, 0);
    EXPECT_EQ(compile.output + compile.errors, "");
    EXPECT_EQ(run({"check", tree}).status, 0);
    EXPECT_EQ(run({"format", tree}).output, run({"format", script}).output);
    EXPECT_NE(run({"tree", tree}).output.find("name \"f\""), std::string::npos);
    EXPECT_EQ(run({"tokens", tree}).status, 2);
    // Through standard output and standard input.
    EXPECT_EQ(run({"compile", script, "-o", "-"}).output, support::readFile(tree));
    EXPECT_EQ(run({"format", "-"}, support::readFile(tree)).output, run({"format", script}).output);
}

TEST(Program, CompileReplacesItsTargetWhole) {
    const TemporaryFolder folder;
    const std::string script = folder.write("a.js", "a");
    const std::string target = folder.write("out", std::string(100000, 'x'));
    ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
    EXPECT_EQ(run({"compile", script, "-o", target}).status, 0);
    EXPECT_LT(support::readFile(target).size(), 100u);
    struct stat status;
    ASSERT_EQ(::stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    // Nothing else is left in the folder.
    EXPECT_EQ(run({"compile", "-", "-o", target}, "x y").status, 1);
    EXPECT_EQ(std::system(("test $(ls -A " + folder.path() + " | wc -l) = 2").c_str()), 0);
}

TEST(Program, CompileWritesThroughALink) {
    const TemporaryFolder folder;
    const std::string target = folder.write("target", "old");
    ASSERT_EQ(::symlink(target.c_str(), folder.file("link").c_str()), 0);
    EXPECT_EQ(run({"compile", "-", "-o", folder.file("link")}, "a").status, 0);
    EXPECT_EQ(support::readFile(target).front(), '\x01');
    struct stat status;
    ASSERT_EQ(::lstat(folder.file("link").c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
}

TEST(Program, CompileToADevice) {
    EXPECT_EQ(run({"compile", "-", "-o", "/dev/null"}, "a").status, 0);
    struct stat status;
    ASSERT_EQ(::stat("/dev/null", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST(Program, TargetThatCannotBeWritten) {
    const TemporaryFolder folder;
    const ProcessResult nowhere = run({"compile", "-", "-o", folder.file("no/such/folder")}, "a");
    EXPECT_EQ(nowhere.status, 2);
    EXPECT_EQ(nowhere.errors, folder.file("no/such/folder") + ": No such file or directory\n");
    const ProcessResult directory = run({"compile", "-", "-o", folder.path()}, "a");
    EXPECT_EQ(directory.status, 2);
    EXPECT_EQ(directory.errors, folder.path() + ": Is a directory\n");
}

TEST(Program, ClosedPipeIsNoCrash) {
    std::string script;
    for (int i = 0; i < 100000; ++i) script += "a;";
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"tokens", "-"},
                                               {"tree", "-"},
                                               {"tree", "--json", "-"},
                                               {"format", "-"},
                                               {"--help"},
                                               {"--version"}}) {
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        ::close(ends[0]);
        const ProcessResult result =
            support::runProcessWithOutput(QUORVELIN_PROGRAM_FILE, arguments, script, ends[1]);
        EXPECT_EQ(result.signal, 0) << arguments[0];
        EXPECT_EQ(result.status, 0) << arguments[0];
        EXPECT_EQ(result.errors, "") << arguments[0];
    }
}

TEST(Program, FullDeviceIsTold) {
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) GTEST_SKIP() << "there is no /dev/full";
    const ProcessResult result =
        support::runProcessWithOutput(QUORVELIN_PROGRAM_FILE, {"tree", "-"}, "a", full);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "standard output: No space left on device\n");
}

}  // namespace
}  // namespace quorvelin::tool
