// The commands that look at the text and the tree of a script and run nothing, as functions over files that
// have been read.
#pragma once

#include <string>

#include "quorvelin/command.h"
#include "quorvelin/files.h"

namespace quorvelin::tool {

// One token a line: line, column, kind and text, separated by tabs. A token that is an error of the scanner
// is told in the messages as well.
ExitStatus showTokens(const Input& input, const ProgramOutput& output);

enum class TreeForm { outline, json };

// The tree, one node a line, or as one line of JSON.
ExitStatus showTree(const Input& input, TreeForm form, const ProgramOutput& output);

// The source text that the tree is written back as.
ExitStatus formatScript(const Input& input, const ProgramOutput& output);

// Nothing but the script's syntax error, if it has one.
ExitStatus checkScript(const Input& input, const ProgramOutput& output);

// Writes the saved form of the tree to the file `target`, with a warning for everything that it cannot hold.
ExitStatus compileScript(const Input& input, const std::string& target, const ProgramOutput& output);

}  // namespace quorvelin::tool
