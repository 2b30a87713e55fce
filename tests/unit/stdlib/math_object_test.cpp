#include "stdlib/math_object.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

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

// An object of a host's own whose conversion leaves a jump pending.
class Jumper final : public JSObject {
  public:
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject*) override {
        out = JSNumberValue::of(4);
        ctx->setCompletion(JSCompletion::breakLoop);
    }
};

TEST_F(MathObject, AnArgumentThatJumpsGivesNothing) {
    const Value math = global(u"Math");
    const Value jumper(new Jumper());
    const Value arguments = list({jumper.get()});
    EXPECT_EQ(math->callMember(u"sqrt", arguments.get(), ctx(), nullptr), nullptr);
    machine->setCompletion(JSCompletion::normal);
}

}  // namespace
}  // namespace quorvelin
