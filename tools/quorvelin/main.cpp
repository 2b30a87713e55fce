// The program: finds the command, gives it its arguments, and makes sure that what it wrote was written.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>

#include "quorvelin/command.h"
#include "quorvelin/deep_stack.h"
#include "quorvelin/files.h"

namespace quorvelin::tool {

namespace {

constexpr Command kCommands[] = {
    {"run", "Run a script", declareRun},
    {"eval", "Run a text and show its result", declareEval},
    {"repl", "Read lines, run them and show their results", declareRepl},
    {"batch", "Run cases that another program writes, one JSON object a line", declareBatch},
    {"tokens", "Show the tokens of a script", declareTokens},
    {"tree", "Show the syntax tree of a script", declareTree},
    {"format", "Write a script back in the form of its tree", declareFormat},
    {"check", "Look for syntax errors, without running anything", declareCheck},
    {"compile", "Write a script as a saved tree, which loads without parsing", declareCompile},
};

struct Work {
    CommandAction action;
    size_t stackMegabytes = kUsualStackMegabytes;
};

// What the arguments ask for. When there is nothing left to do, because they are wrong or asked for help, the
// work has no action and `status` is how the program ends.
Work readArguments(CLI::App& program, int argumentCount, char** arguments, ExitStatus* status) {
    Work work;
    program.set_version_flag("--version", "quorvelin " QUORVELIN_VERSION);
    program
        .add_option("--stack", work.stackMegabytes,
                    "Native stack for scripts that nest or recurse deeply, in megabytes")
        ->type_name("SIZE")
        ->capture_default_str()
        ->check(CLI::Range(1, 64 * 1024));
    program.require_subcommand(1);
    program.footer(
        "Exit status: 0 fine, 1 a script has an error, 2 wrong arguments or a file that cannot be read or "
        "written.\n"
        "`quorvelin COMMAND --help` tells about one command.");

    CLI::App* declared[std::size(kCommands)];
    CommandAction actions[std::size(kCommands)];
    for (size_t i = 0; i < std::size(kCommands); ++i) {
        declared[i] = program.add_subcommand(kCommands[i].name, kCommands[i].summary);
        actions[i] = kCommands[i].declare(*declared[i]);
    }
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        // Help and version come this way too.
        *status = program.exit(error) == 0 ? kFine : kUnusable;
        return work;
    }
    for (size_t i = 0; i < std::size(kCommands); ++i) {
        if (declared[i]->parsed()) work.action = actions[i];
    }
    return work;
}

int perform(const CommandAction& action, const ProgramOutput& output) {
    try {
        return action(output);
    } catch (const std::bad_alloc&) {
        output.messages.write("quorvelin: out of memory\n");
        return kUnusable;
    }
}

int runProgram(int argumentCount, char** arguments) {
    // The actions of the commands ask it for arguments.
    CLI::App program("Looks at and runs scripts.", "quorvelin");
    ExitStatus usage = kUnusable;
    const Work work = readArguments(program, argumentCount, arguments, &usage);
    if (!work.action) return usage;

    Output results(STDOUT_FILENO);
    Output messages(STDERR_FILENO);
    int status = runOnDeepStack(work.stackMegabytes, [&] {
        return perform(work.action, {results, messages});
    });
    if (!results.flush()) {
        showFileMessage(messages, "standard output", std::strerror(results.failure()));
        status = kUnusable;
    }
    return status;
}

}  // namespace

}  // namespace quorvelin::tool

int main(int argumentCount, char** arguments) {
    // A reader that goes away is told by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return quorvelin::tool::runProgram(argumentCount, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "quorvelin: %s\n", failure.what());
        return quorvelin::tool::kUnusable;
    }
}
