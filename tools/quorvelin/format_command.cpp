#include <CLI/CLI.hpp>
#include <memory>

#include "quorvelin/script.h"
#include "quorvelin/syntax_commands.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

ExitStatus formatScript(const Input& input, const ProgramOutput& output) {
    Script script;
    const ExitStatus status = openScript(input, &script, output.messages);
    if (status == kFine) output.results.write(encodeUtf8(unitsOf(script.root->regenerate())));
    return status;
}

CommandAction declareFormat(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    arguments.add_option("FILE", *file, kFileHelp)->required()->type_name("");
    arguments.footer(
        "The text is rebuilt from the tree, as a script sees it through `decompile`: comments are gone, "
        "operands\n"
        "stand in parentheses, nothing in strings is escaped. It is written as UTF-8; an unpaired surrogate "
        "becomes\n"
        "U+FFFD.");
    return [file](const ProgramOutput& output) {
        const std::optional<Input> input = readInput(*file, output.messages);
        return input ? formatScript(*input, output) : kUnusable;
    };
}

}  // namespace quorvelin::tool
