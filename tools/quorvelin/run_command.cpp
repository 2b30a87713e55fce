#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "quorvelin/run_commands.h"
#include "quorvelin/script_session.h"

namespace quorvelin::tool {

namespace {

struct RunArguments {
    std::vector<std::string> earlierFiles;
    bool strict = false;
};

// FILE and what follows it are not declared to the parser: whatever the arguments of a script look like, they
// are the script's.
class RunFormatter final : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App*, std::string name) const override {
        return "Usage: " + name + " [OPTIONS] FILE [ARGUMENT...]\n";
    }
    std::string make_positionals(const CLI::App*) const override {
        std::stringstream help;
        help << "\nPositionals:\n";
        CLI::detail::format_help(help, "  FILE", kFileHelp, get_column_width());
        CLI::detail::format_help(help, "  ARGUMENT...", "The texts of the script's array args",
                                 get_column_width());
        return help.str();
    }
};

bool isOption(const std::string& word) {
    return word.size() > 1 && word.front() == '-';
}

void checkOperands(const std::vector<std::string>& operands) {
    if (operands.empty()) throw CLI::RequiredError("FILE");
    if (isOption(operands.front())) throw CLI::ExtrasError({operands.front()});
}

}  // namespace

ExitStatus runScripts(const std::vector<Input>& inputs, const std::vector<std::string>& arguments,
                      bool strict, const ProgramOutput& output) {
    ScriptSession session(output);
    ExitStatus status = kFine;
    for (const Input& input : inputs) status = std::max(status, session.add(input));
    if (status != kFine) return status;

    session.setArguments(arguments);
    for (size_t i = 0; i < session.scriptCount() && !output.results.isClosed(); ++i) {
        Value ignored;
        status = std::max(status, session.run(i, &ignored));
    }
    return strict && session.messageCount() > 0 ? kScriptError : status;
}

CommandAction declareRun(CLI::App& arguments) {
    const auto values = std::make_shared<RunArguments>();
    arguments.add_flag("--strict", values->strict, "Exit status 1 when any message was reported");
    arguments
        .add_option("--load", values->earlierFiles, "A file to run before FILE; may be given several times")
        ->type_name("FILE")
        ->allow_extra_args(false);
    arguments.prefix_command();
    arguments.formatter(std::make_shared<RunFormatter>());
    arguments.final_callback([&arguments] { checkOperands(arguments.remaining()); });
    arguments.footer(
        "All files run on one machine, in turn; nothing runs when one of them has a syntax error. What the "
        "scripts\n"
        "print with console.println goes to standard output. Each message goes to standard error as\n"
        "FILE:LINE:COLUMN: message, with the source line and a mark under the place; it does not end the "
        "run.");
    return [values, &arguments](const ProgramOutput& output) {
        std::vector<std::string> operands = arguments.remaining();
        std::vector<std::string> files = values->earlierFiles;
        files.push_back(operands.front());
        operands.erase(operands.begin());

        std::vector<Input> inputs;
        for (const std::string& file : files) {
            std::optional<Input> input = readInput(file, output.messages);
            if (input) inputs.push_back(std::move(*input));
        }
        if (inputs.size() < files.size()) return kUnusable;
        return runScripts(inputs, operands, values->strict, output);
    };
}

}  // namespace quorvelin::tool
