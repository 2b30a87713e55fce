// The binary operators: which way they go by the types of their operands, and how a script object takes one
// over.
#include "evaluator/operators.h"

#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::textOf;

class Operators : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
    Value apply(const char16_t* op, JSObject* left, JSObject* right) {
        return Value(applyBinary(Name(op), left, right, ctx(), nullptr));
    }
};

constexpr const char* kTrue = "boolean true";
constexpr const char* kFalse = "boolean false";

const char16_t* const kOperators[] = {u"+",  u"-",  u"*",   u"/", u"%", u"<", u">",  u"<=", u">=",
                                      u"==", u"!=", u"===", u"|", u"&", u"^", u"<<", u">>"};

TEST_F(Operators, AddJoinsTextUnlessBothSidesAreNumbersOrBooleans) {
    expectAll({{u"1 + 2", "number 3"},
               {u"1 + true", "number 2"},
               {u"true + 1", "number 2"},
               {u"true + true", "number 2"},
               {u"1 + '2'", "string 12"},
               {u"'2' + 1", "string 21"},
               {u"true + '!'", "string true!"},
               {u"'a' + 'b'", "string ab"},
               {u"'' + ''", "string"},
               {u"null + 1", "string null1"},
               {u"1 + null", "string 1null"},
               {u"[1, 2] + 3", "string 1,23"},
               {u"1 + [2]", "string 12"},
               {u"new Object() + true", "string [object Array]true"}});
}

TEST_F(Operators, ArithmeticConvertsToNumbers) {
    expectAll({{u"'5' * 2", "number 10"},
               {u"'5' - 0", "number 5"},
               {u"true * 3", "number 3"},
               {u"10 / '4'", "number 2.5"},
               {u"7 % 2.5", "number 1"},
               {u"null - 1", "number -1"},
               {u"[4] * 2", "number 0"},
               {u"'x' * 2", "number 0"},
               {u"1 / 0", "number NaN"},
               {u"-1 / 0", "number NaN"},
               {u"0 % 0", "number NaN"}});
}

TEST_F(Operators, BitOperatorsWorkOn32Bits) {
    expectAll({{u"5.9 | 0", "number 5"},
               {u"2147483648 | 0", "number -2147483648"},
               {u"6 & 3", "number 2"},
               {u"6 ^ 3", "number 5"},
               {u"1 << 33", "number 2"},
               {u"x = -8; x >> 1", "number -4"},
               {u"'6' & '3'", "number 2"}});
}

// Quirk: comparisons included.
TEST_F(Operators, AnUndefinedOperandMakesEveryOperatorUndefined) {
    const Value one = number(1);
    const Value nothing = evaluate(u"undeclared");
    for (const char16_t* op : kOperators) {
        EXPECT_FALSE(apply(op, one.get(), nothing.get()));
        EXPECT_FALSE(apply(op, nothing.get(), one.get()));
        EXPECT_FALSE(apply(op, nothing.get(), nothing.get()));
        EXPECT_FALSE(apply(op, one.get(), nullptr));
        EXPECT_FALSE(apply(op, nullptr, one.get()));
    }
    expectAll({{u"undeclared == 1", "null"},
               {u"undeclared != 1", "null"},
               {u"undeclared + 'text'", "null"},
               {u"if (undeclared == 1) 1; else 2;", "number 2"},
               {u"if (undeclared != 1) 1; else 2;", "number 2"},
               {u"var v; v == v", "null"},
               {u"void 0 + 1", "null"}});
}

TEST_F(Operators, NumbersCompareWithATolerance) {
    expectAll({{u"1 < 2", kTrue},
               {u"2 < 1", kFalse},
               {u"1 <= 1", kTrue},
               {u"1 >= 2", kFalse},
               {u"0.1 + 0.2 == 0.3", kTrue},
               {u"1 === 1.0000000000000001", kTrue},
               {u"1 === 1.0000000000000004", kTrue},
               {u"1 == 1.00000000000001", kFalse},
               {u"0.3 < 0.1 + 0.2", kFalse}});
}

// Quirk: what is not finite and not less is greater, so NaN is greater than anything, itself included.
TEST_F(Operators, NaNIsGreaterThanEverythingAndEqualToNothing) {
    expectAll({{u"0/0 < 1", kFalse},
               {u"0/0 > 1", kTrue},
               {u"1 > 0/0", kTrue},
               {u"1 < 0/0", kFalse},
               {u"0/0 == 0/0", kFalse},
               {u"0/0 != 0/0", kTrue},
               {u"0/0 > 0/0", kTrue},
               {u"0/0 === 0/0", kFalse}});
}

TEST_F(Operators, InfinitiesCompareByTheRuleForWhatIsNotFinite) {
    expectAll({{u"1e308 * 10 == 1e308 * 10", kFalse},
               {u"1e308 * 10 > 1e308 * 10", kTrue},
               {u"1 < 1e308 * 10", kTrue},
               {u"1e308 * 10 > 1", kTrue},
               {u"-(1e308 * 10) < -(1e308 * 10)", kTrue},
               {u"-(1e308 * 10) == -(1e308 * 10)", kFalse},
               {u"-(1e308 * 10) < 1", kTrue},
               {u"1e308 * 10 === 1e308 * 10", kFalse}});
}

TEST_F(Operators, ANumberAndABooleanCompareByTruth) {
    expectAll({{u"5 == true", kTrue},
               {u"0 == false", kTrue},
               {u"0/0 == true", kTrue},
               {u"true == 5", kTrue},
               {u"1e-20 == false", kTrue},
               {u"true > false", kTrue},
               {u"5 > true", kFalse},
               {u"false < 0.5", kTrue}});
}

TEST_F(Operators, TextsCompareUnitByUnit) {
    expectAll({{u"'10' < '9'", kTrue},
               {u"'ab' < 'abc'", kTrue},
               {u"'abc' > 'ab'", kTrue},
               {u"'' < 'a'", kTrue},
               {u"'a' == 'a'", kTrue},
               {u"'Z' < 'a'", kTrue},
               {u"'\uFFFD' > 'z'", kTrue}});
}

TEST_F(Operators, ATextAndANumberCompareAsNumbersAndABooleanAsText) {
    expectAll({{u"'10' < 9", kFalse},
               {u"5 == '5'", kTrue},
               {u"'5.0' == 5", kTrue},
               {u"'abc' == 0", kTrue},
               {u"true == 'true'", kTrue},
               {u"'true' == true", kTrue},
               {u"true == '1'", kFalse}});
}

// Quirk: two empty objects are equal.
TEST_F(Operators, ObjectsCompareByText) {
    expectAll({{u"[5] == 5", kTrue},
               {u"5 == [5]", kTrue},
               {u"[1, 2] == '1,2'", kTrue},
               {u"'1,2' == [1, 2]", kTrue},
               {u"new Object() == new Object()", kTrue},
               {u"null == 'null'", kTrue},
               {u"null == 0", kFalse},
               {u"[2] < [10]", kFalse}});
}

TEST_F(Operators, IdenticalNeedsTheSameSimpleType) {
    expectAll({{u"'a' === 'a'", kTrue},
               {u"'a' === 'b'", kFalse},
               {u"'1' === 1", kFalse},
               {u"1 === '1'", kFalse},
               {u"1 === true", kFalse},
               {u"true === true", kTrue},
               {u"true === false", kFalse},
               {u"true === 1", kFalse},
               {u"true === 'true'", kFalse},
               {u"'true' === true", kFalse},
               {u"2 === 2", kTrue}});
}

// Quirk: objects cannot be compared by identity, not even one with itself.
TEST_F(Operators, IdenticalOnObjectsReportsWrongObject) {
    for (const char16_t* script : {u"o === o", u"o === 1", u"1 === o", u"'a' === o", u"null === null"}) {
        run(u"o = new Object()");
        EXPECT_EQ(run(script), "null");
        EXPECT_EQ(messages(), "wrong object");
    }
}

// Quirk: "!==" and ">>>" are not in the table.
TEST_F(Operators, UnknownOperatorsGiveUndefinedSilently) {
    expectAll({{u"1 !== 2", "null"}});
    EXPECT_FALSE(apply(u">>>", number(8).get(), number(1).get()));
    EXPECT_FALSE(apply(u"!==", number(8).get(), number(1).get()));
    EXPECT_FALSE(apply(u"no such", number(8).get(), number(1).get()));
    EXPECT_FALSE(apply(u"", number(8).get(), number(1).get()));
    EXPECT_EQ(messages(), "");
}

TEST_F(Operators, CompoundAssignmentsApplyTheirOperator) {
    expectAll({{u"x = 7; x += 2; x", "number 9"},
               {u"x -= 4; x", "number 5"},
               {u"x *= 3; x", "number 15"},
               {u"x /= 2; x", "number 7.5"},
               {u"x %= 4; x", "number 3"},
               {u"s = 'a'; s += 1; s", "string a1"}});
}

TEST_F(Operators, CompoundAssignmentToAnUndefinedNameLeavesItUndefined) {
    EXPECT_EQ(run(u"u += 1; typeof u"), "string undefined");
    EXPECT_TRUE(machine->hasMember(BString(u"u"), ctx(), nullptr));
}

// ---- Taking an operator over ----

TEST_F(Operators, ALeftObjectTakesAnOperatorOver) {
    run(u"o = new Object(); o['operator$+'] = Function('return 42;'); o['operator$<'] = o['operator$+']");
    expectAll({{u"o + 1", "number 42"},
               {u"o + 'text'", "number 42"},
               {u"o < 1", "number 42"},
               {u"o - 1", "number -1"}});
}

TEST_F(Operators, ARightObjectIsNotAsked) {
    run(u"o = new Object(); o['operator$+'] = Function('return 42;')");
    EXPECT_EQ(run(u"1 + o"), "string 1[object Array]");
}

// Quirk: the right value itself stands where the list of arguments would.
TEST_F(Operators, TheRightValueStandsInPlaceOfTheArguments) {
    run(u"o = new Object(); o['operator$*'] = Function('a', 'b', 'return a * 10 + b;')");
    EXPECT_EQ(run(u"o * [1, 2]"), "number 12");
    EXPECT_EQ(run(u"o * 5"), "null") << "a number holds no arguments, so both parameters are undefined";
}

TEST_F(Operators, CompoundAssignmentAsksForTheOperatorBehindIt) {
    run(u"o = new Object(); o['operator$-'] = Function('return 3;')");
    EXPECT_EQ(run(u"o -= 1; o"), "number 3");
}

TEST_F(Operators, EveryOperatorCanBeTakenOver) {
    struct Recorder final : JSObject {
        bool hasMember(const BString& name, JSContext*, JSObject*) override {
            asked += support::ascii(name) + " ";
            return true;
        }
        JSObject* callMember(const BString& name, JSObject* args, JSContext*, JSObject*) override {
            called += support::ascii(name) + " ";
            argument = args;
            return nullptr;
        }
        std::string asked;
        std::string called;
        JSObject* argument = nullptr;
    };
    const Value right = number(1);
    for (const char16_t* op : {u"+", u"===", u"!==", u">>>", u"no such"}) {
        const Owned<Recorder> left(new Recorder());
        EXPECT_FALSE(apply(op, left.get(), right.get()));
        const std::string name = "operator$" + support::ascii(std::u16string_view(op)) + " ";
        EXPECT_EQ(left->asked, name);
        EXPECT_EQ(left->called, name);
        EXPECT_EQ(left->argument, right.get());
    }
}

// ---- The order in which operands are asked ----

class Witness final : public JSObject {
  public:
    Witness(std::string name, std::string& log, JSValueType type)
        : name_(std::move(name)), log_(log), type_(type) {}

    JSValueType valueType(JSContext*, JSObject*) override { return note("type"), type_; }
    void asString(BString& out, JSContext*, JSObject*) override {
        note("text");
        out = BString(u"1");
    }
    void asNumber(JSNumberValue& out, JSContext*, JSObject*) override {
        note("number");
        out = JSNumberValue::of(1);
    }
    bool asBoolean(JSContext*, JSObject*) override { return note("truth"), true; }

  private:
    void note(const char* what) { log_ += name_ + " " + what + "; "; }

    std::string name_;
    std::string& log_;
    JSValueType type_;
};

class OperandOrder : public Operators {
  protected:
    std::string order(const char16_t* op, JSValueType leftType, JSValueType rightType) {
        std::string log;
        const Value left(new Witness("left", log, leftType));
        const Value right(new Witness("right", log, rightType));
        apply(op, left.get(), right.get());
        return log;
    }
};

// Quirk: the right side is converted first.
TEST_F(OperandOrder, AddConvertsTheRightSideFirst) {
    EXPECT_EQ(order(u"+", JSValueType::string, JSValueType::number),
              "left type; right type; right text; left text; ");
    EXPECT_EQ(order(u"+", JSValueType::number, JSValueType::boolean),
              "left type; right type; right number; left number; ");
}

TEST_F(OperandOrder, OtherOperatorsConvertTheLeftSideFirst) {
    EXPECT_EQ(order(u"-", JSValueType::string, JSValueType::number),
              "left type; right type; left number; right number; ");
    EXPECT_EQ(order(u"<", JSValueType::string, JSValueType::string),
              "left type; right type; left type; right type; left text; right text; ");
    EXPECT_EQ(order(u"==", JSValueType::number, JSValueType::boolean),
              "left type; right type; left type; right type; left number; right number; ");
}

TEST_F(OperandOrder, IdenticalConvertsTheRightTextFirst) {
    EXPECT_EQ(order(u"===", JSValueType::string, JSValueType::string),
              "left type; right type; right text; left text; ");
}

TEST_F(OperandOrder, UndefinedOperandsAreNotConverted) {
    EXPECT_EQ(order(u"+", JSValueType::undefined, JSValueType::string), "left type; right type; ");
    EXPECT_EQ(order(u"<", JSValueType::string, JSValueType::undefined), "left type; right type; ");
}

// ---- Pending jumps ----

TEST_F(Operators, PendingJumpMakesAComparisonStop) {
    const Value one = number(1);
    const Value two = number(2);
    EXPECT_EQ(compareOperands(one.get(), two.get(), ctx(), nullptr), -1);
    EXPECT_EQ(compareOperands(two.get(), one.get(), ctx(), nullptr), 1);
    EXPECT_EQ(compareOperands(one.get(), one.get(), ctx(), nullptr), 0);
    machine->setCompletion(JSCompletion::returned);
    EXPECT_EQ(compareOperands(one.get(), two.get(), ctx(), nullptr), kComparisonStopped);
    for (const char16_t* op : {u"<", u"==", u"!=", u">=", u"-"})
        EXPECT_FALSE(apply(op, one.get(), two.get()));
    machine->setCompletion(JSCompletion::normal);
}

}  // namespace
}  // namespace quorvelin
