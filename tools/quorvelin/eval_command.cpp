#include <CLI/CLI.hpp>
#include <memory>

#include "quorvelin/run_commands.h"
#include "quorvelin/script_session.h"

namespace quorvelin::tool {

ExitStatus evaluateScript(const std::string& text, bool showsType, bool strict, const ProgramOutput& output) {
    ScriptSession session(output);
    Value value;
    const ExitStatus status = session.addAndRun({"(text)", text}, &value);
    if (status != kFine) return status;
    session.showValue(value, showsType);
    return strict && session.messageCount() > 0 ? kScriptError : kFine;
}

CommandAction declareEval(CLI::App& arguments) {
    struct Values {
        std::string text;
        bool showsType = false;
        bool strict = false;
    };
    const auto values = std::make_shared<Values>();
    arguments.add_option("TEXT", values->text, "The text of a script")->required()->type_name("");
    arguments.add_flag("--type", values->showsType, "Put the type of the result in front");
    arguments.add_flag("--strict", values->strict, "Exit status 1 when any message was reported");
    arguments.footer(
        "The result is the value of the last statement; an undefined one shows as nothing, or with --type "
        "as\n"
        "undefined. Messages go to standard error as (text):LINE:COLUMN: message. A TEXT that begins with - "
        "goes\n"
        "behind --, as in: eval -- -1");
    return [values](const ProgramOutput& output) {
        return evaluateScript(values->text, values->showsType, values->strict, output);
    };
}

}  // namespace quorvelin::tool
