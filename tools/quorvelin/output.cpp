#include "quorvelin/output.h"

#include <unistd.h>

#include <cerrno>

namespace quorvelin::tool {

namespace {

constexpr size_t kPiece = 64 * 1024;

}  // namespace

Output::Output(int descriptor) : descriptor_(descriptor), isTerminal_(::isatty(descriptor) != 0) {}

void Output::write(std::string_view bytes) {
    if (text_ != nullptr) {
        text_->append(bytes);
        return;
    }
    if (closed_) return;
    buffer_.append(bytes);
    if (buffer_.size() >= kPiece || (isTerminal_ && bytes.ends_with('\n'))) flush();
}

bool Output::flush() {
    if (!closed_) hand(buffer_);
    buffer_.clear();
    return failure_ == 0;
}

void Output::hand(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<size_t>(count));
        } else if (errno != EINTR) {
            if (errno != EPIPE) failure_ = errno;
            closed_ = true;
            return;
        }
    }
}

}  // namespace quorvelin::tool
