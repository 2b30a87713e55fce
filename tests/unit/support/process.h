// Runs the built program as a process of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvelin::support {

struct ProcessResult {
    int status = -1;     // exit status, or -1 when a signal ended the process
    int signal = 0;      // the signal
    std::string output;  // standard output
    std::string errors;  // standard error
};

// Runs the file `program` with these arguments and this standard input, and waits for it.
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         std::string_view input = {});

// The same with standard output going to an open descriptor, which the call closes.
ProcessResult runProcessWithOutput(const std::string& program, const std::vector<std::string>& arguments,
                                   std::string_view input, int outputDescriptor);

// A folder that goes away, with what is in it, at the end of the scope.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // The path of a file in it, which need not exist.
    std::string file(std::string_view name) const { return path_ + "/" + std::string(name); }
    // The path of a new file with this content.
    std::string write(std::string_view name, std::string_view content) const;
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

// The content of a file; "" when there is none.
std::string readFile(const std::string& path);

}  // namespace quorvelin::support
