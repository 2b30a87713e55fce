// A script file, decoded and turned into a tree.
#pragma once

#include <string>

#include "frontend/nodes.h"
#include "quorvelin/command.h"
#include "quorvelin/files.h"
#include "quorvelin/output.h"
#include "quorvelin/source_text.h"

namespace quorvelin::tool {

struct Script {
    std::string name;
    SourceText source;
    Owned<JSNode> root;
};

// Decodes a file. An answer other than `kFine` has been told in `messages`.
ExitStatus decodeScript(const Input& input, SourceText* source, Output& messages);

// Decodes a file and parses it, or loads it when it is a saved tree. An answer other than `kFine` has been
// told in `messages`; else the script has a root, and no error stands in its tree.
ExitStatus openScript(const Input& input, Script* script, Output& messages);

}  // namespace quorvelin::tool
