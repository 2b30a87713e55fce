#include "support/partner_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <utility>

namespace quorvelin::support {

namespace {

constexpr int kPatienceMilliseconds = 60 * 1000;

}  // namespace

PartnerProcess::PartnerProcess(const std::string& program, const std::vector<std::string>& arguments,
                               Link link) {
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);

    int toChild[2] = {-1, -1};
    int fromChild[2] = {-1, -1};
    if (link == Link::terminal) {
        child_ = ::forkpty(&input_, nullptr, nullptr, nullptr);
        output_ = input_;
    } else {
        if (::pipe2(toChild, O_CLOEXEC) != 0 || ::pipe2(fromChild, O_CLOEXEC) != 0)
            ADD_FAILURE() << "no pipes";
        child_ = ::fork();
        input_ = toChild[1];
        output_ = fromChild[0];
    }
    if (child_ == 0) {
        if (link == Link::pipes) {
            ::dup2(toChild[0], STDIN_FILENO);
            ::dup2(fromChild[1], STDOUT_FILENO);
        }
        ::execv(program.c_str(), words.data());
        ::_exit(127);
    }
    EXPECT_GT(child_, 0);
    if (link == Link::pipes) {
        ::close(toChild[0]);
        ::close(fromChild[1]);
    }
}

PartnerProcess::~PartnerProcess() {
    closeInput();
    if (child_ > 0) {
        ::kill(child_, SIGKILL);
        wait();
    }
    if (output_ >= 0) ::close(output_);
}

void PartnerProcess::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        ASSERT_GT(count, 0);
        bytes.remove_prefix(static_cast<size_t>(count));
    }
}

void PartnerProcess::closeInput() {
    if (input_ != output_ && input_ >= 0) ::close(input_);
    input_ = -1;
}

void PartnerProcess::waitForLineEditor() {
    using namespace std::chrono;
    const auto end = steady_clock::now() + milliseconds(kPatienceMilliseconds);
    struct termios modes = {};
    while (::tcgetattr(input_, &modes) == 0 && (modes.c_lflag & ICANON) != 0) {
        ASSERT_LT(steady_clock::now(), end) << "the program does not read keys";
        std::this_thread::sleep_for(milliseconds(1));
    }
}

std::string PartnerProcess::readUntil(std::string_view end) {
    for (;;) {
        const size_t found = received_.find(end);
        if (found != std::string::npos) {
            std::string text = received_.substr(0, found + end.size());
            received_.erase(0, text.size());
            return text;
        }
        struct pollfd wanted = {output_, POLLIN, 0};
        char piece[4096];
        const ssize_t count =
            ::poll(&wanted, 1, kPatienceMilliseconds) > 0 ? ::read(output_, piece, sizeof piece) : 0;
        if (count <= 0) return std::exchange(received_, {});
        received_.append(piece, static_cast<size_t>(count));
    }
}

int PartnerProcess::wait() {
    int state = 0;
    if (::waitpid(std::exchange(child_, -1), &state, 0) < 0) return -1;
    return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
}

}  // namespace quorvelin::support
