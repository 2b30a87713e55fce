#include "foundation/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace quorvelin {
namespace {

std::u16string wide(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

// The value that is read, when `expected` units are used for it.
double read(const std::string& text, int32_t expected) {
    int32_t consumed = -1;
    const double value = parseDouble(wide(text).c_str(), &consumed);
    EXPECT_EQ(consumed, expected) << text;
    return value;
}

TEST(ParseDouble, ReadsTheLongestNumberAtTheStart) {
    EXPECT_EQ(read("12.5kg", 4), 12.5);
    EXPECT_EQ(read("  -3e2e", 6), -300);
    EXPECT_EQ(read("\t\n\v\f\r +.5", 9), 0.5);
    EXPECT_EQ(read("7.", 2), 7);
    EXPECT_EQ(read("1e", 1), 1);
    EXPECT_EQ(read("1e+", 1), 1);
    EXPECT_EQ(read("1.2.3", 3), 1.2);
    EXPECT_EQ(read("007", 3), 7);
}

TEST(ParseDouble, WithoutANumberIsZeroAndUsesNothing) {
    for (const char* text : {"", "  ", "-", "+.", ".", "e5", "abc", "- 1", "in", "na"})
        EXPECT_EQ(read(text, 0), 0) << text;
    int32_t consumed = -1;
    EXPECT_EQ(parseDouble(u"\u00a01", &consumed), 0);
    EXPECT_EQ(consumed, 0);
}

TEST(ParseDouble, TakesNoResultOfTheLength) {
    EXPECT_EQ(parseDouble(u"4.25"), 4.25);
}

TEST(ParseDouble, ReadsHexadecimalForms) {
    EXPECT_EQ(read("0x10", 4), 16);
    EXPECT_EQ(read("-0XfF", 5), -255);
    EXPECT_EQ(read("0x1.8p1", 7), 3);
    EXPECT_EQ(read("0x.8", 4), 0.5);
    EXPECT_EQ(read("0x1p", 3), 1);
    EXPECT_EQ(read("0x1p-1074", 9), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(read("0x", 1), 0);
    EXPECT_EQ(read("0xg", 1), 0);
    EXPECT_EQ(read("0x.", 1), 0);
    EXPECT_EQ(read("0x1p99999", 9), std::numeric_limits<double>::infinity());
    EXPECT_EQ(read("0x1p-99999", 10), 0);
}

TEST(ParseDouble, ReadsInfinityAndNanInAnyCase) {
    EXPECT_EQ(read("inf", 3), HUGE_VAL);
    EXPECT_EQ(read("-Infinity", 9), -HUGE_VAL);
    EXPECT_EQ(read("INFINIT", 3), HUGE_VAL);
    EXPECT_TRUE(std::isnan(read("nan", 3)));
    EXPECT_TRUE(std::isnan(read("NaN(12_a)x", 9)));
    EXPECT_TRUE(std::isnan(read("nan(", 3)));
    EXPECT_TRUE(std::isnan(read("nan(a-b)", 3)));
}

TEST(ParseDouble, LeavesTheRangeToInfinityAndZero) {
    EXPECT_EQ(read("1e309", 5), HUGE_VAL);
    EXPECT_EQ(read("-1e309", 6), -HUGE_VAL);
    EXPECT_EQ(read("1e-400", 6), 0);
    EXPECT_TRUE(std::signbit(read("-1e-400", 7)));
    EXPECT_EQ(read("4.9e-324", 8), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(read("1e99999999999999999999", 22), HUGE_VAL);
    EXPECT_EQ(read("1e-99999999999999999999", 23), 0);
    EXPECT_EQ(read("0e99999999999999999999", 22), 0);
    EXPECT_EQ(read("0." + std::string(400, '0') + "1e401", 407), 1);
    EXPECT_EQ(read("1" + std::string(400, '0') + "e-400", 406), 1);
}

TEST(ParseDouble, ReadsTheNearestDoubleOfManyDigits) {
    // Half way between 1 and the double above it; any digit behind decides.
    const std::string half = "1.00000000000000011102230246251565404236316680908203125";
    EXPECT_EQ(read(half, 55), 1);
    EXPECT_EQ(read(half + std::string(2000, '0') + "1", 2056), 1.0000000000000002);
    EXPECT_EQ(read(std::string(3000, '9'), 3000), HUGE_VAL);
    EXPECT_EQ(read(std::string(3000, '9') + "e-3000", 3006), 1);
    EXPECT_EQ(read("0x1" + std::string(2000, '0') + "p-8000", 2009), 1);
}

TEST(ParseDouble, AgreesWithTheCLibrary) {
    uint64_t state = 1;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        char text[64];
        std::snprintf(text, sizeof text, "%llu.%llue%d", static_cast<unsigned long long>(state >> 20),
                      static_cast<unsigned long long>(state % 100000),
                      static_cast<int>((state >> 33) % 680) - 350);
        EXPECT_EQ(parseDouble(wide(text).c_str()), std::strtod(text, nullptr)) << text;
    }
}

int32_t readInteger(const std::string& text, int32_t radix, int32_t expected) {
    int32_t consumed = -1;
    const int32_t value = parseInteger32(wide(text).c_str(), radix, &consumed);
    EXPECT_EQ(consumed, expected) << text;
    return value;
}

TEST(ParseInteger32, ReadsTheLongestNumberAtTheStart) {
    EXPECT_EQ(readInteger("42abc", 10, 2), 42);
    EXPECT_EQ(readInteger(" \t-17", 10, 5), -17);
    EXPECT_EQ(readInteger("zZ", 36, 2), 1295);
    EXPECT_EQ(readInteger("1021", 2, 2), 2);
    EXPECT_EQ(parseInteger32(u"5", 10), 5);
}

TEST(ParseInteger32, TakesThePrefixOfBase16) {
    EXPECT_EQ(readInteger("0xff", 16, 4), 255);
    EXPECT_EQ(readInteger("-0Xff", 16, 5), -255);
    EXPECT_EQ(readInteger("0xg", 16, 1), 0);
    EXPECT_EQ(readInteger("0xff", 10, 1), 0);
}

TEST(ParseInteger32, FindsTheBaseInTheText) {
    EXPECT_EQ(readInteger("0x1F", 0, 4), 31);
    EXPECT_EQ(readInteger("010", 0, 3), 8);
    EXPECT_EQ(readInteger("08", 0, 1), 0);
    EXPECT_EQ(readInteger("0", 0, 1), 0);
    EXPECT_EQ(readInteger("19", 0, 2), 19);
}

TEST(ParseInteger32, CutsToTheRange) {
    EXPECT_EQ(readInteger("2147483647", 10, 10), INT32_MAX);
    EXPECT_EQ(readInteger("2147483648", 10, 10), INT32_MAX);
    EXPECT_EQ(readInteger("-2147483648", 10, 11), INT32_MIN);
    EXPECT_EQ(readInteger("-99999999999999999999999", 10, 24), INT32_MIN);
    EXPECT_EQ(readInteger("0xffffffff", 16, 10), INT32_MAX);
}

TEST(ParseInteger32, WithoutANumberIsZeroAndUsesNothing) {
    for (const char* text : {"", "-", "x", "- 1", "9"}) EXPECT_EQ(readInteger(text, 8, 0), 0) << text;
    for (const int32_t radix : {-1, 1, 37}) EXPECT_EQ(readInteger("1", radix, 0), 0);
}

TEST(Truncate, CutsTowardZero) {
    EXPECT_EQ(truncateToInt32(2.9), 2);
    EXPECT_EQ(truncateToInt32(-2.9), -2);
    EXPECT_EQ(truncateToInt32(2147483647.5), INT32_MAX);
    EXPECT_EQ(truncateToInt32(-2147483648.5), INT32_MIN);
    EXPECT_EQ(truncateToInt64(-1e15 - 0.5), -1000000000000000);
    EXPECT_EQ(truncateToInt64(9223372036854774784.0), 9223372036854774784);
}

TEST(Truncate, OutsideTheRangeGivesTheSmallestInteger) {
    for (const double value : {2147483648.0, -2147483649.0, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(truncateToInt32(value), INT32_MIN) << value;
    }
    for (const double value : {9223372036854775808.0, -1e19, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(truncateToInt64(value), INT64_MIN) << value;
    }
}

}  // namespace
}  // namespace quorvelin
