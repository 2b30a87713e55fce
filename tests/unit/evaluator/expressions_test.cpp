// Expressions: references, calls, prefix and postfix operators, `new`, `delete`, literals, and where messages
// stand.
#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class Expressions : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
    // Runs each script, which gives undefined and the message.
    void expectMessage(const char* message, std::initializer_list<const char16_t*> scripts) {
        for (const char16_t* script : scripts) {
            EXPECT_EQ(run(script), "null") << support::ascii(std::u16string_view(script));
            EXPECT_EQ(messages(), message) << support::ascii(std::u16string_view(script));
        }
    }
};

// ---- Names ----

TEST_F(Expressions, UndeclaredNameIsUndefinedWithoutMessage) {
    expectAll({{u"nothing", "undefined"},
               {u"typeof nothing", "string undefined"},
               {u"nothing.more", "undefined"},
               {u"nothing()", "null"},
               {u"nothing.more()", "null"}});
}

TEST_F(Expressions, NullBaseReportsWrongObject) {
    expectMessage("wrong object", {u"(void 0).x", u"(void 0)[1]", u"(void 0).m()", u"(void 0)()"});
    EXPECT_EQ(run(u"n = 0; (void 0).x = (n = 1)"), "null");
    EXPECT_EQ(messages(), "wrong object; wrong lvalue");
    EXPECT_EQ(run(u"n"), "number 0") << "the right side is not evaluated";
}

TEST_F(Expressions, AssignmentToNothingReportsWrongLvalue) {
    expectMessage("wrong lvalue", {u"(void 0) = 1", u"(void 0) += 1", u"++(void 0)", u"(void 0)--"});
}

TEST_F(Expressions, AssignmentToAValueDependsOnTheValue) {
    EXPECT_EQ(run(u"5 = 1"), "null");
    EXPECT_EQ(run(u"f() = 1"), "null");
    EXPECT_EQ(messages(), "wrong lvalue");
}

// ---- Indexes ----

TEST_F(Expressions, IndexGoesByTheTypeOfThePosition) {
    run(u"a = new Object(); a.name = 'first'; a[1] = 'second'");
    expectAll({{u"a[0]", "string first"},
               {u"a['name']", "string first"},
               {u"a['1']", "undefined"},
               {u"a[1.9]", "string second"},
               {u"a[true]", "string second"},
               {u"a[false]", "string first"},
               {u"a[-1]", "undefined"},
               {u"i = 1; a[i]", "string second"}});
}

TEST_F(Expressions, IndexThatIsNoPositionReportsEmptyCoordinate) {
    run(u"a = [1]");
    expectMessage("empty array's coordinate",
                  {u"a[void 0]", u"a[new Object()]", u"a[null]", u"a[undeclared]", u"a[[0]]"});
}

// ---- Calls ----

TEST_F(Expressions, ObjectThenArgumentsThenCall) {
    run(u"log = 0; note = Function('x', 'log = log * 10 + x; return x;'); o = new Object()");
    run(u"o.m = Function('a', 'b', 'note(4);'); pick = Function('note(1); return o;')");
    EXPECT_EQ(run(u"pick().m(note(2), note(3)); log"), "number 1234");
    EXPECT_EQ(run(u"log = 0; pick()[note(2) - 2](note(3), note(4)); log"), "number 12344");
}

TEST_F(Expressions, ArgumentsAreEvaluatedEvenIfThereIsNothingToCall) {
    EXPECT_EQ(run(u"n = 0; (void 0)(n = 5)"), "null");
    EXPECT_EQ(messages(), "wrong object");
    EXPECT_EQ(run(u"n"), "number 5");
    EXPECT_EQ(run(u"nothing(n = 6); n"), "number 6");
    EXPECT_EQ(run(u"(void 0).m(n = 7)"), "null");
    EXPECT_EQ(messages(), "wrong object");
    EXPECT_EQ(run(u"n"), "number 6") << "a method call asks for its object first";
}

TEST_F(Expressions, CallOfAnElementOfAnArray) {
    EXPECT_EQ(run(u"a = [1, 2]; a[1] = Function('x', 'return x + 1;'); a[1](5)"), "number 6");
}

// ---- Prefix operators ----

// Quirk: the word for no value is "null", that of the null object "object".
TEST_F(Expressions, TypeofGivesTheWordOfTheType) {
    run(u"f = Function('return 1;'); o = new Object()");
    expectAll({{u"typeof 'a'", "string string"},
               {u"typeof 1", "string number"},
               {u"typeof (0/0)", "string number"},
               {u"typeof true", "string boolean"},
               {u"typeof o", "string object"},
               {u"typeof [1]", "string object"},
               {u"typeof f", "string function"},
               {u"typeof o.toString", "string function"},
               {u"typeof undeclared", "string undefined"},
               {u"typeof void 0", "string null"},
               {u"typeof null", "string object"},
               {u"typeof nothing()", "string null"}});
}

// Quirk: the operand is not evaluated at all.
TEST_F(Expressions, VoidDoesNotEvaluateItsOperand) {
    EXPECT_EQ(run(u"called = 0; f = Function('called = 1;'); void f()"), "null");
    EXPECT_EQ(run(u"called"), "number 0");
    EXPECT_EQ(run(u"void (called = 2); called"), "number 0");
}

TEST_F(Expressions, NotNegatesTheTruth) {
    expectAll({{u"!1", "boolean false"},
               {u"!''", "boolean true"},
               {u"!undeclared", "boolean true"},
               {u"!(void 0)", "boolean true"},
               {u"!!'x'", "boolean true"},
               {u"!null", "boolean true"}});
}

// Quirk: a text of digits is no number here.
TEST_F(Expressions, MinusAndComplementTakeNumbersOnly) {
    expectAll({{u"-5", "number -5"},
               {u"x = 2; -x", "number -2"},
               {u"-'5'", "null"},
               {u"-true", "null"},
               {u"-undeclared", "null"},
               {u"-(void 0)", "null"},
               {u"-null", "null"},
               {u"~5", "number -6"},
               {u"~5.7", "number -6"},
               {u"~'5'", "null"},
               {u"~undeclared", "null"},
               {u"~(0/0)", "number NaN"},
               {u"~(1e308 * 10)", "number NaN"},
               {u"-(1/0)", "number NaN"},
               {u"-(1e308 * 10)", "number -Infinity"}});
}

// Quirk: unary "+" evaluates its operand and gives undefined.
TEST_F(Expressions, UnaryPlusEvaluatesItsOperandAndGivesUndefined) {
    EXPECT_EQ(run(u"x = 5; +x"), "null");
    EXPECT_EQ(run(u"typeof (+'7')"), "string null");
}

TEST_F(Expressions, PrefixStepGivesTheNewValue) {
    expectAll({{u"x = 5; ++x", "number 6"}, {u"x", "number 6"}, {u"--x", "number 5"}, {u"x", "number 5"}});
    EXPECT_EQ(run(u"x = 0.5; ++x"), "number 1.5");
}

TEST_F(Expressions, PostfixStepGivesTheOldValue) {
    expectAll({{u"x = 5; x++", "number 5"}, {u"x", "number 6"}, {u"x--", "number 6"}, {u"x", "number 5"}});
    expectAll(
        {{u"a = [1]; a[0]++; a[0]", "number 2"}, {u"o = new Object(); o.n = 1; o.n++; o.n", "number 2"}});
}

TEST_F(Expressions, StepOfWhatIsNoNumberReportsWrongObjectAndChangesNothing) {
    run(u"s = '5'; t = true");
    expectMessage("wrong object", {u"s++", u"s--", u"++s", u"--s", u"t++", u"undeclared++"});
    EXPECT_EQ(run(u"s"), "string 5");
    EXPECT_FALSE(machine->hasMember(BString(u"undeclared"), ctx(), nullptr));
}

TEST_F(Expressions, StepOfAValueIsLostWithoutMessage) {
    EXPECT_EQ(run(u"5++"), "number 5");
    EXPECT_EQ(run(u"++5"), "null");
}

// ---- Logical operators, conditional, comma ----

// Quirk: the operands themselves are never the result.
TEST_F(Expressions, LogicalOperatorsGiveBooleans) {
    expectAll({{u"1 || 2", "boolean true"},
               {u"'a' || 'b'", "boolean true"},
               {u"0 || 'b'", "boolean true"},
               {u"0 || ''", "boolean false"},
               {u"undeclared || void 0", "boolean false"},
               {u"1 && 2", "boolean true"},
               {u"1 && ''", "boolean false"},
               {u"0 && 1", "boolean false"},
               {u"1 && void 0", "boolean false"},
               {u"void 0 && 1", "boolean false"}});
}

TEST_F(Expressions, LogicalOperatorsLeaveTheRightSideAloneWhenTheLeftDecides) {
    expectAll({{u"n = 0; 1 || (n = 1); n", "number 0"},
               {u"0 && (n = 2); n", "number 0"},
               {u"0 || (n = 3); n", "number 3"},
               {u"1 && (n = 4); n", "number 4"}});
}

TEST_F(Expressions, ConditionalEvaluatesOneBranch) {
    expectAll({{u"1 ? 'yes' : 'no'", "string yes"},
               {u"undeclared ? 'yes' : 'no'", "string no"},
               {u"(void 0) ? 'yes' : 'no'", "string no"},
               {u"n = 0; 1 ? 5 : (n = 1); n", "number 0"}});
}

TEST_F(Expressions, CommaGivesTheRightSide) {
    expectAll({{u"1, 2, 3", "number 3"}, {u"n = 0; (n = 5, 'x')", "string x"}, {u"n", "number 5"}});
}

// ---- new and delete ----

// Quirk: what the constructor returns is dropped.
TEST_F(Expressions, NewGivesTheCellAndDropsWhatTheFunctionReturns) {
    run(u"f = Function('v', 'this.x = v; return 5;')");
    expectAll({{u"c = new f(3); c.x", "number 3"},
               {u"typeof new f(3)", "string object"},
               {u"(new f(7)).x", "number 7"}});
    const Value cell = evaluate(u"new f(1)");
    EXPECT_EQ(support::memberName(cell.get(), ctx()), "");
    EXPECT_EQ(cell->memberCount(ctx(), nullptr), 1);
}

TEST_F(Expressions, NewOfAFunctionThatWritesNothingIsAnEmptyCell) {
    EXPECT_EQ(run(u"f = Function('return 5;'); new f()"), "undefined undefined");
    EXPECT_EQ(run(u"typeof new f"), "string undefined") << "without parentheses nothing is called";
    EXPECT_EQ(run(u"typeof new nothing()"), "string undefined");
}

TEST_F(Expressions, NewReachesNativeConstructors) {
    expectAll({{u"new Number(5)", "number 5"},
               {u"new String('a')", "string a"},
               {u"new Array(1, 2)", "object 1,2"},
               {u"(new Function('a', 'return a * 2;'))(4)", "number 8"},
               {u"typeof new Object()", "string object"}});
}

TEST_F(Expressions, NewReachesAMethodOfAnObject) {
    EXPECT_EQ(run(u"o = new Object(); o.Make = Function('v', 'this.v = v;'); m = new o.Make(6); m.v"),
              "number 6");
    EXPECT_EQ(run(u"typeof o.v"), "string undefined");
}

TEST_F(Expressions, ArgumentsOfNewDoNotSeeTheCell) {
    run(u"Inner = Function('this.inner = 1; return 2;'); Outer = Function('v', 'this.v = v;')");
    EXPECT_EQ(run(u"o = new Outer(Inner()); o.v"), "number 2");
    EXPECT_EQ(run(u"typeof o.inner"), "string undefined");
    run(u"delete inner");
}

TEST_F(Expressions, DeleteGivesUndefinedWhateverItDid) {
    run(u"a = new Object(); a.b = 1");
    expectAll({{u"delete a.b", "null"},
               {u"typeof a.b", "string undefined"},
               {u"delete a.nothing", "null"},
               {u"delete undeclared", "null"},
               {u"delete 5", "null"}});
}

TEST_F(Expressions, DeleteOfAValueClearsIt) {
    run(u"a = [1, 2, 3]; f = Function('return a;')");
    EXPECT_EQ(run(u"delete f(); a.length"), "number 0");
}

// ---- Literals ----

// Quirk: 017 is 17.
TEST_F(Expressions, NumberLiteralsAreReadInRadixTenWhateverTheirForm) {
    expectAll({{u"12", "number 12"},
               {u"017", "number 17"},
               {u"0x10", "number 16"},
               {u"0", "number 0"},
               {u".5", "number 0.5"},
               {u"1e3", "number 1000"},
               {u"1.50", "number 1.5"}});
}

TEST_F(Expressions, OtherLiterals) {
    expectAll({{u"'text'", "string text"},
               {u"\"text\"", "string text"},
               {u"''", "string"},
               {u"true", "boolean true"},
               {u"false", "boolean false"},
               {u"null", "object null"},
               {u"[]", "object"},
               {u"[1, 'a', [2, 3]]", "object 1,a,2,3"}});
}

TEST_F(Expressions, TextOfAFunctionMakesNoValue) {
    EXPECT_EQ(run(u"1; function g() { return 1; }"), "null");
    EXPECT_EQ(run(u"function g() { return 1; } g()"), "null");
}

TEST_F(Expressions, MissingOperandIsUndefined) {
    expectAll({{u"y = 1; x = ; typeof x", "string undefined"},
               {u"y = 1; +x; y", "number 1"},
               {u"1 + ;", "null"},
               {u"8 >>> 1", "null"}});
}

// ---- Positions ----

TEST_F(Expressions, MessageStandsAtTheNodeThatReports) {
    run(u"a = 1;\n  (void 0).x;\nb = (void 0)[2]");
    const std::string reported = messagesWithPositions();
    EXPECT_EQ(reported.substr(0, 2), "2:");
    EXPECT_NE(reported.find("; 3:"), std::string::npos) << reported;
    EXPECT_EQ(machine->position(), "0:0") << "put back after the run";
}

TEST_F(Expressions, PositionStaysOnTheStatementThatJumped) {
    run(u"a = 1; return 5;");
    EXPECT_EQ(machine->position(), "1:15");
    machine->setCompletion(JSCompletion::normal);
}

}  // namespace
}  // namespace quorvelin
