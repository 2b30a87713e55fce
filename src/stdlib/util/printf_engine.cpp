#include "stdlib/util/printf_engine.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "foundation/character.h"
#include "foundation/heap_block.h"
#include "objects/number_value.h"
#include "stdlib/util/decimal_digits.h"

namespace quorvelin {

// Quirk: both passes read the arguments, so that what script code does for their texts is done twice.
BString JSPrintfEngine::run(const char16_t* format) {
    pass(format, nullptr);
    const int64_t measured = count_;
    BString text;
    if (measured == 0) return text;
    if (measured > BString::kMaximumLength || !text.reserve(static_cast<int32_t>(measured))) return BString();
    // An argument is read again and may be longer this time; what the buffer cannot take is lost.
    room_ = measured;
    pass(format, text.buffer());
    const int32_t written = static_cast<int32_t>(std::min(count_, measured));
    text.buffer()[written] = 0;
    text.reserve(written);
    return text;
}

void JSPrintfEngine::begin(const char16_t* format, char16_t* buffer) {
    cursor_ = format;
    out_ = buffer;
    count_ = 0;
    index_ = 1;
}

void JSPrintfEngine::end() {
    out_ = nullptr;
}

void JSPrintfEngine::pass(const char16_t* format, char16_t* buffer) {
    begin(format, buffer);
    while (step() != 0) {
        if (current_ != u'%') {
            put(current_);
        } else if (*cursor_ == u'%') {
            put(step());
        } else {
            runConversion();
        }
    }
    end();
}

void JSPrintfEngine::runConversion() {
    readFlags();
    width_ = -1;
    if (current_ == u'*') {
        width_ = nextInt();
        step();
        if (width_ < 0) {
            flags_ |= kLeft;
            width_ = static_cast<int32_t>(0 - static_cast<uint32_t>(width_));
        }
    } else if (isDecimalDigit(current_)) {
        width_ = readDigits();
    }
    precision_ = -1;
    if (current_ == u'.') {
        if (step() == u'*') {
            precision_ = std::max(nextInt(), -1);
            step();
        } else {
            precision_ = readDigits();
        }
    }
    if (readSize()) convert();
}

void JSPrintfEngine::readFlags() {
    static constexpr char16_t kFlags[] = u"-+0 #,";
    flags_ = 0;
    for (step(); current_ != 0; step()) {
        int32_t bit = 0;
        while (kFlags[bit] != 0 && kFlags[bit] != current_) ++bit;
        if (kFlags[bit] == 0) break;
        flags_ |= static_cast<uint16_t>(1 << bit);
    }
    // Quirk: a width from an argument may still set "-", but the pad stays: zeros then stand behind the
    // number.
    pad_ = (flags_ & (kZero | kLeft)) == kZero ? u'0' : u' ';
}

int32_t JSPrintfEngine::readDigits() {
    uint32_t value = 0;
    for (; isDecimalDigit(current_); step()) value = value * 10 + (current_ - u'0');
    return static_cast<int32_t>(value);
}

bool JSPrintfEngine::readSize() {
    size_ = 0;
    switch (current_) {
        case u'h':
        case u'l':
        case u'L':
            size_ = current_;
            step();
            return true;
        case u'I':
            // Quirk: any "I" that is not "I64" takes the conversion away, but not the letter that would
            // follow it.
            if (cursor_[0] != u'6' || cursor_[1] != u'4') return false;
            size_ = current_;
            cursor_ += 2;
            step();
            return true;
        default:
            return true;
    }
}

void JSPrintfEngine::convert() {
    switch (current_) {
        case u'c':
        case u'C': {
            const char16_t unit = nextChar();
            putText(&unit, 1);
            break;
        }
        case u'd':
        case u'i':
            putSigned();
            break;
        case u'u':
            putUnsigned(10, false);
            break;
        case u'o':
            putUnsigned(8, false);
            break;
        case u'x':
        case u'X':
            putUnsigned(16, current_ == u'X');
            break;
        case u'e':
        case u'E':
        case u'f':
        case u'g':
        case u'G':
            putDouble(size_ == u'L' ? nextLongDouble() : nextDouble());
            break;
        case u's': {
            // Quirk: the precision does not cut a text.
            const BString& text = nextString();
            putText(text.data(), text.length());
            releaseString();
            break;
        }
        case u'p':
            precision_ = 8;
            flags_ &= static_cast<uint16_t>(~(kAlternative | kGrouped));
            putInteger(nextPointerValue(), 16, true, 0);
            break;
        case u'n':
            nextPointer();
            break;
        default:
            break;
    }
}

int64_t JSPrintfEngine::nextSigned() {
    switch (size_) {
        case u'h':
            return nextShort();
        case u'l':
        case u'L':
            return nextLong();
        case u'I':
            return nextInt64();
        default:
            return nextInt();
    }
}

char16_t JSPrintfEngine::signOf(bool isNegative) const {
    if (isNegative) return u'-';
    if ((flags_ & kPlus) != 0) return u'+';
    return (flags_ & kBlank) != 0 ? u' ' : u'\0';
}

void JSPrintfEngine::putSigned() {
    const int64_t value = nextSigned();
    const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    putInteger(magnitude, 10, false, signOf(value < 0));
}

void JSPrintfEngine::putUnsigned(uint32_t base, bool upperCase) {
    const uint64_t value = static_cast<uint64_t>(nextSigned());
    const uint64_t mask = size_ == u'h' ? 0xFFFF : size_ == u'I' ? UINT64_MAX : 0xFFFFFFFF;
    putInteger(value & mask, base, upperCase, 0);
}

void JSPrintfEngine::putInteger(uint64_t value, uint32_t base, bool upperCase, char16_t sign) {
    char16_t buffer[32];
    char16_t* const bufferEnd = buffer + 32;
    char16_t* first = bufferEnd;
    int32_t digits = 0;
    for (; value != 0; value /= base) {
        if ((flags_ & kGrouped) != 0 && digits != 0 && digits % 3 == 0) *--first = group_;
        const char16_t digit = static_cast<char16_t>(value % base);
        *--first = static_cast<char16_t>(digit < 10 ? u'0' + digit : (upperCase ? u'A' : u'a') + digit - 10);
        ++digits;
    }
    char16_t prefix[3] = {};
    int32_t prefixLength = 0;
    if (sign != 0) prefix[prefixLength++] = sign;
    if ((flags_ & kAlternative) != 0 && base != 10) {
        prefix[prefixLength++] = u'0';
        if (base == 16) prefix[prefixLength++] = upperCase ? u'X' : u'x';
    }
    const int64_t zeros = std::max<int64_t>(0, int64_t{precision_ < 0 ? 1 : precision_} - digits);
    const int64_t length = prefixLength + zeros + (bufferEnd - first);
    // Quirk: zeros that pad stand before the sign.
    padBefore(length);
    put(prefix, prefixLength);
    put(u'0', zeros);
    put(first, bufferEnd - first);
    padBehind(length);
}

void JSPrintfEngine::putDouble(double value) {
    if (!std::isfinite(value)) {
        // Quirk: a NaN becomes minus infinity on its way into a number record.
        const BString word = JSNumberValue::of(value).toText();
        putText(word.data(), word.length());
        return;
    }
    // Quirk: zero without decimals is a single zero in every form, without a sign.
    if (value == 0 && precision_ == 0) {
        putText(u"0", 1);
        return;
    }
    const bool isUpper = current_ == u'E' || current_ == u'G';
    const bool isGeneral = current_ == u'g' || current_ == u'G';
    const DecimalDigits digits(std::fabs(value));
    int64_t decimals = precision_ < 0 ? 6 : precision_;
    bool hasExponent = current_ == u'e' || current_ == u'E';
    if (isGeneral) {
        if (decimals == 0) decimals = 1;
        hasExponent = digits.exponent() < -4 || digits.exponent() >= decimals;
        decimals -= hasExponent ? 1 : digits.exponent() + 1;
        if ((flags_ & kAlternative) == 0) {
            const int64_t point = hasExponent ? 0 : digits.exponent();
            decimals = std::clamp<int64_t>(digits.lastSignificant(point + decimals) - point, 0, decimals);
        }
    }

    // The position of the last digit in front of the point, counted from the first digit.
    const int64_t lastWhole = hasExponent ? 0 : digits.exponent();
    const int64_t wholeDigits = std::max<int64_t>(lastWhole, 0) + 1;
    const bool isGrouped = (flags_ & kGrouped) != 0 && !hasExponent;
    const bool hasPoint = decimals > 0 || (flags_ & kAlternative) != 0;
    const char16_t sign = signOf(value < 0);
    const int32_t exponent = digits.exponent();
    const int32_t exponentLength = hasExponent ? (std::abs(exponent) >= 100 ? 5 : 4) : 0;
    const int64_t length = (sign != 0) + wholeDigits + (isGrouped ? (wholeDigits - 1) / 3 : 0) + hasPoint +
                           decimals + exponentLength;
    padBefore(length);
    if (sign != 0) put(sign);
    for (int64_t i = wholeDigits; i > 0; --i) {
        put(lastWhole < 0 ? u'0' : digits.at(lastWhole + 1 - i));
        if (isGrouped && i > 1 && i % 3 == 1) put(group_);
    }
    if (hasPoint) put(u'.');
    // Digits behind the last one are zeros, however many are asked for.
    const int64_t made = std::clamp<int64_t>(DecimalDigits::kCount - lastWhole, 0, decimals);
    for (int64_t i = 1; i <= made; ++i) put(digits.at(lastWhole + i));
    put(u'0', decimals - made);
    if (hasExponent) {
        put(isUpper ? u'E' : u'e');
        put(exponent < 0 ? u'-' : u'+');
        const int32_t magnitude = std::abs(exponent);
        if (magnitude >= 100) put(static_cast<char16_t>(u'0' + magnitude / 100));
        put(static_cast<char16_t>(u'0' + magnitude / 10 % 10));
        put(static_cast<char16_t>(u'0' + magnitude % 10));
    }
    padBehind(length);
}

void JSPrintfEngine::putText(const char16_t* units, int64_t length) {
    padBefore(length);
    put(units, length);
    padBehind(length);
}

void JSPrintfEngine::put(char16_t unit, int64_t times) {
    if (times <= 0) return;
    if (out_ != nullptr) {
        const int64_t fitting = std::min(times, room_ - count_);
        for (int64_t i = 0; i < fitting; ++i) out_[count_ + i] = unit;
    }
    count_ += times;
}

void JSPrintfEngine::put(const char16_t* units, int64_t length) {
    if (out_ != nullptr) {
        const int64_t fitting = std::min(length, room_ - count_);
        if (fitting > 0) std::memcpy(out_ + count_, units, static_cast<size_t>(fitting) * sizeof(char16_t));
    }
    count_ += length;
}

}  // namespace quorvelin
