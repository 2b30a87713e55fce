#include "foundation/character.h"

#include <gtest/gtest.h>

#include <string_view>

namespace quorvelin {
namespace {

TEST(Character, Digits) {
    for (int c = 0; c < 0x10000; ++c) {
        const char16_t unit = static_cast<char16_t>(c);
        EXPECT_EQ(isDecimalDigit(unit), c >= '0' && c <= '9') << c;
        EXPECT_EQ(isOctalDigit(unit), c >= '0' && c <= '7') << c;
    }
    EXPECT_EQ(hexadecimalDigitValue(u'0'), 0);
    EXPECT_EQ(hexadecimalDigitValue(u'9'), 9);
    EXPECT_EQ(hexadecimalDigitValue(u'a'), 10);
    EXPECT_EQ(hexadecimalDigitValue(u'F'), 15);
    for (const char16_t c : std::u16string_view(u"gG/:@`\uFF10")) EXPECT_EQ(hexadecimalDigitValue(c), -1);
}

TEST(Character, Letters) {
    for (int c = 0; c < 0x80; ++c) {
        EXPECT_EQ(isAlphabetic(static_cast<char16_t>(c)), (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
            << c;
    }
    for (const char16_t c : std::u16string_view(u"\u00AA\u00E4\u0416\u05D0\u4E2D\uAC00\uFF21")) {
        EXPECT_TRUE(isAlphabetic(c)) << static_cast<int>(c);
    }
    for (const char16_t c : std::u16string_view(u"\u00A0\u00D7\u0301\u0661\u20AC\u2160\u3000\uFFFD\uFFFF")) {
        EXPECT_FALSE(isAlphabetic(c)) << static_cast<int>(c);
    }
    EXPECT_FALSE(isAlphabetic(0xD800));
}

TEST(Character, Space) {
    const std::u16string_view spaces =
        u"\t\n\v\f\r "
        u"\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u2028"
        u"\u2029\u202F\u205F\u3000";
    for (int c = 0; c < 0x10000; ++c) {
        const char16_t unit = static_cast<char16_t>(c);
        EXPECT_EQ(isSpace(unit), c != 0 && spaces.find(unit) != std::u16string_view::npos) << c;
    }
}

TEST(Character, CasingKnowsAsciiOnly) {
    for (int c = 0; c < 0x10000; ++c) {
        const char16_t unit = static_cast<char16_t>(c);
        EXPECT_EQ(toLowerCase(unit), c >= 'A' && c <= 'Z' ? c + 32 : c);
        EXPECT_EQ(toUpperCase(unit), c >= 'a' && c <= 'z' ? c - 32 : c);
    }
}

}  // namespace
}  // namespace quorvelin
