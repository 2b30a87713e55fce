// What the program has to say about a place in a script: the place, the message, the source line, and a mark
// under the character that the place is.
#pragma once

#include <cstdint>
#include <string_view>

#include "frontend/nodes.h"
#include "quorvelin/output.h"
#include "quorvelin/source_text.h"

namespace quorvelin::tool {

// "NAME:LINE:COLUMN: MESSAGE", with the engine's line and column, then the source line and the mark. The
// message is shown on one line. Without a position (line 0, as all nodes of saved trees have) it is "NAME:
// MESSAGE" alone.
void showDiagnostic(Output& messages, std::string_view name, const SourceText& source, int32_t line,
                    int32_t column, std::u16string_view message);

// "NAME:LINE:COLUMN: MESSAGE" for a place in a text that nobody has: one that a script compiled while it ran.
// The line behind the message says so.
void showUnseenPlace(Output& messages, std::string_view name, int32_t line, int32_t column,
                     std::u16string_view message);

// Shows what the parser found in a script.
void showSyntaxError(Output& messages, std::string_view name, const SourceText& source,
                     const JSErrorNode& error);

}  // namespace quorvelin::tool
