// The batch protocol: cases in, results out, one JSON object a line, for tests and for other programs.
#pragma once

#include <iosfwd>

namespace quorvelin::tool {

// Answers each case of `in` with a line on `out`, in the same order. A line that is no case is answered with an object that
// holds `error`. False when there was such a line.
bool runBatch(std::istream& in, std::ostream& out);

}  // namespace quorvelin::tool
