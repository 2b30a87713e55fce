// Arrays: one store for elements, named members and length; join, reverse and sort.
#include "stdlib/array_object.h"

#include <gtest/gtest.h>

#include "host/allocator.h"
#include "support/jumper.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class ArrayObject : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
};

// ---- Making arrays ----

TEST_F(ArrayObject, OneNumberIsALengthAndAnythingElseAreElements) {
    expectAll({{u"(new Array(3)).length", "number 3"},
               {u"a = new Array('3'); a.length", "number 1"},
               {u"a = new Array(2.9); a.length", "number 2"},
               {u"a = new Array(1, 2); a.length", "number 2"},
               {u"a = new Array(1/0); a.length", "number 0"},
               {u"a = new Array(); a.length", "number 0"},
               {u"a = new Array(-1); a.length", "number 0"},
               {u"a = Array(1, 'x'); a.toString()", "string 1,x"},
               {u"a = Array(void 0); a.length", "number 1"}});
}

TEST_F(ArrayObject, CallWithoutAListMakesAnEmptyArray) {
    const Value array(machine->callMember(BString(u"Array"), nullptr, ctx(), nullptr));
    ASSERT_TRUE(array);
    EXPECT_EQ(array->getLength(nullptr), 0);
}

TEST_F(ArrayObject, FreshEntriesAreEmpty) {
    expectAll({{u"a = new Array(2); typeof a[0]", "string undefined"},
               {u"a.toString()", "string undefined,undefined"}});
    EXPECT_FALSE(Value(Value(machine->makeArraySized(2, nullptr))->getItem(1, ctx(), nullptr)));
}

// ---- The store ----

TEST_F(ArrayObject, WritingBehindTheEndMakesHoles) {
    expectAll({{u"a = []; a[2] = 1; a.length", "number 3"},
               {u"a = []; a[1] = 2; a.toString()", "string undefined,2"}});
}

TEST_F(ArrayObject, NamedMembersStandInTheSameStore) {
    expectAll({{u"a = []; a.x = 1; a.length", "number 1"},
               {u"a[0]", "number 1"},
               {u"a['1'] = 5; a.length", "number 2"},
               {u"typeof a['0']", "string undefined"},
               {u"a[0] = 7; a.x", "number 7"}});
}

TEST_F(ArrayObject, LengthCutsAndGrows) {
    expectAll({{u"a = [1, 2, 3]; a.length = 1; a.toString()", "string 1"},
               {u"a.length = -1; a.length", "number 1"},
               {u"a.length = 3; a.toString()", "string 1,undefined,undefined"},
               {u"a.length = 0; a.toString()", "string"}});
    const Value object = plainObject();
    const Value array = list({object.get(), object.get()});
    EXPECT_EQ(object->refCount(), 2);
    array->setLength(1, nullptr);
    EXPECT_EQ(object->refCount(), 1);
}

TEST_F(ArrayObject, DeletingAnElementMovesTheLaterOnesDown) {
    expectAll({{u"a = [1, 2, 3]; delete a[0]; a.toString()", "string 2,3"}, {u"a.length", "number 2"}});
}

TEST_F(ArrayObject, NameOfTheConstructorIsWrittenThere) {
    EXPECT_EQ(run(u"a = []; b = []; p = a.prototype; p.shared = 1; a.shared = 2; b.shared"), "number 2");
    EXPECT_EQ(run(u"a.length"), "number 0");
}

// ---- Text ----

TEST_F(ArrayObject, TextIsThatOfTheMemberJoin) {
    expectAll({{u"[1, 2].toString()", "string 1,2"},
               {u"'' + [1, 2]", "string 1,2"},
               {u"'' + []", "string"},
               {u"a = [1, 2]; a.join = Function('return 7;'); '' + a", "string 7"},
               {u"a.join = Function('return;'); '' + a", "string"}});
}

// Quirk: the separator is the text of the list of arguments as a whole.
TEST_F(ArrayObject, JoinTakesTheTextOfAllItsArgumentsAsSeparator) {
    expectAll({{u"[1, 2].join('-')", "string 1-2"},
               {u"[1, 2].join()", "string 12"},
               {u"[1, 2].join(1, 2)", "string 11,22"},
               {u"[1, 2].join('', '-')", "string 1-2"},
               {u"(new Array(3)).join()", "string undefinedundefinedundefined"},
               {u"[].join()", "string"}});
    const Value array = list({number(1).get(), number(2).get()});
    EXPECT_EQ(describe(Value(array->callMember(BString(u"join"), nullptr, ctx(), nullptr)).get()),
              "string 1,2");
}

// Quirk: empty texts in front add no separators.
TEST_F(ArrayObject, EmptyTextsInFrontAddNoSeparators) {
    expectAll({{u"['', '', 'a'].join('-')", "string a"},
               {u"['', 'a'].join('-')", "string a"},
               {u"['a', '', ''].join('-')", "string a--"}});
}

TEST_F(ArrayObject, ElementsWithoutValueJoinAsTheWordUndefined) {
    expectAll({{u"a = [1, void 0, 3]; a.join('-')", "string 1-undefined-3"},
               {u"[[1, 2], null, true].join(';')", "string 1,2;null;true"}});
}

TEST_F(ArrayObject, JoinReadsTheLengthAnewForEachElement) {
    run(uR"(first = [1]; first.join = new Function("a.length = 2; return \"x\";"))");
    EXPECT_EQ(run(u"a = [first, 2, 3]; a.join('-')"), "string x-2");
    run(uR"(first.join = new Function("if (a.length < 4) { a[a.length] = 9; } return \"x\";"))");
    EXPECT_EQ(run(u"a = [first, first]; a.join('-')"), "string x-x-9-9");
}

TEST_F(ArrayObject, JoinEndsBehindAnElementThatJumps) {
    const Value array = list({number(1).get(), Value(new support::Jumper(1)).get(), number(3).get()});
    const Value joined(array->callMember(BString(u"join"), nullptr, ctx(), nullptr));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(describe(joined.get()), "string 1,jump");
}

// ---- reverse ----

// Quirk: the first half becomes a mirror of the second, and the second stays.
TEST_F(ArrayObject, ReverseMirrorsTheSecondHalf) {
    expectAll({{u"[1, 2, 3, 4].reverse().toString()", "string 4,3,3,4"},
               {u"[1, 2, 3].reverse().toString()", "string 3,2,3"},
               {u"[].reverse().toString()", "string"},
               {u"[5].reverse().toString()", "string 5"}});
}

TEST_F(ArrayObject, ReverseGivesTheArrayItself) {
    const Value array = list({number(1).get(), number(2).get()});
    EXPECT_EQ(Value(array->callMember(BString(u"reverse"), nullptr, ctx(), nullptr)).get(), array.get());
}

TEST_F(ArrayObject, ReverseTakesTheValueFromTheCounterpartOfAHole) {
    EXPECT_EQ(run(u"a = []; a[2] = 1; a.reverse().toString()"), "string 1,undefined,undefined");
}

TEST_F(ArrayObject, ReverseEndsWithNothingWhenAStoreJumps) {
    const Value array = list({number(1).get(), number(2).get(), Value(new support::Jumper(1)).get()});
    EXPECT_FALSE(Value(array->callMember(BString(u"reverse"), nullptr, ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
}

TEST_F(ArrayObject, ConstructionEndsWithNothingWhenAStoreJumps) {
    const Value arguments(new support::JumperList(3, 1));
    EXPECT_FALSE(Value(machine->callMember(BString(u"Array"), arguments.get(), ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
}

// ---- sort ----

TEST_F(ArrayObject, SortComparesAsTheOperatorsDo) {
    expectAll({{u"a = [10, 9, 1]; a.sort(); a.toString()", "string 1,9,10"},
               {u"a = ['10', '9', '1']; a.sort(); a.toString()", "string 1,10,9"},
               {u"a = ['b', 'a', 'c']; a.sort(); a.toString()", "string a,b,c"},
               {u"typeof a.sort()", "string null"},
               {u"a = []; a.sort(); a.length", "number 0"}});
}

TEST_F(ArrayObject, SortComparesANumberAndATextAsNumbers) {
    EXPECT_EQ(run(u"a = ['10', 9]; a.sort(); a.toString()"), "string 9,10");
}

TEST_F(ArrayObject, QuirkSortGivesNothing) {
    EXPECT_EQ(run(u"[2, 1].sort()"), "null");
    EXPECT_EQ(run(u"[].sort()"), "null");
}

TEST_F(ArrayObject, SortTakesAnInfinityOfTheComparisonForABigNumber) {
    run(u"up = Function('a', 'b', 'return 1e308 * 10;'); down = Function('a', 'b', 'return -1e308 * 10;')");
    expectAll({{u"a = [1, 2, 3]; a.sort(up); a.toString()", "string 3,2,1"},
               {u"a = [1, 2, 3]; a.sort(down); a.toString()", "string 1,2,3"}});
}

TEST_F(ArrayObject, SortKeepsTheOrderAfterAJumpInTheComparison) {
    run(u"root = this; asked = 0");
    run(uR"(f = new Function("a", "b", "asked = asked + 1; root._eval(\"break;\"); return 1;"))");
    run(u"a = [3, 1, 2]; a.sort(f)");
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(run(u"a.toString() + ' ' + asked"), "string 3,1,2 1");
    run(u"root = 0");
}

TEST_F(ArrayObject, SortWithoutMemoryChangesNothing) {
    const Value array = list({number(2).get(), number(1).get()});
    for (uint64_t count : {1, 2}) {
        failAllocation(count);
        { const Value sorted(array->callMember(BString(u"sort"), nullptr, ctx(), nullptr)); }
        EXPECT_TRUE(allocationHasFailed());
        cancelAllocationFailure();
        EXPECT_EQ(support::asString(array.get(), ctx()), "2,1");
    }
}

TEST_F(ArrayObject, SortTakesAComparisonFunction) {
    run(u"down = Function('a', 'b', 'return b - a;')");
    expectAll({{u"a = [2, 3, 1]; a.sort(down); a.toString()", "string 3,2,1"},
               {u"a = [5]; a.sort(down); a.toString()", "string 5"}});
}

TEST_F(ArrayObject, SortKeepsTheOrderOfWhatComparesEqual) {
    run(u"byTens = Function('a', 'b', 'return parseInt(a / 10) - parseInt(b / 10);')");
    EXPECT_EQ(run(u"a = [21, 13, 25, 11, 19, 22]; a.sort(byTens); a.toString()"), "string 13,11,19,21,25,22");
}

TEST_F(ArrayObject, SortPutsPositionsWithoutValueLast) {
    EXPECT_EQ(run(u"a = [3, void 0, 1]; a[4] = 2; a.sort(); a.toString()"),
              "string 1,2,3,undefined,undefined");
}

TEST_F(ArrayObject, SortMovesValuesAndLeavesNamesWhereTheyAre) {
    EXPECT_EQ(run(u"a = []; a.x = 3; a.y = 1; a.sort(); a.x * 10 + a.y"), "number 13");
}

TEST_F(ArrayObject, SortWithAComparisonThatGivesNothingKeepsTheOrder) {
    EXPECT_EQ(run(u"f = Function('a', 'b', 'return;'); a = [3, 1, 2]; a.sort(f); a.toString()"),
              "string 3,1,2");
}

// An argument that holds nothing is a comparison function that gives nothing.
TEST_F(ArrayObject, SortByAVariableWithoutValueKeepsTheOrder) {
    EXPECT_EQ(run(u"var empty; a = [3, 1, 2]; a.sort(empty); a.toString()"), "string 3,1,2");
}

TEST_F(ArrayObject, SortSurvivesAComparisonThatChangesTheArray) {
    EXPECT_EQ(
        run(u"f = Function('x', 'y', 'a.length = 1; return x - y;'); a = [3, 1, 2]; a.sort(f); a.length"),
        "number 1");
}

TEST_F(ArrayObject, MethodsAreMembersOfTypeFunction) {
    for (const char16_t* name : {u"join", u"reverse", u"sort"}) {
        const Value array = list({});
        EXPECT_TRUE(array->hasMember(BString(name), ctx(), nullptr));
        EXPECT_EQ(array->memberType(BString(name), ctx(), nullptr), JSValueType::function);
    }
    EXPECT_EQ(run(u"typeof [].push"), "string undefined");
    EXPECT_EQ(run(u"[1].push(2)"), "null");
}

}  // namespace
}  // namespace quorvelin
