// The names of the root, and the functions that every context answers.
#include <gtest/gtest.h>

#include "machine/global_context.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;

class GlobalNames : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << ascii(std::u16string_view(script));
        }
    }
};

const char16_t* const kStandardNames[] = {u"Array", u"String", u"Number", u"Boolean", u"Function", u"Object",
                                          u"Date",  u"Math",   u"RegExp", u"println", u"util"};

TEST_F(GlobalNames, ExistAndHaveTheirTypes) {
    for (const char16_t* name : kStandardNames) {
        EXPECT_TRUE(machine->hasMember(BString(name), ctx(), nullptr)) << ascii(std::u16string_view(name));
        EXPECT_EQ(machine->memberType(BString(name), ctx(), nullptr),
                  BString(name) == BString(u"println") ? JSValueType::function : JSValueType::object);
    }
    EXPECT_EQ(run(u"typeof Array + typeof Number + typeof println"), "string objectobjectfunction");
}

TEST_F(GlobalNames, CannotBeWrittenOrDeleted) {
    for (const char16_t* name : kStandardNames) {
        EXPECT_EQ(run(std::u16string(name) + u" = 1"), "null");
        EXPECT_EQ(messages(), "not correct use prototype");
        EXPECT_EQ(run(u"delete " + std::u16string(name)), "null");
        EXPECT_EQ(messages(), "not correct use prototype");
    }
}

// Quirk: the first five cannot be read, only called.
TEST_F(GlobalNames, FiveConstructorsCanOnlyBeCalled) {
    for (const char16_t* name : {u"Array", u"String", u"Number", u"Boolean", u"Function"}) {
        EXPECT_FALSE(global(name)) << ascii(std::u16string_view(name));
    }
    EXPECT_EQ(run(u"String.fromCharCode(65)"), "null");
    EXPECT_EQ(run(u"x = Array; typeof x"), "string undefined");
    EXPECT_EQ(run(u"Array(1, 2)"), "object 1,2");
}

TEST_F(GlobalNames, WritingThroughOneOfTheFiveIsRefused) {
    EXPECT_EQ(run(u"String.x = 1"), "null");
    EXPECT_EQ(messages(), "not correct use prototype");
}

// Quirk: each read of Object is a new object.
TEST_F(GlobalNames, EachReadOfObjectIsANewObject) {
    run(u"var o = Object; var p = Object;");
    const Value first(global(u"o")->asObject(ctx(), nullptr));
    const Value second(global(u"p")->asObject(ctx(), nullptr));
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first.get(), second.get());
}

// Quirk: println of the root prints nothing.
TEST_F(GlobalNames, PrintlnPrintsNothing) {
    EXPECT_EQ(run(u"println('x')"), "null");
    EXPECT_EQ(run(u"f = println; f('x')"), "null");
    EXPECT_EQ(printed(), "");
    run(u"f = 0");  // a method of the machine, held by the machine, is a cycle
}

TEST_F(GlobalNames, OwnMembersAreDispatchedWithTheRoot) {
    EXPECT_EQ(run(u"typeof toString"), "string function");
    EXPECT_EQ(run(u"typeof length"), "string number") << "the root has a list of arguments of its own";
}

// ---- _eval ----

TEST_F(GlobalNames, EvalRunsATextInTheScopeOfTheCaller) {
    expectAll({{u"_eval('1')", "number 1"},
               {u"_eval('1; 2 + 3')", "number 5"},
               {u"_eval('x = 4'); x", "number 4"},
               {u"_eval()", "null"},
               {u"_eval(7)", "number 7"},
               {u"f = Function('_eval(\\'var inside = 3;\\'); return inside;'); f()", "number 3"},
               {u"typeof inside", "string undefined"}});
}

TEST_F(GlobalNames, EvalOfATextWithAnErrorGivesNothingAndReports) {
    EXPECT_EQ(run(u"_eval(')'); 7"), "number 7");
    EXPECT_EQ(messages().substr(0, 9), "Error(Ln ");
}

TEST_F(GlobalNames, EvalGivesNothingWhenTheTextJumps) {
    EXPECT_EQ(run(u"f = Function('_eval(\\'return 5;\\'); return 6;'); f()"), "number 5");
}

// Quirk: the name is `_eval`.
TEST_F(GlobalNames, EvalByItsUsualNameDoesNotExist) {
    EXPECT_EQ(run(u"eval('1')"), "null");
    EXPECT_EQ(run(u"typeof eval"), "string undefined");
}

// ---- Numbers from text ----

// Quirk: no result is NaN, and radix 10 reads exponents.
TEST_F(GlobalNames, ParseIntReadsAsFarAsItCan) {
    expectAll({{u"parseInt('12abc')", "number 12"},
               {u"parseInt('1.9')", "number 1"},
               {u"parseInt('-1.9')", "number -1"},
               {u"parseInt('1e3')", "number 1000"},
               {u"parseInt('abc')", "number 0"},
               {u"parseInt('')", "number 0"},
               {u"parseInt()", "number 0"},
               {u"parseInt('  42')", "number 42"},
               {u"parseInt(7.8)", "number 7"},
               {u"parseInt('99999999999')", "number -2147483648"}});
}

TEST_F(GlobalNames, ParseIntTakesARadix) {
    expectAll({{u"parseInt('ff', 16)", "number 255"},
               {u"parseInt('0xff', 16)", "number 255"},
               {u"parseInt('12', 2)", "number 1"},
               {u"parseInt('z', 36)", "number 35"},
               {u"parseInt('12', 99)", "number 0"},
               {u"parseInt('12', 0)", "number 0"},
               {u"parseInt('12', void 0)", "number 0"}});
}

TEST_F(GlobalNames, ParseFloatReadsAsFarAsItCan) {
    expectAll({{u"parseFloat('1.5x')", "number 1.5"},
               {u"parseFloat('x')", "number 0"},
               {u"parseFloat()", "number 0"},
               {u"parseFloat('-2e2')", "number -200"},
               {u"parseFloat('0x10')", "number 16"}});
}

// ---- escape and unescape ----

// Quirk: the codes are decimal.
TEST_F(GlobalNames, EscapeWritesSpacesAsPlusAndOthersAsDecimalCodes) {
    expectAll({{u"escape('a b,')", "string a+b%44"},
               {u"escape('AZ09')", "string AZ09"},
               {u"escape('\u00e4\u4e2d')", "string \\u00E4\\u4E2D"},
               {u"escape('+%')", "string %43%37"},
               {u"escape('\u20ac')", "string %8364"},
               {u"escape('')", "string"},
               {u"escape()", "string"},
               {u"escape(12)", "string 12"}});
}

TEST_F(GlobalNames, UnescapeOfATextWithoutPercentTurnsPlusIntoBlank) {
    expectAll({{u"unescape('a+b')", "string a b"}, {u"unescape('')", "string"}, {u"unescape()", "string"}});
}

// Quirk: positions are counted from different places in front of and behind a "%".
TEST_F(GlobalNames, UnescapeWritesTheCodeAndKeepsItsDigits) {
    EXPECT_EQ(run(u"unescape('%41')"), "string \\u000141");
    EXPECT_EQ(run(u"unescape('a%41')"), "string a41") << "i + p + 1 is behind the end";
    EXPECT_EQ(run(u"unescape('%?65')"), "string A?65") << "the code starts one character late";
    EXPECT_EQ(run(u"unescape('%?x41')"), "string A?x41");
    EXPECT_EQ(run(u"unescape('%?xg')"), "string ?xg");
    EXPECT_EQ(run(u"unescape('%?z')"), "string ?z");
}

// ---- Every context answers ----

TEST_F(GlobalNames, NearestContextServesTheFunctions) {
    // A script's own member hides the function at the root only.
    EXPECT_EQ(run(u"parseInt = 5; parseInt('7')"), "null");
    EXPECT_EQ(run(u"f = Function('return parseInt(\\'7\\');'); f()"), "number 7");
}

TEST_F(GlobalNames, FunctionReadAsAValueCanBeCalled) {
    EXPECT_EQ(run(u"p = parseInt; p('8')"), "number 8");
    EXPECT_EQ(run(u"'' + parseFloat"), "string function parseFloat(){[native code]}");
    run(u"p = 0");
}

TEST_F(GlobalNames, OperationsBehindTheFunctionsWorkOnTexts) {
    EXPECT_EQ(machine->parseIntText(BString(u"101"), 2), 5);
    EXPECT_EQ(machine->parseFloatText(BString(u"2.5 apples")), 2.5);
    BString out;
    machine->escapeText(out, u"a.b");
    EXPECT_EQ(ascii(out), "a%46b");
    machine->unescapeText(out, BString(u"+"));
    EXPECT_EQ(ascii(out), " ");
    EXPECT_EQ(machine->parseIntArguments(nullptr, ctx(), nullptr), 0);
    EXPECT_EQ(machine->parseFloatArguments(nullptr, ctx(), nullptr), 0.0);
    EXPECT_FALSE(Value(machine->evalArguments(nullptr, ctx(), nullptr)));
    machine->escapeArguments(out, nullptr, ctx(), nullptr);
    EXPECT_TRUE(out.isEmpty());
    machine->unescapeArguments(out, nullptr, ctx(), nullptr);
    EXPECT_TRUE(out.isEmpty());
}

// ---- Making values ----

TEST_F(GlobalNames, FactoriesGiveValuesWithOneHolder) {
    const Value values[] = {number(1),
                            string(u"a"),
                            boolean(true),
                            plainObject(),
                            list({}),
                            Value(machine->makeArraySized(3, nullptr)),
                            Value(machine->makeNull(nullptr))};
    for (const Value& value : values) {
        ASSERT_TRUE(value);
        EXPECT_EQ(value->refCount(), 0);
    }
    EXPECT_EQ(values[5]->getLength(nullptr), 3);
    EXPECT_FALSE(Value(machine->makeUndefined(nullptr)));
}

}  // namespace
}  // namespace quorvelin
