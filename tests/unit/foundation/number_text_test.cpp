#include "foundation/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cwchar>
#include <limits>
#include <random>
#include <string>

namespace quorvelin {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ParseDouble, Decimal) {
    EXPECT_EQ(parseDouble(u"0"), 0.0);
    EXPECT_EQ(parseDouble(u"12"), 12.0);
    EXPECT_EQ(parseDouble(u"-12.5"), -12.5);
    EXPECT_EQ(parseDouble(u"+.5"), 0.5);
    EXPECT_EQ(parseDouble(u"5."), 5.0);
    EXPECT_EQ(parseDouble(u"1e3"), 1000.0);
    EXPECT_EQ(parseDouble(u"1E-2"), 0.01);
    EXPECT_TRUE(std::signbit(parseDouble(u"-0")));
}

TEST(ParseDouble, WhiteSpaceInFront) {
    EXPECT_EQ(parseDouble(u" \t\n\v\f\r7"), 7.0);
    EXPECT_EQ(parseDouble(u"\u00A07"), 0.0);
}

TEST(ParseDouble, StopsAtWhatIsNoNumber) {
    int32_t consumed = -1;
    EXPECT_EQ(parseDouble(u"  12.5abc", &consumed), 12.5);
    EXPECT_EQ(consumed, 6);
    EXPECT_EQ(parseDouble(u"1e5-3", &consumed), 1e5);
    EXPECT_EQ(consumed, 3);
    EXPECT_EQ(parseDouble(u"1e", &consumed), 1.0);
    EXPECT_EQ(consumed, 1);
    EXPECT_EQ(parseDouble(u"1e+", &consumed), 1.0);
    EXPECT_EQ(consumed, 1);
    EXPECT_EQ(parseDouble(u"1.2.3", &consumed), 1.2);
    EXPECT_EQ(consumed, 3);
}

TEST(ParseDouble, WithoutANumberNothingIsConsumed) {
    for (const char16_t* text : {u"", u"  ", u"abc", u"-", u".", u"+.", u"e5", u"- 1"}) {
        int32_t consumed = -1;
        EXPECT_EQ(parseDouble(text, &consumed), 0.0);
        EXPECT_EQ(consumed, 0);
    }
}

TEST(ParseDouble, Hexadecimal) {
    EXPECT_EQ(parseDouble(u"0x10"), 16.0);
    EXPECT_EQ(parseDouble(u"-0XfF"), -255.0);
    EXPECT_EQ(parseDouble(u"0x1.8p3"), 12.0);
    int32_t consumed = -1;
    EXPECT_EQ(parseDouble(u"0xg", &consumed), 0.0);
    EXPECT_EQ(consumed, 1);
}

TEST(ParseDouble, Words) {
    EXPECT_EQ(parseDouble(u"inf"), kInfinity);
    EXPECT_EQ(parseDouble(u"-INFINITY"), -kInfinity);
    EXPECT_TRUE(std::isnan(parseDouble(u"NaN")));
    int32_t consumed = -1;
    EXPECT_EQ(parseDouble(u"infinit", &consumed), kInfinity);
    EXPECT_EQ(consumed, 3);
    EXPECT_TRUE(std::isnan(parseDouble(u"nan(x1)", &consumed)));
    EXPECT_EQ(consumed, 7);
}

TEST(ParseDouble, BeyondTheRange) {
    EXPECT_EQ(parseDouble(u"1e400"), kInfinity);
    EXPECT_EQ(parseDouble(u"-1e400"), -kInfinity);
    EXPECT_EQ(parseDouble(u"1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(parseDouble(u"-1e-400")));
    EXPECT_EQ(parseDouble(u"1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(parseDouble(u"5e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(ParseDouble, TextOfAnyLength) {
    EXPECT_EQ(parseDouble((u"1" + std::u16string(400, u'0')).c_str()), kInfinity);
    EXPECT_EQ(parseDouble((u"0." + std::u16string(300, u'0') + u"1").c_str()), 1e-301);
    EXPECT_EQ(parseDouble((std::u16string(5000, u'0') + u"7").c_str()), 7.0);
    EXPECT_EQ(parseDouble((u"1." + std::u16string(5000, u'3')).c_str()), 4.0 / 3);
}

// The C library gives the same in its "C" locale, in which programs start.
TEST(ParseDouble, AgreesWithTheCLibrary) {
    std::mt19937 random(1);
    const std::u16string_view alphabet = u"0123456789..eE+-xXaApP infnNAT";
    for (int i = 0; i < 200000; ++i) {
        std::u16string text;
        std::wstring wide;
        const size_t length = random() % 14;
        for (size_t j = 0; j < length; ++j) {
            const char16_t unit = alphabet[random() % alphabet.size()];
            text += unit;
            wide += static_cast<wchar_t>(unit);
        }
        wchar_t* end = nullptr;
        const double expected = std::wcstod(wide.c_str(), &end);
        int32_t consumed = -1;
        const double number = parseDouble(text.c_str(), &consumed);
        ASSERT_EQ(consumed, end - wide.c_str()) << std::string(text.begin(), text.end());
        if (std::isnan(expected)) {
            ASSERT_TRUE(std::isnan(number)) << std::string(text.begin(), text.end());
        } else {
            ASSERT_EQ(number, expected) << std::string(text.begin(), text.end());
            ASSERT_EQ(std::signbit(number), std::signbit(expected)) << std::string(text.begin(), text.end());
        }
    }
}

TEST(ParseInteger32, Bases) {
    EXPECT_EQ(parseInteger32(u"42", 10), 42);
    EXPECT_EQ(parseInteger32(u" -42x", 10), -42);
    EXPECT_EQ(parseInteger32(u"ff", 16), 255);
    EXPECT_EQ(parseInteger32(u"0xFf", 16), 255);
    EXPECT_EQ(parseInteger32(u"zZ", 36), 35 * 36 + 35);
    EXPECT_EQ(parseInteger32(u"101", 2), 5);
    EXPECT_EQ(parseInteger32(u"0x1F", 0), 31);
    EXPECT_EQ(parseInteger32(u"017", 0), 15);
    EXPECT_EQ(parseInteger32(u"17", 0), 17);
    EXPECT_EQ(parseInteger32(u"08", 0), 0);
    EXPECT_EQ(parseInteger32(u"0x", 16), 0);
}

TEST(ParseInteger32, ConsumedUnits) {
    int32_t consumed = -1;
    parseInteger32(u" 12ab", 10, &consumed);
    EXPECT_EQ(consumed, 3);
    parseInteger32(u"0xg", 16, &consumed);
    EXPECT_EQ(consumed, 1);
    parseInteger32(u"x", 10, &consumed);
    EXPECT_EQ(consumed, 0);
    parseInteger32(u"-", 10, &consumed);
    EXPECT_EQ(consumed, 0);
}

TEST(ParseInteger32, BeyondTheRangeClamps) {
    EXPECT_EQ(parseInteger32(u"2147483647", 10), INT32_MAX);
    EXPECT_EQ(parseInteger32(u"2147483648", 10), INT32_MAX);
    EXPECT_EQ(parseInteger32(u"-2147483648", 10), INT32_MIN);
    EXPECT_EQ(parseInteger32(u"-99999999999999999999", 10), INT32_MIN);
    int32_t consumed = -1;
    EXPECT_EQ(parseInteger32(u"99999999999x", 10, &consumed), INT32_MAX);
    EXPECT_EQ(consumed, 11);
}

TEST(ParseInteger32, OddBases) {
    for (const int32_t radix : {1, -1, 37, 1000}) EXPECT_EQ(parseInteger32(u"11", radix), 0) << radix;
}

TEST(Truncate, TowardZero) {
    EXPECT_EQ(truncateToInt32(1.9), 1);
    EXPECT_EQ(truncateToInt32(-1.9), -1);
    EXPECT_EQ(truncateToInt32(-0.5), 0);
    EXPECT_EQ(truncateToInt64(-1e15 - 0.5), -1000000000000000);
}

TEST(Truncate, WhatTheWidthCannotHoldIsTheSmallestInteger) {
    EXPECT_EQ(truncateToInt32(2147483647.9), INT32_MAX);
    EXPECT_EQ(truncateToInt32(2147483648.0), INT32_MIN);
    EXPECT_EQ(truncateToInt32(-2147483648.9), INT32_MIN);
    EXPECT_EQ(truncateToInt32(-2147483649.0), INT32_MIN);
    EXPECT_EQ(truncateToInt32(1e300), INT32_MIN);
    EXPECT_EQ(truncateToInt32(std::nan("")), INT32_MIN);
    EXPECT_EQ(truncateToInt32(kInfinity), INT32_MIN);
    EXPECT_EQ(truncateToInt64(9223372036854775808.0), INT64_MIN);
    EXPECT_EQ(truncateToInt64(-9223372036854775808.0), INT64_MIN);
    EXPECT_EQ(truncateToInt64(9223372036854774784.0), 9223372036854774784);
    EXPECT_EQ(truncateToInt64(std::nan("")), INT64_MIN);
}

}  // namespace
}  // namespace quorvelin
