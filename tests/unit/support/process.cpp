#include "support/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace quorvelin::support {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvelin-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view content) const {
    std::ofstream stream(file(name), std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    EXPECT_TRUE(stream.good());
    return file(name);
}

std::string readFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         std::string_view input) {
    const TemporaryFolder folder;
    const std::string target = folder.file("output");
    const int output = ::open(target.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ProcessResult result = runProcessWithOutput(program, arguments, input, output);
    result.output = readFile(target);
    return result;
}

ProcessResult runProcessWithOutput(const std::string& program, const std::vector<std::string>& arguments,
                                   std::string_view input, int outputDescriptor) {
    const TemporaryFolder folder;
    const std::string source = folder.write("input", input);
    const std::string errors = folder.file("errors");

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, source.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outputDescriptor, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT, 0600);

    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);

    ProcessResult result;
    pid_t child = 0;
    const int error = ::posix_spawn(&child, program.c_str(), &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(outputDescriptor);
    EXPECT_EQ(error, 0) << program;
    if (error != 0) return result;

    int state = 0;
    ::waitpid(child, &state, 0);
    if (WIFEXITED(state)) result.status = WEXITSTATUS(state);
    if (WIFSIGNALED(state)) result.signal = WTERMSIG(state);
    result.errors = readFile(errors);
    return result;
}

}  // namespace quorvelin::support
