// Files as the program reads and writes them: whole, with the system's reason when that does not work.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "quorvelin/output.h"

namespace quorvelin::tool {

// A file that was read. The name is the one that the user gave.
struct Input {
    std::string name;
    std::string bytes;
};

// The name that stands for standard input, and for standard output where a file is written.
inline constexpr std::string_view kStandardStream = "-";

// Reads a file, or standard input for "-". Nothing when it cannot be read; `messages` then got a line that
// says why.
std::optional<Input> readInput(const std::string& name, Output& messages);

// Writes a file, or standard output for "-". An existing file is replaced only when all bytes are written,
// and keeps its access rights. False when that does not work; `messages` then got a line that says why.
bool writeFile(const std::string& name, std::string_view bytes, const ProgramOutput& output);

// One line about a file.
void showFileMessage(Output& messages, std::string_view name, std::string_view message);

}  // namespace quorvelin::tool
