// The number record: arithmetic by tables, comparing with a tolerance, text.
#include "objects/number_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;

constexpr JSNumberValue kNaN = {0.0, JSNumberKind::notANumber};
constexpr JSNumberValue kPlus = {0.0, JSNumberKind::plusInfinity};
constexpr JSNumberValue kMinus = {0.0, JSNumberKind::minusInfinity};

JSNumberValue finite(double value) {
    return JSNumberValue::of(value);
}

std::string show(const JSNumberValue& number) {
    return ascii(number.toText());
}

// Operands and results of the tables: N, P and M for the kinds, numbers as they are written.
JSNumberValue operand(std::string_view word) {
    if (word == "N") return kNaN;
    if (word == "P") return kPlus;
    if (word == "M") return kMinus;
    return finite(std::stod(std::string(word)));
}

std::string word(const JSNumberValue& number) {
    switch (number.kind) {
        case JSNumberKind::notANumber:
            return "N";
        case JSNumberKind::plusInfinity:
            return "P";
        case JSNumberKind::minusInfinity:
            return "M";
        default:
            return show(number);
    }
}

struct Row {
    std::string_view left;
    std::string_view right;
    std::string_view result;
};

using Operation = JSNumberValue (JSNumberValue::*)(const JSNumberValue&) const;

void expectTable(Operation operation, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(word((operand(row.left).*operation)(operand(row.right))), row.result)
            << row.left << " with " << row.right;
    }
}

TEST(NumberValue, NaNOnTheLeftStaysNaN) {
    for (const Operation operation : {&JSNumberValue::add, &JSNumberValue::subtract, &JSNumberValue::multiply,
                                      &JSNumberValue::divide, &JSNumberValue::modulo}) {
        expectTable(operation,
                    {{"N", "N", "N"}, {"N", "2", "N"}, {"N", "0", "N"}, {"N", "P", "N"}, {"N", "M", "N"}});
    }
}

// Quirk: infinity plus minus infinity is NaN from either side, infinity plus infinity keeps the left one.
TEST(NumberValue, Addition) {
    expectTable(&JSNumberValue::add, {{"1", "2", "3"},
                                      {"1", "N", "N"},
                                      {"1", "P", "P"},
                                      {"1", "M", "M"},
                                      {"P", "N", "N"},
                                      {"P", "5", "P"},
                                      {"P", "P", "P"},
                                      {"P", "M", "N"},
                                      {"M", "N", "N"},
                                      {"M", "5", "M"},
                                      {"M", "P", "M"},
                                      {"M", "M", "N"}});
}

// Quirk: a number minus an infinity keeps the infinity's sign.
TEST(NumberValue, Subtraction) {
    expectTable(&JSNumberValue::subtract, {{"1", "3", "-2"},
                                           {"1", "N", "N"},
                                           {"1", "P", "P"},
                                           {"1", "M", "M"},
                                           {"P", "N", "N"},
                                           {"P", "5", "P"},
                                           {"P", "P", "N"},
                                           {"P", "M", "P"},
                                           {"M", "N", "N"},
                                           {"M", "5", "M"},
                                           {"M", "M", "N"},
                                           {"M", "P", "M"}});
}

// Quirk: a negative number times an infinity keeps the infinity's sign.
TEST(NumberValue, Multiplication) {
    expectTable(&JSNumberValue::multiply,
                {{"2", "3", "6"},  {"2", "N", "N"}, {"0", "P", "N"}, {"0", "M", "N"}, {"-2", "P", "P"},
                 {"-2", "M", "M"}, {"2", "P", "P"}, {"2", "M", "M"}, {"P", "N", "N"}, {"P", "-2", "M"},
                 {"P", "0", "N"},  {"P", "2", "P"}, {"P", "P", "P"}, {"P", "M", "M"}, {"M", "N", "N"},
                 {"M", "-2", "P"}, {"M", "0", "N"}, {"M", "2", "M"}, {"M", "M", "P"}, {"M", "P", "M"}});
}

// Quirk: an infinity divided by plus infinity is the left one.
TEST(NumberValue, Division) {
    expectTable(&JSNumberValue::divide, {{"6", "3", "2"},
                                         {"6", "N", "N"},
                                         {"6", "0", "N"},
                                         {"0", "0", "N"},
                                         {"6", "P", "0"},
                                         {"6", "M", "0"},
                                         {"P", "N", "N"},
                                         {"P", "-2", "M"},
                                         {"P", "0", "N"},
                                         {"P", "2", "P"},
                                         {"P", "P", "P"},
                                         {"P", "M", "N"},
                                         {"M", "N", "N"},
                                         {"M", "-2", "P"},
                                         {"M", "0", "N"},
                                         {"M", "2", "M"},
                                         {"M", "P", "M"},
                                         {"M", "M", "N"}});
}

// Quirk: both sides lose their fraction first.
TEST(NumberValue, RemainderOfIntegers) {
    expectTable(&JSNumberValue::modulo, {{"7", "2.5", "1"},
                                         {"-7", "2", "-1"},
                                         {"7", "-2", "1"},
                                         {"7.9", "4", "3"},
                                         {"7", "0", "N"},
                                         {"7", "0.5", "N"},
                                         {"-2147483648", "-1", "0"},
                                         {"7", "N", "N"},
                                         {"7", "P", "0"},
                                         {"7", "M", "0"},
                                         {"P", "N", "N"},
                                         {"P", "2", "P"},
                                         {"P", "-2", "M"},
                                         {"P", "0", "N"},
                                         {"P", "P", "P"},
                                         {"P", "M", "N"},
                                         {"M", "2", "M"},
                                         {"M", "-2", "P"},
                                         {"M", "P", "M"}});
}

TEST(NumberValue, BitOperationsWorkOn32BitIntegers) {
    expectTable(
        &JSNumberValue::bitOr,
        {{"5", "2", "7"}, {"2147483648", "0", "-2147483648"}, {"5.9", "0", "5"}, {"-1.5", "0", "-1"}});
    expectTable(&JSNumberValue::bitAnd, {{"6", "3", "2"}, {"-1", "255", "255"}});
    expectTable(&JSNumberValue::bitXor, {{"6", "3", "5"}, {"-1", "0", "-1"}});
    expectTable(&JSNumberValue::shiftLeft,
                {{"1", "4", "16"}, {"1", "33", "2"}, {"1", "31", "-2147483648"}, {"1", "-1", "-2147483648"}});
    expectTable(&JSNumberValue::shiftRight, {{"-8", "1", "-4"}, {"8", "33", "4"}});
}

TEST(NumberValue, BitOperationsOnWhatIsNotFiniteGiveNaN) {
    for (const Operation operation : {&JSNumberValue::bitOr, &JSNumberValue::bitAnd, &JSNumberValue::bitXor,
                                      &JSNumberValue::shiftLeft, &JSNumberValue::shiftRight}) {
        expectTable(operation,
                    {{"N", "1", "N"}, {"1", "N", "N"}, {"P", "1", "N"}, {"1", "M", "N"}, {"P", "M", "N"}});
    }
}

TEST(NumberValue, Negation) {
    EXPECT_EQ(word(finite(5).negate()), "-5");
    EXPECT_EQ(word(kPlus.negate()), "M");
    EXPECT_EQ(word(kMinus.negate()), "P");
    EXPECT_EQ(word(kNaN.negate()), "N");
}

// Quirk: minus infinity is less than itself.
TEST(NumberValue, Less) {
    const struct {
        std::string_view left, right;
        bool less;
    } rows[] = {{"1", "2", true},
                {"2", "1", false},
                {"1", "1", false},
                {"1", "P", true},
                {"1", "M", false},
                {"1", "N", false},
                {"M", "1", true},
                {"M", "P", true},
                {"M", "M", true},
                {"M", "N", false},
                {"P", "P", false},
                {"P", "1", false},
                {"P", "N", false},
                {"N", "1", false},
                {"N", "P", false},
                {"N", "N", false},
                {"P", "M", false},
                {"N", "M", false},
                {"1", "1.0000000000000002", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(operand(row.left).less(operand(row.right)), row.less) << row.left << " < " << row.right;
    }
}

TEST(NumberValue, ComparingIsRelativeWithATolerance) {
    const auto compare = JSNumberValue::compareValues;
    EXPECT_EQ(compare(1, 1 + 1e-16), 0);
    EXPECT_EQ(compare(1, 1 + 5e-16), 0);
    EXPECT_EQ(compare(1, 1 + 2e-15), -1);
    EXPECT_EQ(compare(1 + 2e-15, 1), 1);
    EXPECT_EQ(compare(1e20, 1e20 + 65536), 0);
    EXPECT_EQ(compare(1e20, 1.0001e20), -1);
    EXPECT_EQ(compare(-3, -2), -1);
    EXPECT_EQ(compare(-2, -3), 1);
    EXPECT_EQ(compare(1e300, -1e300), 1);
}

TEST(NumberValue, ComparingNearZeroIsAbsolute) {
    const auto compare = JSNumberValue::compareValues;
    EXPECT_EQ(compare(1e-16, 0), 0);
    EXPECT_EQ(compare(-1e-16, 0), 0);
    EXPECT_EQ(compare(1e-14, 0), 1);
    EXPECT_EQ(compare(-1e-14, 0), -1);
    EXPECT_EQ(compare(0, 1e-16), 0);
    // The right side alone decides which rule holds.
    EXPECT_EQ(compare(0, 1e-14), -1);
}

// Quirk: a NaN that arithmetic on doubles gives becomes minus infinity.
TEST(NumberValue, NormalisingMakesInfinitiesAndTurnsADoubleNaNIntoMinusInfinity) {
    EXPECT_EQ(word(JSNumberValue::of(INFINITY)), "P");
    EXPECT_EQ(word(JSNumberValue::of(-INFINITY)), "M");
    EXPECT_EQ(word(JSNumberValue::of(NAN)), "M");
    EXPECT_EQ(word(JSNumberValue::of(-NAN)), "M");
    EXPECT_EQ(show(finite(1e308).multiply(finite(10))), "+Infinity");
    EXPECT_EQ(show(JSNumberValue::of(NAN)), "-Infinity");
    EXPECT_EQ(show(kNaN), "NaN");
}

TEST(NumberValue, TextHasAtMostSixteenDecimalsAndNoTrailingZeros) {
    EXPECT_EQ(show(finite(0.1 + 0.2)), "0.3");
    EXPECT_EQ(show(finite(1.0 / 3)), "0.3333333333333333");
    EXPECT_EQ(show(finite(100)), "100");
    EXPECT_EQ(show(finite(0.5)), "0.5");
    EXPECT_EQ(show(finite(-2.25)), "-2.25");
    EXPECT_EQ(show(finite(1e-16)), "0.0000000000000001");
    EXPECT_EQ(show(finite(1234567.875)), "1234567.875");
}

TEST(NumberValue, TextOfTheVerySmallIsZeroWithItsSign) {
    EXPECT_EQ(show(finite(0)), "0");
    EXPECT_EQ(show(finite(1e-20)), "0");
    EXPECT_EQ(show(finite(-1e-20)), "-0");
    EXPECT_EQ(show(finite(-0.0)), "-0");
}

TEST(NumberValue, TextHasNoExponent) {
    EXPECT_EQ(show(finite(1e21)), "1000000000000000000000");
    EXPECT_EQ(show(finite(1e15)), "1000000000000000");
    EXPECT_EQ(show(finite(123456789012345678.0)), "123456789012345680");
    EXPECT_EQ(show(finite(std::numeric_limits<double>::max())).size(), 309u);
}

TEST(NumberValue, FromTextNeedsAllOfTheText) {
    const auto read = [](std::u16string_view text, int32_t radix = 10) {
        return word(JSNumberValue::fromText(textOf(text), radix));
    };
    EXPECT_EQ(read(u"12"), "12");
    EXPECT_EQ(read(u"  12"), "12");
    EXPECT_EQ(read(u"12 "), "N");
    EXPECT_EQ(read(u"12x"), "N");
    EXPECT_EQ(read(u"x"), "N");
    EXPECT_EQ(read(u""), "0");
    EXPECT_EQ(read(u"-1.5e2"), "-150");
    EXPECT_EQ(read(u"0x10"), "16");
    EXPECT_EQ(read(u"inf"), "P");
    EXPECT_EQ(read(u"-Infinity"), "M");
    EXPECT_EQ(read(u"nan"), "M");
}

TEST(NumberValue, FromTextInAnotherRadixReadsA32BitInteger) {
    const auto read = [](std::u16string_view text, int32_t radix) {
        return word(JSNumberValue::fromText(textOf(text), radix));
    };
    EXPECT_EQ(read(u"ff", 16), "255");
    EXPECT_EQ(read(u"0xff", 16), "255");
    EXPECT_EQ(read(u"zZ", 36), "1295");
    EXPECT_EQ(read(u"12", 2), "N");
    EXPECT_EQ(read(u"-101", 2), "-5");
    EXPECT_EQ(read(u"fffffffff", 16), "2147483647");
    EXPECT_EQ(read(u"-fffffffff", 16), "-2147483648");
    EXPECT_EQ(read(u"1.5", 16), "N");
}

TEST(NumberValue, RadixOutsideTheRangeGivesNaN) {
    for (const int32_t radix : {0, 37, -1, 99}) {
        const JSNumberValue number = JSNumberValue::fromText(BString(u"12"), radix);
        EXPECT_EQ(word(number), "N");
        EXPECT_EQ(number.value, 0.0);
    }
}

TEST(NumberValue, ZeroIsWhatComparesAsZero) {
    EXPECT_TRUE(finite(0).isZero());
    EXPECT_TRUE(finite(-1e-16).isZero());
    EXPECT_FALSE(finite(1e-14).isZero());
    EXPECT_FALSE(kNaN.isZero());
    EXPECT_FALSE(kPlus.isZero());
}

}  // namespace
}  // namespace quorvelin
