// The commands that run scripts, as functions over texts that have been read.
#pragma once

#include <string>
#include <vector>

#include "quorvelin/command.h"
#include "quorvelin/files.h"

namespace quorvelin::tool {

// Runs scripts on one machine, in turn, once none of them has a syntax error; `arguments` stand in the global
// `args`. With `strict` the answer is `kScriptError` when any message was reported.
ExitStatus runScripts(const std::vector<Input>& inputs, const std::vector<std::string>& arguments,
                      bool strict, const ProgramOutput& output);

// Runs a text and shows its value, nothing for an undefined one. With `showsType` the word for the type
// stands in front.
ExitStatus evaluateScript(const std::string& text, bool showsType, bool strict, const ProgramOutput& output);

}  // namespace quorvelin::tool
