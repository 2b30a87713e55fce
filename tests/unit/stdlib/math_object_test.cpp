#include "stdlib/math_object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "support/jumper.h"
#include "support/script_machine.h"

namespace quorvelin {
namespace {

class MathObject : public support::ScriptTest {};

TEST_F(MathObject, Constants) {
    EXPECT_EQ(run(u"Math.PI"), "number 3.1415926535897931");
    EXPECT_EQ(run(u"Math.E"), "number 2.7182818284590451");
    EXPECT_EQ(run(u"Math.LN2 == Math.log(2)"), "boolean true");
    EXPECT_EQ(run(u"Math.LN10 == Math.log(10)"), "boolean true");
    EXPECT_EQ(run(u"Math.LOG2E == 1 / Math.log(2)"), "boolean true");
    EXPECT_EQ(run(u"Math.LOG10E == 1 / Math.log(10)"), "boolean true");
    EXPECT_EQ(run(u"Math.SQRT2 == Math.sqrt(2)"), "boolean true");
    EXPECT_EQ(run(u"Math.SQRT1_2 == 1 / Math.sqrt(2)"), "boolean true");
    EXPECT_EQ(run(u"typeof Math.PI"), "string number");
}

TEST_F(MathObject, AConstantIgnoresWrites) {
    EXPECT_EQ(run(u"Math.PI = 3"), "null");
    EXPECT_EQ(run(u"Math.PI"), "number 3.1415926535897931");
}

TEST_F(MathObject, AFunctionCanBeReplaced) {
    EXPECT_EQ(run(u"typeof Math.abs"), "string function");
    run(u"Math.abs = 1");
    EXPECT_EQ(run(u"Math.abs"), "number 1");
    EXPECT_EQ(run(u"Math.sqrt = new Function('x', 'return x + 100;'); Math.sqrt(1)"), "number 101");
}

TEST_F(MathObject, ItsClassIsMath) {
    const Value math = global(u"Math");
    EXPECT_EQ(support::className(math.get(), ctx()), "Math");
}

TEST_F(MathObject, MissingArgumentsGiveZero) {
    for (const char16_t* script :
         {u"Math.abs()", u"Math.cos()", u"Math.max()", u"Math.max(1)", u"Math.pow(2)", u"Math.exp()"}) {
        EXPECT_EQ(run(script), "number 0");
    }
}

TEST_F(MathObject, SurplusArgumentsAreIgnored) {
    EXPECT_EQ(run(u"Math.max(1, 2, 3)"), "number 2");
    EXPECT_EQ(run(u"Math.min(2, 1, 0)"), "number 1");
}

TEST_F(MathObject, QuirkAsinIsNeverNegative) {
    EXPECT_EQ(run(u"Math.asin(-1) == Math.asin(1)"), "boolean true");
    EXPECT_EQ(run(u"Math.asin(-0.5) > 0"), "boolean true");
}

TEST_F(MathObject, QuirkAtan2TakesItsArgumentsTheOtherWayRound) {
    EXPECT_EQ(run(u"Math.atan2(1, 2) == Math.atan(2)"), "boolean true");
    EXPECT_EQ(run(u"Math.atan2(0, 1) == Math.acos(0)"), "boolean true");  // atan of an infinity
}

TEST_F(MathObject, Rounding) {
    EXPECT_EQ(run(u"Math.round(-0.5)"), "number -1");
    EXPECT_EQ(run(u"Math.round(0.5)"), "number 1");
    EXPECT_EQ(run(u"Math.round(2.4)"), "number 2");
    EXPECT_EQ(run(u"Math.floor(2.5)"), "number 2");
    EXPECT_EQ(run(u"Math.floor(-2.5)"), "number -3");
    EXPECT_EQ(run(u"Math.floor(-2)"), "number -2");
    EXPECT_EQ(run(u"Math.ceil(2.5)"), "number 3");
    EXPECT_EQ(run(u"Math.ceil(2)"), "number 2");
}

TEST_F(MathObject, QuirkCeilOfANegativeFractionIsOneTooHigh) {
    EXPECT_EQ(run(u"Math.ceil(-0.5)"), "number 1");
    EXPECT_EQ(run(u"Math.ceil(-1.5)"), "number 0");
}

TEST_F(MathObject, RoundingOutsideTheRangeGivesTheSmallestInteger) {
    EXPECT_EQ(run(u"Math.floor(3000000000)"), "number -2147483648");
    EXPECT_EQ(run(u"Math.round(3000000000)"), "number -2147483648");
    EXPECT_EQ(run(u"Math.ceil(3000000000)"), "number -2147483647");
    EXPECT_EQ(run(u"Math.ceil(2147483647.5)"), "number 2147483648");
}

TEST_F(MathObject, DomainErrorsAreMinusInfinity) {
    for (const char16_t* script : {u"Math.sqrt(-1)", u"Math.log(-1)", u"Math.log(0)", u"Math.acos(2)"}) {
        EXPECT_EQ(run(script), "number -Infinity");
    }
}

TEST_F(MathObject, TheOtherFunctions) {
    EXPECT_EQ(run(u"Math.abs(-3) + Math.abs(4)"), "number 7");
    EXPECT_EQ(run(u"Math.pow(2, 10)"), "number 1024");
    EXPECT_EQ(run(u"Math.sqrt(16)"), "number 4");
    EXPECT_EQ(run(u"Math.cos(0)"), "number 1");
    EXPECT_EQ(run(u"Math.sin(0)"), "number 0");
    EXPECT_EQ(run(u"Math.tan(0)"), "number 0");
    EXPECT_EQ(run(u"Math.atan(1) * 4 == Math.PI"), "boolean true");
    EXPECT_EQ(run(u"Math.exp(0)"), "number 1");
    EXPECT_EQ(run(u"Math.max(1, 2) * 10 + Math.min(1, 2)"), "number 21");
}

TEST_F(MathObject, QuirkAbsOfZeroIsNegativeZero) {
    EXPECT_EQ(run(u"'' + Math.abs(0)"), "string -0");
}

TEST_F(MathObject, ExpIsRoundedOnceFromTheWidestType) {
    JSMath math;
    for (double x = -20; x < 20; x += 0.37) {
        EXPECT_EQ(math.exp(x), static_cast<double>(std::exp(static_cast<long double>(x))));
    }
}

TEST_F(MathObject, RandomLiesBetweenZeroAndOne) {
    EXPECT_EQ(run(u"var r, differ = false; for (var i = 0; i < 100; i++) { r = Math.random(); "
                  u"if (r < 0 || r > 1) { throwAway = 'out'; } if (r != Math.random()) { differ = true; } } "
                  u"differ"),
              "boolean true");
    EXPECT_EQ(run(u"typeof throwAway"), "string undefined");
}

// One of 32768 numbers is 1 itself.
TEST_F(MathObject, QuirkRandomCanGiveOne) {
    JSMath math;
    double largest = 0;
    for (int32_t i = 0; i < 2000000 && largest < 1; ++i) largest = std::max(largest, math.random());
    EXPECT_EQ(largest, 1.0);
}

TEST_F(MathObject, QuirkTanOfAnInfinityIsZero) {
    EXPECT_EQ(run(u"x = 1e308 * 10; Math.tan(x)"), "number 0");
    EXPECT_EQ(run(u"Math.sin(x)"), "number -Infinity");
}

TEST_F(MathObject, QuirkAHalfIsRoundedAwayFromZero) {
    EXPECT_EQ(run(u"Math.round(-2.5)"), "number -3");
    EXPECT_EQ(run(u"Math.round(2.5)"), "number 3");
}

TEST_F(MathObject, QuirkMaxOfOneNumberIsZero) {
    EXPECT_EQ(run(u"Math.max(1)"), "number 0");
    EXPECT_EQ(run(u"Math.min(1)"), "number 0");
}

TEST_F(MathObject, AReplacedFunctionStaysReplaced) {
    run(u"Math.abs = 1");
    run(u"x = 2");
    EXPECT_EQ(run(u"Math.abs"), "number 1");
    EXPECT_EQ(run(u"typeof Math.abs(-3)"), "string null");
}

TEST_F(MathObject, AnArgumentThatJumpsGivesNothing) {
    const Value math = global(u"Math");
    for (const char16_t* name : {u"sqrt", u"max"}) {
        for (const int32_t place : {0, 1}) {
            const Value arguments(new support::JumperList(2, place));
            const bool reads = place == 0 || BString(name) == BString(u"max");
            EXPECT_EQ(Value(math->callMember(name, arguments.get(), ctx(), nullptr)).get() == nullptr, reads);
            machine->setCompletion(JSCompletion::normal);
        }
    }
}

}  // namespace
}  // namespace quorvelin
