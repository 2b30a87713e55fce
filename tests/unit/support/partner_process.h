// A running program that a test talks to line by line.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace quorvelin::support {

class PartnerProcess {
  public:
    // How the program's standard input and output are joined to the test.
    enum class Link { pipes, terminal };

    PartnerProcess(const std::string& program, const std::vector<std::string>& arguments, Link link);
    // Ends the program if it still runs.
    ~PartnerProcess();
    PartnerProcess(const PartnerProcess&) = delete;
    PartnerProcess& operator=(const PartnerProcess&) = delete;

    void write(std::string_view bytes);
    void closeInput();

    // Waits until the program at a terminal takes each key as it is typed. The editor prints its prompt
    // before it says so, and a key in between, a Ctrl-D above all, would mean something else.
    void waitForLineEditor();

    // Everything that arrives up to and including the first `end`, or less when the program ends or nothing
    // comes for too long.
    std::string readUntil(std::string_view end);

    // Waits for the end of the program and gives its exit status; -1 when a signal ended it.
    int wait();

  private:
    pid_t child_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string received_;
};

}  // namespace quorvelin::support
