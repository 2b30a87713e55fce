#include "foundation/bstring.h"

#include <cstdarg>
#include <cstring>
#include <cwchar>

#include "foundation/heap_block.h"
#include "host/allocator.h"

namespace quorvelin {

namespace {

size_t byteCount(int32_t units) {
    return static_cast<size_t>(units) * sizeof(char16_t);
}

}  // namespace

char16_t BString::sharedEmptyBuffer_[1] = {0};

int32_t BString::measure(const char16_t* text) {
    int32_t length = 0;
    while (text[length] != 0) ++length;
    return length;
}

BString::BString(const char16_t* text) : data_(emptyBuffer()) {
    if (text != nullptr) assign(text, measure(text));
}

BString::BString(const char16_t* units, int32_t length) : data_(emptyBuffer()) {
    assign(units, length);
}

BString::BString(BString&& other) noexcept : BString() {
    *this = std::move(other);
}

BString& BString::operator=(const BString& other) {
    if (this != &other) assign(other.data_, other.length_);
    return *this;
}

BString& BString::operator=(BString&& other) noexcept {
    if (this == &other) return *this;
    if (other.capacity_ < 0) {
        assign(other.data_, other.length_);
        return *this;
    }
    freeBuffer();
    data_ = std::exchange(other.data_, emptyBuffer());
    length_ = std::exchange(other.length_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
}

void BString::freeBuffer() {
    if (ownsBuffer()) _sfree(data_);
}

bool BString::reserve(int32_t n) {
    if (n < 0 || n > kMaximumLength) return false;
    if (!ownsBuffer()) {
        char16_t* fresh = static_cast<char16_t*>(_smalloc(byteCount(capacityFor(n))));
        if (fresh == nullptr) return false;
        fresh[0] = 0;
        data_ = fresh;
        capacity_ = capacityFor(n);
    } else if (n >= capacity_) {
        char16_t* moved = static_cast<char16_t*>(_srealloc(data_, byteCount(capacityFor(n))));
        if (moved == nullptr) return false;
        data_ = moved;
        capacity_ = capacityFor(n);
    }
    length_ = n;
    return true;
}

bool BString::grow(int32_t n) {
    if (ownsBuffer()) return reserve(n);
    const char16_t* oldUnits = data_;
    const int32_t oldLength = length_;
    if (!reserve(n > oldLength ? n : oldLength)) return false;
    std::memcpy(data_, oldUnits, byteCount(oldLength + 1));
    return true;
}

void BString::clear() {
    freeBuffer();
    data_ = emptyBuffer();
    length_ = 0;
    capacity_ = 0;
}

bool BString::assign(const char16_t* units, int32_t length) {
    if (!reserve(length)) return false;
    if (length > 0) std::memcpy(data_, units, byteCount(length));
    data_[length] = 0;
    return true;
}

bool BString::append(const char16_t* units, int32_t count) {
    const int32_t oldLength = length_;
    if (count > kMaximumLength - oldLength) return false;
    // A text appended to itself: the units move along with the buffer.
    const bool ownUnits = units >= data_ && units <= data_ + oldLength;
    const ptrdiff_t offset = units - data_;
    if (!grow(oldLength + count)) return false;
    if (ownUnits) units = data_ + offset;
    if (count > 0) std::memmove(data_ + oldLength, units, byteCount(count));
    data_[oldLength + count] = 0;
    return true;
}

bool BString::append(const char16_t* text) {
    return append(text, measure(text));
}

void BString::removePrefix(int32_t count) {
    if (count <= 0) return;
    if (!ownsBuffer() && !grow(length_)) return;
    length_ -= count;
    std::memmove(data_, data_ + count, byteCount(length_ + 1));
}

bool BString::equals(const char16_t* units, int32_t length) const {
    return length_ == length && std::memcmp(data_, units, byteCount(length)) == 0;
}

bool BString::equals(const char16_t* text) const {
    return equals(text, measure(text));
}

bool BString::startsWith(const char16_t* prefix) const {
    for (int32_t i = 0; prefix[i] != 0; ++i) {
        if (data_[i] != prefix[i]) return false;  // the NUL at the end of a shorter text differs as well
    }
    return true;
}

int BString::compare(const BString& other) const {
    int32_t i = 0;
    while (data_[i] != 0 && data_[i] == other.data_[i]) ++i;
    return static_cast<int>(data_[i]) - static_cast<int>(other.data_[i]);
}

BString BString::substr(int32_t start, int32_t n) const {
    const int32_t rest = length_ - start;
    if (n < 0) {
        if (rest <= 0) return BString();
        n = rest;
    }
    return BString(data_ + start, n < rest ? n : rest);
}

BString BString::format(const wchar_t* format, ...) {
    BString text;
    HeapBlock<wchar_t> wide;
    for (;;) {
        if (!text.reserve(text.capacity_ + 16)) return BString();
        if (!wide.resize(static_cast<size_t>(text.capacity_))) return BString();
        va_list arguments;
        va_start(arguments, format);
        const int written =
            std::vswprintf(wide.data(), static_cast<size_t>(text.capacity_), format, arguments);
        va_end(arguments);
        if (written >= 0 && written < text.capacity_) {
            for (int i = 0; i < written; ++i) text.data_[i] = static_cast<char16_t>(wide.data()[i]);
            text.data_[written] = 0;
            text.length_ = written;
            return text;
        }
    }
}

}  // namespace quorvelin
