// What the matcher hands from node to node: where a chain was found, how long the match is and its text.
//
// The text is nearly always just the part of the input from `start` on, and then nothing is stored. It
// differs where a literal contributes its own case and where a back-reference leaves a gap; only then does a
// match keep a text of its own, in a buffer that can grow at both ends.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/heap_block.h"

namespace quorvelin {

class PatternMatch {
  public:
    uint32_t start() const { return start_; }
    uint32_t length() const { return length_; }
    uint32_t end() const { return start_ + length_; }

    // The match of nothing, found at `position`.
    void setEmpty(uint32_t position) {
        start_ = position;
        length_ = 0;
        hasOwnText_ = false;
    }

    // The `length` units of the input at `position`.
    void setPart(uint32_t position, uint32_t length) {
        start_ = position;
        length_ = length;
        hasOwnText_ = false;
    }

    // Puts `unit` in front, for the input's unit in front. Not at position 0. False without memory, as below.
    bool prepend(const char16_t* input, char16_t unit);

    // Puts what follows behind this match.
    bool append(const char16_t* input, const PatternMatch& follower);

    // Replaces the text, and with it the length, but not the start.
    bool setText(const char16_t* input, const BString& text);

    // Cuts the match to its first `length` units.
    void truncate(uint32_t length) { length_ = length; }

    // The `length()` units of the text.
    const char16_t* units(const char16_t* input) const {
        return hasOwnText_ ? buffer_.data() + first_ : input + start_;
    }

  private:
    bool makeOwnText(const char16_t* input);
    bool makeRoom(uint32_t before, uint32_t behind);

    uint32_t start_ = 0;
    uint32_t length_ = 0;
    uint32_t first_ = 0;  // where the own text begins in the buffer
    bool hasOwnText_ = false;
    HeapBlock<char16_t> buffer_;
};

}  // namespace quorvelin
