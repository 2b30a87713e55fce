#include "quorvelin/line_reader.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quorvelin::tool {

std::optional<std::string> LineReader::next() {
    size_t searched = start_;
    for (;;) {
        const size_t end = buffer_.find('\n', searched);
        if (end != std::string::npos) {
            std::string line = buffer_.substr(start_, end - start_);
            start_ = end + 1;
            return line;
        }
        buffer_.erase(0, start_);
        start_ = 0;
        searched = buffer_.size();
        if (!readMore()) break;
    }
    if (failure_ != 0 || buffer_.empty()) return std::nullopt;
    return std::exchange(buffer_, {});
}

bool LineReader::readMore() {
    constexpr size_t kPiece = 64 * 1024;
    while (!ended_) {
        const size_t size = buffer_.size();
        buffer_.resize(size + kPiece);
        const ssize_t count = ::read(descriptor_, buffer_.data() + size, kPiece);
        const int error = errno;
        buffer_.resize(size + (count > 0 ? static_cast<size_t>(count) : 0));
        if (count > 0) return true;
        if (count < 0 && error == EINTR) continue;
        if (count < 0) failure_ = error;
        ended_ = true;
    }
    return false;
}

}  // namespace quorvelin::tool
