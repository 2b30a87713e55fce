// The conversation with a machine, line by line.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "quorvelin/command.h"

namespace quorvelin::tool {

// Asks for a line; `isFirst` is false for a further line of an input that is not complete. Nothing at the end
// of the input.
using LineSource = std::function<std::optional<std::string>(bool isFirst)>;

// Does an input want another line? So it is when it has more opening than closing brackets, strings and
// comments aside, and cannot be parsed as it is. (The second condition is for brackets in regular
// expressions, which only the parser knows from others.)
bool isIncomplete(const std::string& input);

// Runs the inputs of a source on one machine and shows their values and messages. An input whose source ends
// before it is complete is run as it is.
void converse(const LineSource& nextLine, const ProgramOutput& output);

}  // namespace quorvelin::tool
