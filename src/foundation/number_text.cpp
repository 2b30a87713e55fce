#include "foundation/number_text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "foundation/character.h"

namespace quorvelin {

namespace {

bool isSpaceInCLocale(char16_t c) {
    return c == u' ' || (c >= 9 && c <= 13);
}

// The value of a digit in bases up to 36, or 36.
int32_t digitValue(char16_t c) {
    if (isDecimalDigit(c)) return c - u'0';
    const char16_t lower = toLowerCase(c);
    return lower >= u'a' && lower <= u'z' ? lower - u'a' + 10 : 36;
}

// Does `text` begin with the word, given in lower case?
bool startsWithWord(const char16_t* text, const char16_t* word) {
    for (; *word != 0; ++text, ++word) {
        if (toLowerCase(*text) != *word) return false;
    }
    return true;
}

// Is this a "0x" with a hexadecimal digit behind it?
bool isHexadecimalPrefix(const char16_t* text) {
    return text[0] == u'0' && toLowerCase(text[1]) == u'x' && hexadecimalDigitValue(text[2]) >= 0;
}

// What stands in front of the digits of a number.
struct Start {
    const char16_t* digits;
    bool isNegative;
};

Start skipSpaceAndSign(const char16_t* text) {
    while (isSpaceInCLocale(*text)) ++text;
    const bool isNegative = *text == u'-';
    if (isNegative || *text == u'+') ++text;
    return {text, isNegative};
}

// The digits of one number on their way to the library's conversion: the significant ones as a whole number,
// and the power by which it is to be multiplied. However long a text is, this many digits and a mark for "and
// more" determine the nearest double.
class Digits {
  public:
    static constexpr int32_t kMost = 800;
    // An exponent of this size is beyond the range whatever the digits; larger ones are cut to it.
    static constexpr int64_t kLargestExponent = 100'000'000'000;

    explicit Digits(int32_t radix) : base_(radix), bitsPerDigit_(radix == 16 ? 4 : 1) {}

    // Takes digits, with one point among or around them. The end of what was taken; null without a digit.
    const char16_t* take(const char16_t* text) {
        bool sawDigit = false;
        bool sawPoint = false;
        for (;; ++text) {
            if (*text == u'.' && !sawPoint) {
                sawPoint = true;
            } else if (const int32_t value = digitValue(*text); value < base_) {
                sawDigit = true;
                add(static_cast<char>(*text), value != 0, sawPoint);
            } else {
                return sawDigit ? text : nullptr;
            }
        }
    }

    // Takes an exponent, when one follows: the letter, a sign, decimal digits. The end of what was taken.
    const char16_t* takeExponent(const char16_t* text, char16_t letter) {
        if (toLowerCase(*text) != letter) return text;
        const char16_t* digit = text + 1;
        const bool isNegative = *digit == u'-';
        if (isNegative || *digit == u'+') ++digit;
        if (!isDecimalDigit(*digit)) return text;
        int64_t value = 0;
        for (; isDecimalDigit(*digit); ++digit)
            value = std::min(kLargestExponent, value * 10 + (*digit - u'0'));
        exponent_ += isNegative ? -value : value;
        return digit;
    }

    double value() {
        if (count_ == 0) return 0;
        const int64_t magnitude = exponent_ + int64_t{count_} * bitsPerDigit_;
        if (moreDigits_) characters_[count_++] = '1', exponent_ -= bitsPerDigit_;
        char* end = characters_ + count_;
        *end++ = base_ == 16 ? 'p' : 'e';
        end = std::to_chars(end, std::end(characters_), exponent_).ptr;
        double result = 0;
        const std::from_chars_result done = std::from_chars(
            characters_, end, result, base_ == 16 ? std::chars_format::hex : std::chars_format::scientific);
        if (done.ec == std::errc::result_out_of_range) {
            result = magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
        }
        return result;
    }

  private:
    void add(char digit, bool isSignificant, bool behindPoint) {
        if (count_ == 0 && !isSignificant) {
            if (behindPoint) exponent_ -= bitsPerDigit_;
        } else if (count_ < kMost) {
            characters_[count_++] = digit;
            if (behindPoint) exponent_ -= bitsPerDigit_;
        } else {
            moreDigits_ = moreDigits_ || isSignificant;
            if (!behindPoint) exponent_ += bitsPerDigit_;
        }
    }

    const int32_t base_;
    const int32_t bitsPerDigit_;
    int32_t count_ = 0;
    bool moreDigits_ = false;
    int64_t exponent_ = 0;
    char characters_[kMost + 32];
};

// The number at `text`, which has no sign, and its end; a null end when there is none.
const char16_t* readUnsigned(const char16_t* text, double* value) {
    if (startsWithWord(text, u"inf")) {
        *value = std::numeric_limits<double>::infinity();
        return text + (startsWithWord(text, u"infinity") ? 8 : 3);
    }
    if (startsWithWord(text, u"nan")) {
        *value = std::numeric_limits<double>::quiet_NaN();
        const char16_t* end = text + 3;
        if (*end == u'(') {
            const char16_t* word = end + 1;
            while (digitValue(*word) < 36 || *word == u'_') ++word;
            if (*word == u')') end = word + 1;
        }
        return end;
    }
    // "0x.8" is a number as well: its digits may begin behind the point.
    const bool isHexadecimal =
        isHexadecimalPrefix(text) || (text[0] == u'0' && toLowerCase(text[1]) == u'x' && text[2] == u'.' &&
                                      hexadecimalDigitValue(text[3]) >= 0);
    Digits digits(isHexadecimal ? 16 : 10);
    const char16_t* end = digits.take(isHexadecimal ? text + 2 : text);
    if (end == nullptr) return nullptr;
    end = digits.takeExponent(end, isHexadecimal ? u'p' : u'e');
    *value = digits.value();
    return end;
}

void store(int32_t* consumed, const char16_t* text, const char16_t* end) {
    if (consumed != nullptr) *consumed = end == nullptr ? 0 : static_cast<int32_t>(end - text);
}

}  // namespace

double parseDouble(const char16_t* text, int32_t* consumed) {
    const Start start = skipSpaceAndSign(text);
    double value = 0;
    const char16_t* end = readUnsigned(start.digits, &value);
    store(consumed, text, end);
    if (end == nullptr) return 0;
    return start.isNegative ? -value : value;
}

int32_t parseInteger32(const char16_t* text, int32_t radix, int32_t* consumed) {
    store(consumed, text, nullptr);
    if (radix < 0 || radix == 1 || radix > 36) return 0;

    const Start start = skipSpaceAndSign(text);
    const char16_t* digit = start.digits;
    if ((radix == 0 || radix == 16) && isHexadecimalPrefix(digit)) {
        radix = 16;
        digit += 2;
    } else if (radix == 0) {
        radix = *digit == u'0' ? 8 : 10;
    }

    const int64_t limit = int64_t{INT32_MAX} + (start.isNegative ? 1 : 0);
    int64_t value = 0;
    const char16_t* const first = digit;
    for (; digitValue(*digit) < radix; ++digit) value = std::min(limit, value * radix + digitValue(*digit));
    if (digit == first) return 0;
    store(consumed, text, digit);
    return static_cast<int32_t>(start.isNegative ? -value : value);
}

int32_t truncateToInt32(double value) {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value) : INT32_MIN;
}

int64_t truncateToInt64(double value) {
    constexpr double kTwoTo63 = 9223372036854775808.0;
    return value >= -kTwoTo63 && value < kTwoTo63 ? static_cast<int64_t>(value) : INT64_MIN;
}

}  // namespace quorvelin
