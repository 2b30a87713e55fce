// The commands of the program. Each is declared to the argument parser in a file of its own, and main.cpp
// holds the table of all.
#pragma once

#include <functional>

#include "quorvelin/output.h"

namespace CLI {  // NOLINT(readability-identifier-naming): the library's own name
class App;
}

namespace quorvelin::tool {

// How the program ends.
enum ExitStatus : int {
    kFine = 0,
    kScriptError = 1,  // a script has an error
    kUnusable = 2,     // wrong arguments, or a file that cannot be read or written
};

// What a command does once its arguments are known.
using CommandAction = std::function<ExitStatus(const ProgramOutput&)>;

struct Command {
    const char* name;
    const char* summary;
    // Declares the arguments and gives what is to be done with them.
    CommandAction (*declare)(CLI::App& arguments);
};

// What `--help` says about FILE.
extern const char* const kFileHelp;

CommandAction declareRun(CLI::App& arguments);
CommandAction declareEval(CLI::App& arguments);
CommandAction declareRepl(CLI::App& arguments);
CommandAction declareBatch(CLI::App& arguments);
CommandAction declareTokens(CLI::App& arguments);
CommandAction declareTree(CLI::App& arguments);
CommandAction declareFormat(CLI::App& arguments);
CommandAction declareCheck(CLI::App& arguments);
CommandAction declareCompile(CLI::App& arguments);

}  // namespace quorvelin::tool
