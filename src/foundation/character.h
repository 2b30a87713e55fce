// Character tests that do not depend on a locale: a script means the same on every machine.
#pragma once

#include <cstdint>

namespace quorvelin {

inline bool isDecimalDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
inline bool isOctalDigit(char16_t c) {
    return c >= u'0' && c <= u'7';
}

// The value of a hexadecimal digit of either case, or -1.
inline int32_t hexadecimalDigitValue(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

// The host's answers for characters outside ASCII.
bool isAlphabeticBeyondAscii(char16_t c);
bool isSpaceBeyondAscii(char16_t c);

// A letter, as the host's character query says.
inline bool isAlphabetic(char16_t c) {
    if (c < 0x80) return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    return isAlphabeticBeyondAscii(c);
}

// White space, as the host's character query says.
inline bool isSpace(char16_t c) {
    if (c < 0x80) return c == u' ' || (c >= 9 && c <= 13);
    return isSpaceBeyondAscii(c);
}

// Casing knows A to Z and a to z only.
inline char16_t toLowerCase(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}
inline char16_t toUpperCase(char16_t c) {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
}

}  // namespace quorvelin
