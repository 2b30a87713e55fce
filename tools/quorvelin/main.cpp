// The program: finds the command, gives it its arguments, and makes sure that what it wrote was written.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>

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

ExitStatus runProgram(int argumentCount, char** arguments, const ProgramOutput& output) {
    CLI::App program("Looks at and runs scripts.", "quorvelin");
    program.set_version_flag("--version", "quorvelin " QUORVELIN_VERSION);
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
        return program.exit(error) == 0 ? kFine : kUnusable;
    }
    for (size_t i = 0; i < std::size(kCommands); ++i) {
        if (declared[i]->parsed()) return actions[i](output);
    }
    return kUnusable;
}

ExitStatus runAndFlush(int argumentCount, char** arguments) {
    Output results(STDOUT_FILENO);
    Output messages(STDERR_FILENO);
    const ExitStatus status = runProgram(argumentCount, arguments, {results, messages});
    if (results.flush()) return status;
    showFileMessage(messages, "standard output", std::strerror(results.failure()));
    return kUnusable;
}

}  // namespace

}  // namespace quorvelin::tool

int main(int argumentCount, char** arguments) {
    // A reader that goes away is told by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    return quorvelin::tool::runOnDeepStack([=]() -> int {
        try {
            return quorvelin::tool::runAndFlush(argumentCount, arguments);
        } catch (...) {
            // The program throws nothing of its own: what comes here is the library running out of memory.
            std::fputs("quorvelin: out of memory\n", stderr);
            return quorvelin::tool::kUnusable;
        }
    });
}
