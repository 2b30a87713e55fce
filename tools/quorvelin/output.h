// Where the program writes: standard output and standard error, or a text when a test looks at what was
// written.
#pragma once

#include <string>
#include <string_view>

namespace quorvelin::tool {

// Collects what is written and hands it on in large pieces; to a terminal line by line. A reader that goes
// away is no error: what is written from then on is dropped.
class Output {
  public:
    // Writes to an open file descriptor, which stays the caller's.
    explicit Output(int descriptor);
    // Appends to a text, which must outlive the output.
    explicit Output(std::string* text) : text_(text) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() { flush(); }

    void write(std::string_view bytes);
    void write(char byte) { write(std::string_view(&byte, 1)); }

    // Hands everything on. False when something could not be written for another reason than that the reader
    // has gone; `failure` tells it.
    bool flush();

    // The number of the system's error, 0 for none.
    int failure() const { return failure_; }

    // Nobody reads any more, or writing failed: a command may stop.
    bool isClosed() const { return closed_; }

  private:
    void hand(std::string_view bytes);

    int descriptor_ = -1;
    bool isTerminal_ = false;
    std::string* text_ = nullptr;
    std::string buffer_;
    bool closed_ = false;
    int failure_ = 0;
};

// What a command is given to write to: its results, and what it has to say about errors.
struct ProgramOutput {
    Output& results;
    Output& messages;
};

}  // namespace quorvelin::tool
