// The batch protocol: cases in, results out, one JSON object a line, for tests and for other programs.
#pragma once

#include <string_view>

#include "quorvelin/command.h"
#include "quorvelin/line_reader.h"

namespace quorvelin::tool {

// The line, without its end, that answers a line of input: the results of a case, or an object that holds
// `error` when the line is no case; `isCase` tells which. Every case has a machine of its own.
std::string answerBatchLine(std::string_view line, bool* isCase);

// Answers each line of `in`, blank ones aside, in the same order, and hands each answer on at once.
// `kUnusable` when a line was no case or the input could not be read.
ExitStatus runBatch(LineReader& in, const ProgramOutput& output);

}  // namespace quorvelin::tool
