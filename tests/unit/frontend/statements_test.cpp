// The statements: what each expects, what it makes, and how separators work.
#include <gtest/gtest.h>

#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::outline;
using support::outlineOf;
using support::parse;
using support::regenerated;
using support::syntaxError;

std::string program(std::u16string_view script) {
    const Owned<JSNode> root = parse(script);
    return outline(root.get());
}

// ---- programs, lists, separators ----

TEST(Statements, EmptyTextIsAnEmptyList) {
    EXPECT_EQ(program(u""), "StatementList([])");
    EXPECT_EQ(program(u"\n\n"), "StatementList([])");
    EXPECT_EQ(program(u";"), "StatementList([])");
    EXPECT_EQ(program(u"// nothing"), "StatementList([])");
}

TEST(Statements, ProgramHoldsLists) {
    EXPECT_EQ(program(u"a;b"), "StatementList([StatementList([Identifier(a) Identifier(b)])])");
}

TEST(Statements, LineEndSeparates) {
    EXPECT_EQ(program(u"x\ny\n"), "StatementList([StatementList([Identifier(x) Identifier(y)])])");
    EXPECT_EQ(syntaxError(u"x y"), "Error(Ln 1, Col 4): need ;");
}

TEST(Statements, LastStatementNeedsNoSeparator) {
    EXPECT_EQ(syntaxError(u"a"), "");
}

TEST(Statements, EmptyStatementsVanish) {
    EXPECT_EQ(program(u";;a;;b;;"), "StatementList([StatementList([Identifier(a) Identifier(b)])])");
}

TEST(Statements, LeftOverTextIsAnError) {
    EXPECT_EQ(syntaxError(u"}"), "Error(Ln 1, Col 2): unexpected char");
    EXPECT_EQ(syntaxError(u"a; }"), "Error(Ln 1, Col 5): unexpected char");
    EXPECT_EQ(syntaxError(u")"), "Error(Ln 1, Col 2): unexpected char");
    for (const char* word : {"case", "else", "try", "throw", "class", "default", "import", "catch"}) {
        const std::string text(word);
        EXPECT_EQ(syntaxError(std::u16string(text.begin(), text.end())),
                  "Error(Ln 1, Col " + std::to_string(text.size() + 1) + "): unexpected char")
            << word;
    }
}

TEST(Statements, ErrorInTheFirstStatementOfAList) {
    EXPECT_EQ(syntaxError(u"{ a b }"), "Error(Ln 1, Col 7): need ;");
    EXPECT_EQ(syntaxError(u"a b"), "Error(Ln 1, Col 4): need ;");
}

// ---- blocks ----

TEST(Statements, BlockIsItsList) {
    EXPECT_EQ(program(u"{ a; b }"),
              "StatementList([StatementList([StatementList([Identifier(a) Identifier(b)])])])");
}

TEST(Statements, QuirkEmptyBlockEndsTheList) {
    EXPECT_EQ(syntaxError(u"{ } x;"), "Error(Ln 1, Col 7): unexpected char");
    EXPECT_EQ(syntaxError(u"{ }"), "");
    EXPECT_EQ(syntaxError(u"a; { } b"), "");
    EXPECT_EQ(program(u"a; { } b"),
              "StatementList([StatementList([Identifier(a)]) StatementList([Identifier(b)])])");
}

TEST(Statements, UnclosedBlock) {
    EXPECT_EQ(syntaxError(u"{ a"), "Error(Ln 1, Col 4): need }");
    EXPECT_EQ(syntaxError(u"{"), "Error(Ln 1, Col 2): need }");
    EXPECT_EQ(syntaxError(u"{ a )"), "Error(Ln 1, Col 6): need ;");
}

TEST(Statements, ClosingBraceEndsAStatement) {
    EXPECT_EQ(syntaxError(u"{ a; b }"), "");
}

// ---- function ----

TEST(Statements, Function) {
    EXPECT_EQ(outlineOf(u"function f(a, b) { c }"),
              "Function(Parameters([a b]) StatementList([Identifier(c)]) f)");
    EXPECT_EQ(outlineOf(u"function f() { }"), "Function(Parameters([]) - f)");
    EXPECT_EQ(outlineOf(u"function\nf\n(\na\n)\n{\n}"), "Function(Parameters([a]) - f)");
}

TEST(Statements, ParameterListCanBeLeftOut) {
    EXPECT_EQ(outlineOf(u"function f { }"), "Function(- - f)");
}

TEST(Statements, TrailingCommaInParametersIsAccepted) {
    EXPECT_EQ(outlineOf(u"function f(a, b,) { }"), "Function(Parameters([a b]) - f)");
}

TEST(Statements, FunctionNeedsNoSeparator) {
    EXPECT_EQ(program(u"function f() { } a"),
              "StatementList([StatementList([Function(Parameters([]) - f) Identifier(a)])])");
}

TEST(Statements, FunctionErrors) {
    EXPECT_EQ(syntaxError(u"function (a) { }"), "Error(Ln 1, Col 11): need identificator");
    EXPECT_EQ(syntaxError(u"function if() { }"), "Error(Ln 1, Col 13): need identificator");
    EXPECT_EQ(syntaxError(u"function f(a"), "Error(Ln 1, Col 13): need )");
    EXPECT_EQ(syntaxError(u"function f(,) { }"), "Error(Ln 1, Col 13): need )");
    EXPECT_EQ(syntaxError(u"function f(1) { }"), "Error(Ln 1, Col 14): need )");
    EXPECT_EQ(syntaxError(u"function f(a) b"), "Error(Ln 1, Col 16): need {");
    EXPECT_EQ(syntaxError(u"function f(a) {"), "Error(Ln 1, Col 16): need }");
    EXPECT_EQ(syntaxError(u"function f(a) { b )"), "Error(Ln 1, Col 20): need ;");
}

// ---- for ----

TEST(Statements, For) {
    EXPECT_EQ(outlineOf(u"for (a; b; c) d"), "For(Identifier(a) Identifier(b) Identifier(c) Identifier(d))");
    EXPECT_EQ(outlineOf(u"for (;;) ;"), "For(- - - -)");
    EXPECT_EQ(outlineOf(u"for (;;) { }"), "For(- - - -)");
    EXPECT_EQ(outlineOf(u"for (var i = 0; ; ) a"), "For(Var([i=Literal(9 0)]) - - Identifier(a))");
}

TEST(Statements, ForAcceptsVarInItsThirdPart) {
    EXPECT_EQ(outlineOf(u"for (;; var i = 1) a"), "For(- - Var([i=Literal(5 1)]) Identifier(a))");
}

TEST(Statements, QuirkLineEndSeparatesThePartsOfFor) {
    EXPECT_EQ(outlineOf(u"for (a\nb\nc) d"), "For(Identifier(a) Identifier(b) Identifier(c) Identifier(d))");
}

TEST(Statements, ForLeavesTheSemicolonBehindItToTheList) {
    EXPECT_EQ(program(u"for (;;) ; a"), "StatementList([StatementList([For(- - - -) Identifier(a)])])");
}

TEST(Statements, QuirkForInCannotBeWritten) {
    EXPECT_EQ(syntaxError(u"for (x in y) z"), "Error(Ln 1, Col 11): need ;");
    EXPECT_EQ(syntaxError(u"for (var x in y) z"), "Error(Ln 1, Col 15): need ;");
}

TEST(Statements, ForErrors) {
    EXPECT_EQ(syntaxError(u"for a"), "Error(Ln 1, Col 6): need (");
    EXPECT_EQ(syntaxError(u"for (a) b"), "Error(Ln 1, Col 8): need ;");
    EXPECT_EQ(syntaxError(u"for (a; b) c"), "Error(Ln 1, Col 11): need ;");
    EXPECT_EQ(syntaxError(u"for (a; b; c; d) e"), "Error(Ln 1, Col 14): need )");
    EXPECT_EQ(syntaxError(u"for (;;"), "Error(Ln 1, Col 8): need )");
    EXPECT_EQ(syntaxError(u"for (; var i; ) a"), "Error(Ln 1, Col 12): need ;");
}

// ---- if ----

TEST(Statements, If) {
    EXPECT_EQ(outlineOf(u"if (a) b"), "If(Identifier(a) Identifier(b) -)");
    EXPECT_EQ(outlineOf(u"if (a) b; else c"), "If(Identifier(a) Identifier(b) Identifier(c))");
    EXPECT_EQ(outlineOf(u"if (a) { b } else { c }"),
              "If(Identifier(a) StatementList([Identifier(b)]) StatementList([Identifier(c)]))");
    EXPECT_EQ(outlineOf(u"if (a) { } else { }"), "If(Identifier(a) - -)");
    EXPECT_EQ(outlineOf(u"if () b"), "If(- Identifier(b) -)");
}

TEST(Statements, LineEndsAroundElse) {
    EXPECT_EQ(outlineOf(u"if (a)\nb\nelse\nc"), "If(Identifier(a) Identifier(b) Identifier(c))");
    EXPECT_EQ(outlineOf(u"if (a) { b }\nelse\n{ c }"),
              "If(Identifier(a) StatementList([Identifier(b)]) StatementList([Identifier(c)]))");
}

TEST(Statements, ElseBelongsToTheNearestIf) {
    EXPECT_EQ(outlineOf(u"if (a) if (b) c; else d"),
              "If(Identifier(a) If(Identifier(b) Identifier(c) Identifier(d)) -)");
    EXPECT_EQ(outlineOf(u"if (a) b; else if (c) d; else e"),
              "If(Identifier(a) Identifier(b) If(Identifier(c) Identifier(d) Identifier(e)))");
}

TEST(Statements, QuirkEmptyStatementHidesTheElse) {
    EXPECT_EQ(syntaxError(u"if (a) ; else b"), "Error(Ln 1, Col 15): unexpected char");
    EXPECT_EQ(outlineOf(u"if (a) ;"), "If(Identifier(a) - -)");
}

TEST(Statements, IfErrors) {
    EXPECT_EQ(syntaxError(u"if a"), "Error(Ln 1, Col 5): need (");
    EXPECT_EQ(syntaxError(u"if (a"), "Error(Ln 1, Col 6): need )");
    EXPECT_EQ(syntaxError(u"if (a b) c"), "Error(Ln 1, Col 9): need )");
    EXPECT_EQ(syntaxError(u"if (a) b else c"), "Error(Ln 1, Col 15): need ;");
}

// ---- while, with, do ----

TEST(Statements, WhileAndWith) {
    EXPECT_EQ(outlineOf(u"while (a) b"), "While(Identifier(a) Identifier(b))");
    EXPECT_EQ(outlineOf(u"while (a) ;"), "While(Identifier(a) -)");
    EXPECT_EQ(outlineOf(u"while () { }"), "While(- -)");
    EXPECT_EQ(outlineOf(u"with (a) b"), "With(Identifier(a) Identifier(b))");
    EXPECT_EQ(outlineOf(u"with () b"), "With(- Identifier(b))");
    EXPECT_EQ(syntaxError(u"while a"), "Error(Ln 1, Col 8): need (");
    EXPECT_EQ(syntaxError(u"while (a"), "Error(Ln 1, Col 9): need )");
    EXPECT_EQ(syntaxError(u"with a"), "Error(Ln 1, Col 7): need (");
    EXPECT_EQ(syntaxError(u"with (a"), "Error(Ln 1, Col 8): need )");
}

TEST(Statements, Do) {
    EXPECT_EQ(outlineOf(u"do { a } while (b);"), "Do(StatementList([Identifier(a)]) Identifier(b))");
    EXPECT_EQ(outlineOf(u"do a; while (b)\nc"), "Do(Identifier(a) Identifier(b))");
    EXPECT_EQ(outlineOf(u"do\na\nwhile\n(b);"), "Do(Identifier(a) Identifier(b))");
    EXPECT_EQ(outlineOf(u"do { } while ();"), "Do(- -)");
}

TEST(Statements, QuirkDoNeedsASeparatorAlsoAtTheEnd) {
    EXPECT_EQ(syntaxError(u"do a; while (b)"), "Error(Ln 1, Col 16): need ;");
    EXPECT_EQ(syntaxError(u"{ do a; while (b) }"), "Error(Ln 1, Col 20): need ;");
}

TEST(Statements, DoErrors) {
    EXPECT_EQ(syntaxError(u"do a; b"), "Error(Ln 1, Col 8): need while");
    EXPECT_EQ(syntaxError(u"do ; while (a);"), "Error(Ln 1, Col 5): need while");
    EXPECT_EQ(syntaxError(u"do a; while b"), "Error(Ln 1, Col 14): need (");
    EXPECT_EQ(syntaxError(u"do a; while (b"), "Error(Ln 1, Col 15): need )");
}

// ---- return, break, continue ----

TEST(Statements, Return) {
    EXPECT_EQ(outlineOf(u"return a;"), "Return(Identifier(a))");
    EXPECT_EQ(outlineOf(u"return;"), "Return(-)");
    EXPECT_EQ(outlineOf(u"return a, b;"), "Return(Comma(Identifier(a) Identifier(b)))");
    EXPECT_EQ(outlineOf(u"{ return a }"), "StatementList([Return(Identifier(a))])");
    EXPECT_EQ(outlineOf(u"{ return }"), "StatementList([Return(-)])");
}

TEST(Statements, LineEndDirectlyBehindReturnEndsIt) {
    EXPECT_EQ(program(u"return\na"), "StatementList([StatementList([Return(-) Identifier(a)])])");
    EXPECT_EQ(outlineOf(u"return\n-a;"), "Return(Unary(- Identifier(a)))");  // that line end vanishes
}

TEST(Statements, QuirkReturnIsNotEndedByTheEndOfTheText) {
    EXPECT_EQ(syntaxError(u"return a"), "Error(Ln 1, Col 9): need ;");
    EXPECT_EQ(syntaxError(u"return"), "Error(Ln 1, Col 7): need ;");
    EXPECT_EQ(syntaxError(u"return a\n"), "Error(Ln 2, Col 0): need ;");
}

TEST(Statements, BreakAndContinue) {
    EXPECT_EQ(outlineOf(u"break;"), "Break()");
    EXPECT_EQ(outlineOf(u"break a;"), "Break(a)");
    EXPECT_EQ(outlineOf(u"continue;"), "Continue()");
    EXPECT_EQ(outlineOf(u"continue a\nb"), "Continue(a)");
}

TEST(Statements, QuirkJumpsAreNotEndedByABraceNorTheEndOfTheText) {
    EXPECT_EQ(syntaxError(u"{break}"), "Error(Ln 1, Col 8): need ;");
    EXPECT_EQ(syntaxError(u"break"), "Error(Ln 1, Col 6): need ;");
    EXPECT_EQ(syntaxError(u"{ continue a }"), "Error(Ln 1, Col 15): need ;");
    EXPECT_EQ(syntaxError(u"break 1;"), "Error(Ln 1, Col 9): need ;");
}

// ---- switch ----

TEST(Statements, Switch) {
    EXPECT_EQ(
        outlineOf(u"switch (x) { case 1: a; b; case 2: default: c }"),
        "Switch(Identifier(x) [Literal(5 1):StatementList([Identifier(a) Identifier(b)]) Literal(5 2):- "
        "-:StatementList([Identifier(c)])])");
    EXPECT_EQ(outlineOf(u"switch (x) { }"), "Switch(Identifier(x) [])");
    EXPECT_EQ(outlineOf(u"switch (x)\n{\ncase 1:\na\ncase 2:\nb\n}"),
              "Switch(Identifier(x) [Literal(5 1):StatementList([Identifier(a)]) "
              "Literal(5 2):StatementList([Identifier(b)])])");
}

TEST(Statements, DefaultMayStandAnywhereOnce) {
    EXPECT_EQ(outlineOf(u"switch (x) { default: case 1: y }"),
              "Switch(Identifier(x) [-:- Literal(5 1):StatementList([Identifier(y)])])");
    EXPECT_EQ(syntaxError(u"switch (x) { default: default: }"),
              "Error(Ln 1, Col 31): don't truely use no label case or default");
}

TEST(Statements, QuirkCaseWithoutTestCountsAsDefault) {
    EXPECT_EQ(outlineOf(u"switch (x) { case : a }"),
              "Switch(Identifier(x) [-:StatementList([Identifier(a)])])");
    EXPECT_EQ(syntaxError(u"switch (x) { case : default: }"),
              "Error(Ln 1, Col 29): don't truely use no label case or default");
    EXPECT_EQ(syntaxError(u"switch (x) { default: case : }"),
              "Error(Ln 1, Col 29): don't truely use no label case or default");
}

TEST(Statements, QuirkStatementsBeforeTheFirstCaseAreDropped) {
    EXPECT_EQ(outlineOf(u"switch (x) { a; b; case 1: c }"),
              "Switch(Identifier(x) [Literal(5 1):StatementList([Identifier(c)])])");
}

TEST(Statements, QuirkLaterListOfAClauseReplacesTheEarlierOne) {
    // The empty block ends the first list.
    EXPECT_EQ(outlineOf(u"switch (x) { case 1: a; { } b }"),
              "Switch(Identifier(x) [Literal(5 1):StatementList([Identifier(b)])])");
}

TEST(Statements, SwitchErrors) {
    EXPECT_EQ(syntaxError(u"switch x"), "Error(Ln 1, Col 9): need (");
    EXPECT_EQ(syntaxError(u"switch ()"), "Error(Ln 1, Col 10): need expression");
    EXPECT_EQ(syntaxError(u"switch (x"), "Error(Ln 1, Col 10): need )");
    EXPECT_EQ(syntaxError(u"switch (x) y"), "Error(Ln 1, Col 13): need {");
    EXPECT_EQ(syntaxError(u"switch (x) { case 1 y }"), "Error(Ln 1, Col 23): need :");
    EXPECT_EQ(syntaxError(u"switch (x) { case 1? }"), "Error(Ln 1, Col 23): need :");
    EXPECT_EQ(syntaxError(u"switch (x) { default y }"), "Error(Ln 1, Col 24): need :");
    EXPECT_EQ(syntaxError(u"switch (x) { case 1: ; }"), "Error(Ln 1, Col 25): unexpected operator");
    EXPECT_EQ(syntaxError(u"switch (x) { case 1: a"), "Error(Ln 1, Col 23): unexpected operator");
    EXPECT_EQ(syntaxError(u"switch (x) { case 1: a b }"), "Error(Ln 1, Col 26): need ;");
}

// ---- var ----

TEST(Statements, Var) {
    EXPECT_EQ(outlineOf(u"var a"), "Var([a=-])");
    EXPECT_EQ(outlineOf(u"var a, b = 1, c"), "Var([a=- b=Literal(5 1) c=-])");
    EXPECT_EQ(outlineOf(u"var a = b = 1"), "Var([a=Assign(= Identifier(b) Literal(5 1))])");
    EXPECT_EQ(outlineOf(u"var a = -1"), "Var([a=Unary(- Literal(5 1))])");
    EXPECT_EQ(outlineOf(u"var\na\n,\nb"), "Var([a=- b=-])");
    EXPECT_EQ(outlineOf(u"var a = ;"), "Var([a=-])");
}

TEST(Statements, VarMayBeEmptyOrEndInAComma) {
    EXPECT_EQ(outlineOf(u"var ;"), "Var([])");
    EXPECT_EQ(outlineOf(u"var a, ;"), "Var([a=-])");
    EXPECT_EQ(syntaxError(u"var a, 1"), "Error(Ln 1, Col 9): need ;");
    EXPECT_EQ(syntaxError(u"var if"), "Error(Ln 1, Col 7): need ;");
}

TEST(Statements, VarErrors) {
    EXPECT_EQ(syntaxError(u"var a = (b"), "Error(Ln 1, Col 11): need )");
    EXPECT_EQ(syntaxError(u"var a b"), "Error(Ln 1, Col 8): need ;");
    EXPECT_EQ(syntaxError(u"var a += 1"), "Error(Ln 1, Col 10): need ;");
}

TEST(Statements, QuirkRunBehindAVarNameMayStartWithTheEqualSign) {
    EXPECT_EQ(outlineOf(u"var a == b"), "Var([a=Assign(= - Identifier(b))])");
}

// ---- labels and expression statements ----

TEST(Statements, Labels) {
    EXPECT_EQ(outlineOf(u"a: b"), "Label(a Identifier(b))");
    EXPECT_EQ(outlineOf(u"a: b: c"), "Label(a Label(b Identifier(c)))");
    EXPECT_EQ(outlineOf(u"a: { b }"), "Label(a StatementList([Identifier(b)]))");
    EXPECT_EQ(outlineOf(u"a: while (b) c"), "Label(a While(Identifier(b) Identifier(c)))");
    EXPECT_EQ(outlineOf(u"a:\n b"), "Label(a Identifier(b))");
    EXPECT_EQ(outlineOf(u"a: ;"), "Label(a -)");
    EXPECT_EQ(outlineOf(u"a:"), "Label(a -)");
}

TEST(Statements, LabelNeedsNoSeparatorBehindItsStatement) {
    EXPECT_EQ(program(u"a: { b } c"),
              "StatementList([StatementList([Label(a StatementList([Identifier(b)])) Identifier(c)])])");
}

TEST(Statements, OnlyASimpleNameIsALabel) {
    EXPECT_EQ(syntaxError(u"a.b: c"), "Error(Ln 1, Col 5): need ;");
    EXPECT_EQ(syntaxError(u"\"x\" : y"), "Error(Ln 1, Col 6): need ;");
    EXPECT_EQ(syntaxError(u"a + b: c"), "Error(Ln 1, Col 7): need ;");
}

TEST(Statements, QuirkNameInParenthesesIsALabelToo) {
    EXPECT_EQ(outlineOf(u"(a): b"), "Label(a Identifier(b))");
}

TEST(Statements, ErrorInALabelledStatement) {
    EXPECT_EQ(syntaxError(u"a: b c"), "Error(Ln 1, Col 7): need ;");
}

TEST(Statements, SemicolonIsNeverPassedOver) {
    EXPECT_EQ(outlineOf(u"a = \n\n b"), "Assign(= Identifier(a) Identifier(b))");
    EXPECT_EQ(regenerated(u"a = ; b"), "(a)=((none));\nb;\n;\n");
}

TEST(Statements, FirstErrorEndsTheParse) {
    EXPECT_EQ(syntaxError(u"a b\nc d\n("), "Error(Ln 2, Col 1): need ;");
}

TEST(Statements, TreeOutlivesTheParserAndItsText) {
    Owned<JSNode> root;
    {
        std::u16string script = u"function f(a) { return a + 'text' }";
        root = parse(script);
        script.assign(script.size(), u'#');
    }
    EXPECT_EQ(
        outline(root.get()),
        "StatementList([StatementList([Function(Parameters([a]) StatementList([Return(Binary(+ Identifier(a) "
        "Literal(3 text)))]) f)])])");
}

}  // namespace
}  // namespace quorvelin
