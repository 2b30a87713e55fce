// Trees written back as source text, class by class, byte by byte.
#include <gtest/gtest.h>

#include "foundation/stream.h"
#include "frontend/token.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::regenerated;
using support::statement;

TEST(Regenerate, OperandsOfBinaryOperatorsStandInParentheses) {
    EXPECT_EQ(statement(u"a+b*d"), "(a)+((b)*(d))");
    EXPECT_EQ(statement(u"x=1"), "(x)=(1)");
    EXPECT_EQ(statement(u"a||b"), "(a)||(b)");
    EXPECT_EQ(statement(u"a&&b"), "(a)&&(b)");
    EXPECT_EQ(statement(u"x += 1"), "(x)+=(1)");
}

TEST(Regenerate, MembersCallsAndIndexes) {
    EXPECT_EQ(statement(u"a"), "a");
    EXPECT_EQ(statement(u"a[1]"), "(a)[1]");
    EXPECT_EQ(statement(u"a[1][2].b"), "((a)[1])[2].b");
    EXPECT_EQ(statement(u"a.b(d)"), "a.b(d)");
    EXPECT_EQ(statement(u"a.b"), "a.b");
    EXPECT_EQ(statement(u"f()"), "f()");
    EXPECT_EQ(statement(u"f(1, 2)"), "f(1,2)");
    EXPECT_EQ(statement(u"(1)(2)"), "1(2)");
}

TEST(Regenerate, CommaAndConditional) {
    EXPECT_EQ(statement(u"a, b, c"), "a,b,c");
    EXPECT_EQ(statement(u"a ? b : c"), "(a)?(b):(c)");
}

TEST(Regenerate, PrefixAndPostfixOperators) {
    EXPECT_EQ(statement(u"typeof x"), "typeof(x)");
    EXPECT_EQ(statement(u"new Foo(1)"), "new(Foo(1))");
    EXPECT_EQ(statement(u"- -x"), "-(-(x))");
    EXPECT_EQ(statement(u"!x"), "!(x)");
    EXPECT_EQ(statement(u"a++"), "(a)++");
    EXPECT_EQ(statement(u"--a"), "--(a)");
}

TEST(Regenerate, AbsentOperandIsWrittenAsNone) {
    EXPECT_EQ(statement(u"x = ;"), "(x)=((none))");
    EXPECT_EQ(statement(u"+x"), "((none))+(x)");
    EXPECT_EQ(statement(u"return;"), "return (none)\n");
    EXPECT_EQ(statement(u"()(1)"), "(none)(1)");
}

TEST(Regenerate, NumbersKeepTheirDigits) {
    EXPECT_EQ(statement(u"0x1F"), "0x1F");
    EXPECT_EQ(statement(u"017"), "017");
    EXPECT_EQ(statement(u"1e5"), "1e5");
    EXPECT_EQ(statement(u"0"), "0");
}

TEST(Regenerate, QuirkFractionLosesItsLeadingZero) {
    EXPECT_EQ(statement(u"0.5"), ".5");
}

TEST(Regenerate, WordsForLiterals) {
    EXPECT_EQ(statement(u"true"), "true");
    EXPECT_EQ(statement(u"false"), "false");
    EXPECT_EQ(statement(u"null"), "null");
}

TEST(Regenerate, SingleQuotedStringComesBackBetweenDoubleQuotes) {
    EXPECT_EQ(statement(u"'abc'"), "\"abc\"");
    EXPECT_EQ(statement(u"'say \"hi\"'"), "\"say hi\"");
}

TEST(Regenerate, QuirkNothingInStringsIsEscaped) {
    EXPECT_EQ(statement(uR"("a\"b\nc\\")"), "\"a\"b\nc\\\"");
    EXPECT_EQ(statement(uR"('a\0b')"), "\"a\\u0000b\"");
}

TEST(Regenerate, UnknownLiteralKindIsWrittenAsQuestionMarks) {
    JSLiteralNode literal(0, 0, JSTT_OPERATORS, BString(u"x"));
    EXPECT_EQ(ascii(literal.regenerate()), "???");
    JSLiteralNode character(0, 0, JSTT_CHAR, BString(u"x"));
    EXPECT_EQ(ascii(character.regenerate()), "\"x\"");
    JSLiteralNode damaged(0, 0, -7, BString(u"x"));
    EXPECT_EQ(ascii(damaged.regenerate()), "???");
}

TEST(Regenerate, RegularExpression) {
    EXPECT_EQ(statement(u"x = /a\\/[b]/"), "(x)=(/a\\/[b]/)");
}

TEST(Regenerate, QuirkArrayLiteralHasNoBrackets) {
    EXPECT_EQ(statement(u"[1,2]"), "1,2");
    EXPECT_EQ(statement(u"[]"), "");
    EXPECT_EQ(statement(u"x = [1, [2, 3]]"), "(x)=(1,2,3)");
}

TEST(Regenerate, CommaFollowsEveryRecordThatHasANextOne) {
    JSArgumentsNode list;
    ASSERT_TRUE(list.append(nullptr));
    ASSERT_TRUE(list.append(new JSIdentifierNode(0, 0, Name(u"a"))));
    ASSERT_TRUE(list.append(nullptr));
    ASSERT_TRUE(list.append(nullptr));
    EXPECT_EQ(ascii(list.regenerate()), ",a,,");
}

TEST(Regenerate, Function) {
    EXPECT_EQ(statement(u"function f(a, b) { return a }"), "function f(a,b)\n{return a\n;\n}\n");
    EXPECT_EQ(statement(u"function f() { x }"), "function f()\n{x;\n}\n");
}

TEST(Regenerate, FunctionWithoutParameterListOrBody) {
    EXPECT_EQ(statement(u"function f { }"), "function f((none))\n{(none)}\n");
}

TEST(Regenerate, BodyOfSingleStatementHasNoSemicolon) {
    EXPECT_EQ(statement(u"if(a)b;"), "if(a)\n{b}\n");
    EXPECT_EQ(statement(u"if (a) { b }"), "if(a)\n{b;\n}\n");
}

TEST(Regenerate, If) {
    EXPECT_EQ(statement(u"if (a) { b } else { d }"), "if(a)\n{b;\n}else\n{d;\n}\n");
    EXPECT_EQ(statement(u"if (a) { } else { }"), "if(a)\n{(none)}\n");
    EXPECT_EQ(statement(u"if (a) { } else b"), "if(a)\n{(none)}else\n{b}\n");
    EXPECT_EQ(statement(u"if () b"), "if((none))\n{b}\n");
}

TEST(Regenerate, Loops) {
    EXPECT_EQ(statement(u"for (i = 0; i < 3; i++) f(i)"), "for((i)=(0);(i)<(3);(i)++)\n{f(i)}\n");
    EXPECT_EQ(statement(u"for (;;) ;"), "for((none);(none);(none))\n{(none)}\n");
    EXPECT_EQ(statement(u"for (var i = 0, n; ; ) { }"), "for(var i=0,n;(none);(none))\n{(none)}\n");
    EXPECT_EQ(statement(u"while(x);"), "while(x)\n{(none)}\n");
    EXPECT_EQ(statement(u"while (x) { y }"), "while(x)\n{y;\n}\n");
    EXPECT_EQ(statement(u"do { y } while (x);"), "do{\ny;\n\n}while(x);\n");
    EXPECT_EQ(statement(u"do y; while (x);"), "do{\ny\n}while(x);\n");
    EXPECT_EQ(statement(u"with (o) p"), "with(o)\n{p}\n");
}

TEST(Regenerate, QuirkForInHasLineFeedBeforeItsClosingBrace) {
    JSForInNode full(0, 0, Name(u"i"), new JSIdentifierNode(0, 0, Name(u"o")),
                     new JSIdentifierNode(0, 0, Name(u"b")));
    EXPECT_EQ(ascii(full.regenerate()), "for(i in o)\n{b\n}\n");
    JSForInNode empty;
    EXPECT_EQ(ascii(empty.regenerate()), "for( in (none))\n{(none)\n}\n");
}

TEST(Regenerate, QuirkJumpsAndDoGetTwoSemicolonsInAList) {
    EXPECT_EQ(statement(u"break;"), "break ;\n");
    EXPECT_EQ(statement(u"break out;"), "break out;\n");
    EXPECT_EQ(statement(u"continue;"), "continue ;\n");
    EXPECT_EQ(statement(u"continue out;"), "continue out;\n");
    EXPECT_EQ(statement(u"while (x) { break; }"), "while(x)\n{break ;\n;\n}\n");
    EXPECT_EQ(statement(u"{ do x; while (y); }"), "do{\nx\n}while(y);\n;\n");
}

TEST(Regenerate, ReturnHasLineFeedBeforeTheSemicolonOfTheList) {
    EXPECT_EQ(statement(u"{ return 1; }"), "return 1\n;\n");
}

TEST(Regenerate, Switch) {
    EXPECT_EQ(statement(u"switch (x) { case 1: a; b; case 2: default: d }"),
              "switch(x)\n{\n"
              "\ncase (1):\na;\nb;\n\n"
              "\ncase (2):\n(none)\n"
              "\ncase ((default)):\nd;\n\n"
              "}\n");
    EXPECT_EQ(statement(u"switch (x) { }"), "switch(x)\n{\n}\n");
}

TEST(Regenerate, Var) {
    EXPECT_EQ(statement(u"var a, b = 1, c = b"), "var a,b=1,c=b");
    EXPECT_EQ(statement(u"var ;"), "var ");
}

TEST(Regenerate, Label) {
    EXPECT_EQ(statement(u"a: b: c"), "a:b:c");
    EXPECT_EQ(statement(u"a: ;"), "a:");
    EXPECT_EQ(statement(u"a: while (x) { }"), "a:while(x)\n{(none)}\n");
}

TEST(Regenerate, EmptyProgramIsEmptyText) {
    EXPECT_EQ(regenerated(u""), "");
    EXPECT_EQ(regenerated(u" \n;;\n"), "");
}

TEST(Regenerate, ProgramIsAListOfLists) {
    EXPECT_EQ(regenerated(u"a"), "a;\n;\n");
    EXPECT_EQ(regenerated(u"a\nb"), "a;\nb;\n;\n");
}

TEST(Regenerate, ErrorNodeIsItsMessage) {
    EXPECT_EQ(regenerated(u"x y"), "Error(Ln 1, Col 4): need ;");
}

TEST(Regenerate, ChangesNothingAndCanBeRepeated) {
    const Owned<JSNode> root = support::parse(u"if (a) { b(1, [2]) } else c = 'd'");
    const std::string first = ascii(root->regenerate());
    EXPECT_EQ(ascii(root->regenerate()), first);
}

TEST(Regenerate, NamesMayHoldAnyLetters) {
    EXPECT_EQ(statement(u"\u00e4\u0416 = $_1"), "(\\u00E4\\u0416)=($_1)");
}

}  // namespace
}  // namespace quorvelin
