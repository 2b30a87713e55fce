// TextBuilder collects a text of unknown length in time that is linear in its length, for the engine's own
// work (tokens, regenerated source, number formats). The finished text leaves as a BString of the usual size.
#pragma once

#include <cstdint>
#include <cstring>

#include "foundation/bstring.h"
#include "foundation/heap_block.h"

namespace quorvelin {

class TextBuilder {
  public:
    // Forgets the units, keeps the room.
    void clear() {
        length_ = 0;
        failed_ = false;
    }

    int32_t length() const { return length_; }
    const char16_t* data() const { return units_.data(); }
    char16_t operator[](int32_t index) const { return units_[static_cast<size_t>(index)]; }
    // True once memory failed; what was to be appended since is lost, so that what stands is a prefix.
    bool failed() const { return failed_; }

    void append(char16_t unit) {
        if (makeRoom(1)) units_[static_cast<size_t>(length_++)] = unit;
    }
    void append(const char16_t* units, int32_t count) {
        if (count <= 0 || !makeRoom(count)) return;
        std::memcpy(units_.data() + length_, units, static_cast<size_t>(count) * sizeof(char16_t));
        length_ += count;
    }
    void append(const BString& text) { append(text.data(), text.length()); }
    void append(const char16_t* text) { append(text, BString::measure(text)); }
    void appendAscii(const char* text) {
        while (*text != 0) append(static_cast<char16_t>(static_cast<unsigned char>(*text++)));
    }
    void appendDecimal(int64_t number);

    void dropLast() {
        if (length_ > 0) --length_;
    }

    BString text() const { return BString(units_.data(), length_); }

  private:
    bool makeRoom(int32_t more) {
        if (failed_ || length_ > BString::kMaximumLength - more ||
            !units_.growTo(static_cast<size_t>(length_) + static_cast<size_t>(more))) {
            failed_ = true;
            return false;
        }
        return true;
    }

    HeapBlock<char16_t> units_;
    int32_t length_ = 0;
    bool failed_ = false;
};

}  // namespace quorvelin
