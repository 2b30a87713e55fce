#include "quorvelin/command.h"

namespace quorvelin::tool {

const char* const kFileHelp =
    "A script, or - for standard input. UTF-8, or UTF-16 with a byte-order mark; what is not valid UTF-8 is "
    "read as "
    "U+FFFD. A file whose first byte is 1 is a saved tree";

}  // namespace quorvelin::tool
