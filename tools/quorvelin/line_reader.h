// Reads an input line by line as it arrives, so that a partner at the other end of a pipe is answered at
// once.
#pragma once

#include <optional>
#include <string>

namespace quorvelin::tool {

class LineReader {
  public:
    // Reads an open file descriptor, which stays the caller's.
    explicit LineReader(int descriptor) : descriptor_(descriptor) {}
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // The next line without its line feed; what follows the last line feed counts as a line unless it is
    // empty. Nothing at the end of the input, or when it cannot be read; `failure` then tells why.
    std::optional<std::string> next();

    // The number of the system's error, 0 for none.
    int failure() const { return failure_; }

  private:
    bool readMore();

    int descriptor_;
    int failure_ = 0;
    bool ended_ = false;
    std::string buffer_;
    size_t start_ = 0;  // of what has not been given yet
};

}  // namespace quorvelin::tool
