#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <vector>

#include "quorvelin/script.h"
#include "quorvelin/syntax_commands.h"

namespace quorvelin::tool {

ExitStatus checkScript(const Input& input, const ProgramOutput& output) {
    Script script;
    return openScript(input, &script, output.messages);
}

CommandAction declareCheck(CLI::App& arguments) {
    const auto files = std::make_shared<std::vector<std::string>>();
    arguments.add_option("FILE", *files, kFileHelp)->required()->type_name("");
    arguments.footer(
        "An error is shown as FILE:LINE:COLUMN: message, with the source line and a mark under the place. "
        "The parser\n"
        "stops at the first error of a file. Line and column are those that the engine counts.");
    return [files](const ProgramOutput& output) {
        ExitStatus worst = kFine;
        for (const std::string& file : *files) {
            const std::optional<Input> input = readInput(file, output.messages);
            worst = std::max(worst, input ? checkScript(*input, output) : kUnusable);
        }
        return worst;
    };
}

}  // namespace quorvelin::tool
