// BString, the text of the system: 16-bit units with an explicit length.
//
// A text is a sequence of UTF-16 code units that are treated one at a time; nothing here knows surrogates.
// The buffer always ends in a NUL that the length does not count. Its size follows one rule: whenever a text
// is sized for n units it gets (n & ~31) + 32, so that building a long text has predictable memory steps.
// An empty text has two states: the cheap one points at a shared NUL and owns nothing (capacity 0), and one
// that owns a real buffer; every operation takes both.
//
// A failed allocation, or a length that the 32-bit range cannot hold, leaves a valid text: the operation
// answers false (or gives the cheap empty text, for constructors) and what was there stays.
#pragma once

#include <cstdint>
#include <utility>

namespace quorvelin {

class BString {
  public:
    // The longest text that can be built, in units.
    static constexpr int32_t kMaximumLength = 0x0FFFFFC0;

    // The cheap empty text.
    BString() noexcept : data_(emptyBuffer()) {}

    // A copy of a zero-terminated text; null gives the cheap empty text.
    BString(
        const char16_t* text);  // NOLINT(google-explicit-constructor): literals stand for texts everywhere

    // A copy of `length` units, which may hold NULs.
    BString(const char16_t* units, int32_t length);

    // A copy always owns a buffer, even a copy of the empty text.
    BString(const BString& other) : BString(other.data_, other.length_) {}

    // Takes the buffer over; the other text is left in the cheap empty state.
    BString(BString&& other) noexcept;

    ~BString() { freeBuffer(); }

    // Assignment reuses the buffer where the units fit. Assigning a text to itself does nothing.
    BString& operator=(const BString& other);
    BString& operator=(BString&& other) noexcept;

    int32_t length() const { return length_; }
    // Units that the buffer can hold, its NUL included; 0 in the cheap empty state.
    int32_t capacity() const { return capacity_; }
    bool isEmpty() const { return length_ == 0; }
    // The units, followed by a NUL. Valid until the text changes.
    const char16_t* data() const { return data_; }
    // The unit at `index`, which is not checked: 0 <= index <= length(), the last being the NUL.
    char16_t operator[](int32_t index) const { return data_[index]; }

    // The buffer for writing. Only for a text that owns one (after a successful `reserve` or `grow`).
    char16_t* buffer() { return data_; }

    // Sets the length to `n` with room for it. The caller writes the units and the NUL: what stands beyond
    // the old length is undefined. Never shrinks the buffer. False when there is no memory; nothing changes
    // then.
    bool reserve(int32_t n);

    // As `reserve`, but for appending: the old units and their NUL stay even when the text owned no buffer.
    bool grow(int32_t n);

    // Back to the cheap empty state.
    void clear();

    // Appends. False when there is no memory; the text is unchanged then.
    bool append(const char16_t* units, int32_t count);
    bool append(const BString& other) { return append(other.data_, other.length_); }
    bool append(const char16_t* text);
    bool append(char16_t unit) { return append(&unit, 1); }

    BString& operator+=(const BString& other) {
        append(other);
        return *this;
    }
    BString& operator+=(const char16_t* text) {
        append(text);
        return *this;
    }

    // Replaces the text by `length` units; they must not lie in this text.
    bool assign(const char16_t* units, int32_t length);

    // Removes the first `count` units (0 to length()).
    void removePrefix(int32_t count);

    // Equal length and equal units.
    friend bool operator==(const BString& a, const BString& b) { return a.equals(b.data_, b.length_); }
    bool equals(const char16_t* units, int32_t length) const;
    bool equals(const char16_t* text) const;

    // Does the text begin with the zero-terminated `prefix`?
    bool startsWith(const char16_t* prefix) const;

    // Order by units up to the first NUL: below 0, 0 or above 0.
    int compare(const BString& other) const;

    // The `n` units from `start` (0 to length(), not checked) as a text of its own; n < 0 means to the end
    // and gives the cheap empty text when nothing remains there. n is cut to what the text has.
    BString substr(int32_t start, int32_t n) const;

    // A text built as the C library's wide printf would; texts among the arguments are `const wchar_t*`
    // through %ls. The result grows in steps of 16 units until the formatted text fits.
    static BString format(const wchar_t* format, ...);

    // The length of a zero-terminated text, in units.
    static int32_t measure(const char16_t* text);

  private:
    friend class Atom;
    friend class NameTable;

    // The one buffer that every cheap empty text points at. It is only ever read.
    static char16_t sharedEmptyBuffer_[1];
    static char16_t* emptyBuffer() noexcept { return sharedEmptyBuffer_; }

    // The capacity word of a text that lives in the name table (see name.h): negative, so that it owns no
    // buffer, and made from an address of this library, so that a text from the table of another library in
    // the process that carries this code is not taken for one of ours.
    static int32_t internedMark() {
        return static_cast<int32_t>(
            0x80000000u | static_cast<uint32_t>(reinterpret_cast<uintptr_t>(sharedEmptyBuffer_) >> 1));
    }
    bool isInterned() const { return capacity_ == internedMark(); }

    static int32_t capacityFor(int32_t n) { return (n & ~31) + 32; }
    void freeBuffer();
    bool ownsBuffer() const { return capacity_ > 0; }

    char16_t* data_;
    int32_t length_ = 0;
    int32_t capacity_ = 0;
};

}  // namespace quorvelin
