#include "stdlib/regexp/pattern_match.h"

#include <cstring>
#include <utility>

namespace quorvelin {

bool PatternMatch::prepend(const char16_t* input, char16_t unit) {
    if (!hasOwnText_) {
        if (input[start_ - 1] == unit) {
            --start_;
            ++length_;
            return true;
        }
        if (!makeOwnText(input)) return false;
    }
    if (!makeRoom(1, 0)) return false;
    buffer_[--first_] = unit;
    --start_;
    ++length_;
    return true;
}

bool PatternMatch::append(const char16_t* input, const PatternMatch& follower) {
    if (follower.length_ == 0) return true;
    if (!hasOwnText_) {
        if (!follower.hasOwnText_ && follower.start_ == end()) {
            length_ += follower.length_;
            return true;
        }
        if (!makeOwnText(input)) return false;
    }
    if (!makeRoom(0, follower.length_)) return false;
    std::memcpy(buffer_.data() + first_ + length_, follower.units(input),
                follower.length_ * sizeof(char16_t));
    length_ += follower.length_;
    return true;
}

bool PatternMatch::setText(const char16_t* input, const BString& text) {
    const uint32_t count = static_cast<uint32_t>(text.length());
    const size_t bytes = count * sizeof(char16_t);
    if (count == length_ && std::memcmp(units(input), text.data(), bytes) == 0) return true;
    length_ = 0;
    hasOwnText_ = true;
    first_ = 0;
    if (!makeRoom(0, count)) return false;
    if (count > 0) std::memcpy(buffer_.data() + first_, text.data(), bytes);
    length_ = count;
    return true;
}

bool PatternMatch::makeOwnText(const char16_t* input) {
    const char16_t* text = units(input);
    if (!buffer_.growTo(length_)) return false;
    if (length_ > 0) std::memcpy(buffer_.data(), text, length_ * sizeof(char16_t));
    first_ = 0;
    hasOwnText_ = true;
    return true;
}

bool PatternMatch::makeRoom(uint32_t before, uint32_t behind) {
    if (before <= first_ && first_ + length_ + behind <= buffer_.size()) return true;
    // As much room again on the side that is short of it.
    const uint32_t front = before > first_ ? before + length_ : first_;
    const uint32_t back = behind > 0 ? behind + length_ : 0;
    HeapBlock<char16_t> fresh;
    if (!fresh.resize(size_t{front} + length_ + back)) return false;
    if (length_ > 0) std::memcpy(fresh.data() + front, buffer_.data() + first_, length_ * sizeof(char16_t));
    buffer_ = std::move(fresh);
    first_ = front;
    return true;
}

}  // namespace quorvelin
