#include "stdlib/regexp/regexp_object.h"

#include <gtest/gtest.h>

#include <string>

#include "host/allocator.h"
#include "support/jumper.h"
#include "support/script_machine.h"

namespace quorvelin {
namespace {

class RegExpObject : public support::ScriptTest {
  protected:
    // The results of the last run: "input<left|match|right|paren>".
    std::string statics() {
        return run(
            u"'' + RegExp.input + '<' + RegExp.leftContext + '|' + RegExp.lastMatch + '|' + "
            u"RegExp.rightContext + '|' + RegExp.lastParen + '>'");
    }
};

TEST_F(RegExpObject, Test) {
    EXPECT_EQ(run(u"re = new RegExp('b+'); re.test('abbc')"), "boolean true");
    EXPECT_EQ(run(u"re.test('ac')"), "boolean false");
    EXPECT_EQ(run(u"lit = /b/; lit.test('abc')"), "boolean true");
}

TEST_F(RegExpObject, TestWithoutAnArgumentRunsNothing) {
    run(u"re = new RegExp('b'); re.test('abc')");
    EXPECT_EQ(run(u"re.test()"), "boolean false");
    EXPECT_EQ(statics(), "string abc<a|b|c|>");
}

TEST_F(RegExpObject, ExecGivesAPlainObjectWithItemsIndexAndInput) {
    run(u"r = (new RegExp('(a)(b)')).exec('xab')");
    EXPECT_EQ(run(u"r[0]"), "string ab");
    EXPECT_EQ(run(u"r[1]"), "string a");
    EXPECT_EQ(run(u"r.index"), "number 1");
    EXPECT_EQ(run(u"r.input"), "string xab");
    EXPECT_EQ(run(u"typeof r"), "string object");
    EXPECT_EQ(run(u"(new RegExp('z')).exec('xab')"), "null");
}

TEST_F(RegExpObject, ExecGivesItemsAndMembersInOneList) {
    EXPECT_EQ(run(u"r = (new RegExp('(a)(b)')).exec('ab'); r[0] + r[1] + r[2] + r[3]"), "string aba0ab");
    EXPECT_EQ(run(u"r.length"), "number 4");
}

TEST_F(RegExpObject, QuirkEveryRunBeginsAtTheFront) {
    run(u"re = new RegExp('b', 'g'); re.lastIndex = 2");
    EXPECT_EQ(run(u"re.exec('abab').index"), "number 1");
    EXPECT_EQ(run(u"re.exec('abab').index"), "number 1");
    EXPECT_EQ(run(u"re.lastIndex"), "number 2");
}

TEST_F(RegExpObject, AConversionThatJumpsChangesNothing) {
    run(u"(new RegExp('b')).test('abc')");
    const Value expression = evaluate(u"RegExp('b', 'gi')");
    const Value constructor = global(u"RegExp");
    const Value jumper(new support::Jumper());
    const auto call = [&](const char16_t* name, int32_t place) {
        const Value arguments(new support::JumperList(2, place));
        const Value result(expression->callMember(name, arguments.get(), ctx(), nullptr));
        machine->setCompletion(JSCompletion::normal);
        return describe(result.get());
    };
    EXPECT_EQ(call(u"exec", 0), "null");
    EXPECT_EQ(call(u"test", 0), "boolean false");
    EXPECT_EQ(statics(), "string abc<a|b|c|>");
    EXPECT_EQ(call(u"compile", 0), "null");
    EXPECT_EQ(call(u"compile", 1), "null");
    EXPECT_EQ(describe(Value(expression->getMember(u"source", ctx(), nullptr)).get()), "string b");
    EXPECT_EQ(describe(Value(expression->getMember(u"global", ctx(), nullptr)).get()), "boolean true");

    EXPECT_FALSE(Value(expression->setMember(u"lastIndex", jumper.get(), ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(describe(Value(expression->getMember(u"lastIndex", ctx(), nullptr)).get()), "number 0");
    EXPECT_FALSE(Value(constructor->setMember(u"multiline", jumper.get(), ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(run(u"RegExp.multiline"), "boolean false");
}

TEST_F(RegExpObject, ExecWithoutAnArgumentRunsOnTheLastInput) {
    run(u"(new RegExp('z')).test('abc')");
    EXPECT_EQ(run(u"(new RegExp('b')).exec().index"), "number 1");
}

TEST_F(RegExpObject, AnInstanceIsCalledLikeItsExec) {
    EXPECT_EQ(run(u"re = new RegExp('b'); re('abc').index"), "number 1");
}

TEST_F(RegExpObject, QuirkAFaultyPatternMatchesEverythingAsTheEmptyText) {
    EXPECT_EQ(run(u"re = new RegExp('('); re.test('x')"), "boolean true");
    EXPECT_EQ(run(u"re.source"), "string (");
    EXPECT_EQ(run(u"re.exec('x')[0]"), "string");
    EXPECT_EQ(run(u"re.exec('x').index"), "number 0");
    EXPECT_EQ(run(u"re.test('')"), "boolean true");
}

TEST_F(RegExpObject, AnEmptyInputIsNeverMatched) {
    EXPECT_EQ(run(u"(new RegExp('')).test('')"), "boolean false");
}

TEST_F(RegExpObject, Flags) {
    EXPECT_EQ(run(u"(new RegExp('a', 'gq')).global"), "boolean true");
    EXPECT_EQ(run(u"(new RegExp('a', 'gq')).ignoreCase"), "boolean false");
    EXPECT_EQ(run(u"(new RegExp('a', 'xi')).ignoreCase"), "boolean true");
    EXPECT_EQ(run(u"(new RegExp('B', 'i')).exec('abc')[0]"), "string B");
    EXPECT_EQ(run(u"re = new RegExp('a', 'm'); typeof re.multiline"), "string undefined");
    EXPECT_EQ(run(u"lit = /a/; lit.global"), "boolean false");
    EXPECT_EQ(run(u"re.global = true; re.global"), "boolean false");
    EXPECT_EQ(run(u"re.source = 'b'; re.source"), "string a");
}

TEST_F(RegExpObject, FlagsAreLostByAnAssignmentToACell) {
    EXPECT_EQ(run(u"fresh = new RegExp('a', 'g'); fresh.global"), "boolean true");
    EXPECT_EQ(run(u"var declared = new RegExp('a', 'g'); declared.global"), "boolean false");
}

TEST_F(RegExpObject, QuirkMultilineIsKeptAndChangesNothing) {
    EXPECT_EQ(run(u"RegExp.multiline"), "boolean false");
    EXPECT_EQ(run(u"RegExp.multiline = 1"), "number 1");
    EXPECT_EQ(run(u"RegExp.multiline"), "boolean true");
    EXPECT_EQ(run(u"(new RegExp('^b')).exec('a\\nb').index"), "number 2");
    EXPECT_EQ(run(u"RegExp.multiline = false; RegExp.multiline"), "boolean false");
    EXPECT_EQ(run(u"(new RegExp('^b')).exec('a\\nb').index"), "number 2");
}

TEST_F(RegExpObject, TheResultsOfTheLastRun) {
    EXPECT_EQ(statics(), "string <|||>");
    run(u"(new RegExp('(b)')).test('abc')");
    EXPECT_EQ(statics(), "string abc<a|b|c|b>");
    run(u"(new RegExp('^ab')).test('abc')");
    EXPECT_EQ(statics(), "string abc<|ab|c|>");
    run(u"(new RegExp('bc')).test('abc')");
    EXPECT_EQ(statics(), "string abc<a|bc||>");
    run(u"(new RegExp('z')).test('new')");
    EXPECT_EQ(statics(), "string new<|||>");
}

TEST_F(RegExpObject, TheResultsIgnoreWrites) {
    run(u"(new RegExp('b')).test('abc')");
    EXPECT_EQ(run(u"RegExp.input = 'x'"), "null");
    run(u"RegExp.lastMatch = 'x'; RegExp.lastParen = 'x'; RegExp.leftContext = 'x'; RegExp.rightContext = "
        u"'x'");
    EXPECT_EQ(statics(), "string abc<a|b|c|>");
    EXPECT_EQ(run(u"typeof RegExp.input"), "string string");
}

TEST_F(RegExpObject, LastIndexIsKeptAndNotUsed) {
    EXPECT_EQ(run(u"re = new RegExp('b', 'g'); re.lastIndex = 7"), "number 7");
    EXPECT_EQ(run(u"re.exec('abc').index"), "number 1");
    EXPECT_EQ(run(u"re.lastIndex"), "number 7");
    EXPECT_EQ(run(u"re.lastIndex = 2.9; re.lastIndex"), "number 2");
    EXPECT_EQ(run(u"re.lastIndex = -2.9; re.lastIndex"), "number -2");
    EXPECT_EQ(run(u"re.compile('c'); re.lastIndex"), "number 0");
}

TEST_F(RegExpObject, Compile) {
    EXPECT_EQ(run(u"re = new RegExp('b'); re.compile('c', 'i')"), "null");
    EXPECT_EQ(run(u"re.source + re.ignoreCase + re.test('C')"), "string ctruetrue");
    EXPECT_EQ(run(u"re.compile(); re.source + re.ignoreCase"), "string false");
}

TEST_F(RegExpObject, ConstructionWithoutNew) {
    EXPECT_EQ(run(u"RegExp('b').test('abc')"), "boolean true");
    EXPECT_EQ(run(u"RegExp().source"), "string");
}

TEST_F(RegExpObject, ItsTypeIsExpression) {
    EXPECT_EQ(evaluate(u"/ab/")->valueType(ctx(), nullptr), JSValueType::expression);
    BString text;
    evaluate(u"RegExp('a/b', 'g')")->asExpression(text, ctx(), nullptr);
    EXPECT_TRUE(text.equals(u"a/b"));
}

TEST_F(RegExpObject, ALiteralIsOfTheSameConstructor) {
    run(u"lit = /b/; lit.test('abc')");
    EXPECT_EQ(statics(), "string abc<a|b|c|>");
}

TEST_F(RegExpObject, AnotherConstructorKeepsTheResultsAway) {
    run(u"(new RegExp('b')).test('abc'); re = new RegExp('x'); re.constructor = Math");
    EXPECT_EQ(run(u"re.test('xyz')"), "boolean true");
    EXPECT_EQ(statics(), "string abc<a|b|c|>");
    EXPECT_EQ(run(u"re.exec()"), "null");  // no input to fall back to
}

TEST_F(RegExpObject, TooDeepPatternsReport) {
    run(u"s = '('; for (i = 0; i < 20; i++) { s = s + s; }");
    EXPECT_EQ(run(u"re = RegExp(s); re.test('')"), "boolean true");
    EXPECT_EQ(messages(), "stack overflow");
    run(u"s = 'a'; for (i = 0; i < 20; i++) { s = s + s; } re = RegExp(s + '$')");
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(run(u"re.exec(s)"), "null");
    EXPECT_EQ(messages(), "stack overflow");
}

TEST_F(RegExpObject, WithoutMemoryThereIsNoInstance) {
    const Value constructor = global(u"RegExp");
    const Value arguments = list({string(u"a(b)").get()});
    bool succeeded = false;
    for (uint64_t count = 1; !succeeded; ++count) {
        failAllocation(count);
        const Value made(constructor->call(arguments.get(), ctx(), nullptr));
        succeeded = !allocationHasFailed();
        cancelAllocationFailure();
        EXPECT_TRUE(made || !succeeded);
        messages();
    }
}

}  // namespace
}  // namespace quorvelin
