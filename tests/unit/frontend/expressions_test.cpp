// The shape of the tree that expressions make. A binary node is outlined as its operator and its two sides.
#include <gtest/gtest.h>

#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::outlineOf;
using support::statement;
using support::syntaxError;

// ---- grouping ----

TEST(Expressions, LeftAssociativeLevels) {
    EXPECT_EQ(statement(u"a-b-c"), "((a)-(b))-(c)");
    EXPECT_EQ(statement(u"a/b*c%d"), "(((a)/(b))*(c))%(d)");
    EXPECT_EQ(statement(u"a<<b>>c"), "((a)<<(b))>>(c)");
    EXPECT_EQ(statement(u"a|b|c"), "((a)|(b))|(c)");
    EXPECT_EQ(statement(u"a^b^c"), "((a)^(b))^(c)");
}

TEST(Expressions, QuirkBitAndEqualityAndComparisonGroupToTheRight) {
    EXPECT_EQ(statement(u"a&b&c"), "(a)&((b)&(c))");
    EXPECT_EQ(statement(u"a==b==c"), "(a)==((b)==(c))");
    EXPECT_EQ(statement(u"a!==b===c!=d"), "(a)!==((b)===((c)!=(d)))");
    EXPECT_EQ(statement(u"a<b<c"), "(a)<((b)<(c))");
    EXPECT_EQ(statement(u"a<=b>=c>d"), "(a)<=((b)>=((c)>(d)))");
}

TEST(Expressions, LogicalOperatorsGroupToTheRight) {
    EXPECT_EQ(statement(u"a||b||c"), "(a)||((b)||(c))");
    EXPECT_EQ(statement(u"a&&b&&c"), "(a)&&((b)&&(c))");
    EXPECT_EQ(outlineOf(u"a||b&&c"),
              "LogicalOr(|| Identifier(a) LogicalAnd(&& Identifier(b) Identifier(c)))");
}

TEST(Expressions, CommaAndAssignmentGroupToTheRight) {
    EXPECT_EQ(outlineOf(u"a,b,c"), "Comma(Identifier(a) Comma(Identifier(b) Identifier(c)))");
    EXPECT_EQ(outlineOf(u"a=b+=c"), "Assign(= Identifier(a) Assign(+= Identifier(b) Identifier(c)))");
}

TEST(Expressions, Precedence) {
    EXPECT_EQ(statement(u"a,b=c?d:e"), "a,(b)=((c)?(d):(e))");
    EXPECT_EQ(statement(u"a||b&&c|d^e&f==g<h<<i+j*-k"),
              "(a)||((b)&&((c)|((d)^((e)&((f)==((g)<((h)<<((i)+((j)*(-(k)))))))))))");
    EXPECT_EQ(statement(u"(a+b)*c"), "((a)+(b))*(c)");
    EXPECT_EQ(statement(u"a*b+c"), "((a)*(b))+(c)");
}

TEST(Expressions, ConditionalTakesAssignmentsOnBothSides) {
    EXPECT_EQ(statement(u"a?b:c?d:e"), "(a)?(b):((c)?(d):(e))");
    EXPECT_EQ(statement(u"a?b?c:d:e"), "(a)?((b)?(c):(d)):(e)");
    EXPECT_EQ(statement(u"a?b=1:c=2"), "(a)?((b)=(1)):((c)=(2))");
}

TEST(Expressions, ConditionalCanBeAnAssignmentsTarget) {
    // The branch behind the colon is an assignment already, so a target needs its parentheses.
    EXPECT_EQ(statement(u"(a?b:c)=1"), "((a)?(b):(c))=(1)");
}

TEST(Expressions, ConditionalWithoutColon) {
    EXPECT_EQ(syntaxError(u"a ? b"), "Error(Ln 1, Col 6): need :");
    EXPECT_EQ(syntaxError(u"a ? b ;"), "Error(Ln 1, Col 8): need :");
    EXPECT_EQ(syntaxError(u"(a ? b , c)"), "Error(Ln 1, Col 9): need :");
    EXPECT_EQ(syntaxError(u"a ? b , c : d"), "Error(Ln 1, Col 8): need :");
}

TEST(Expressions, AnyExpressionMayStandLeftOfAnAssignment) {
    EXPECT_EQ(statement(u"1=2"), "(1)=(2)");
    EXPECT_EQ(statement(u"a+b=c"), "((a)+(b))=(c)");
    EXPECT_EQ(statement(u"f()=a++=b"), "(f())=(((a)++)=(b))");
}

// ---- operator runs ----

TEST(Expressions, RunsAreSplitFromTheFront) {
    EXPECT_EQ(statement(u"a=-1"), "(a)=(-(1))");
    EXPECT_EQ(statement(u"x=!y"), "(x)=(!(y))");
    EXPECT_EQ(statement(u"a<-1"), "(a)<(-(1))");
    EXPECT_EQ(statement(u"a*=-b"), "(a)*=(-(b))");
    EXPECT_EQ(statement(u"a=!--b"), "(a)=(!(--(b)))");
    EXPECT_EQ(statement(u"a&&!b"), "(a)&&(!(b))");
    EXPECT_EQ(statement(u"a===-b"), "(a)===(-(b))");
}

TEST(Expressions, PlusRuns) {
    EXPECT_EQ(statement(u"a+++b"), "((a)++)+(b)");
    EXPECT_EQ(statement(u"a+ ++b"), "(a)+(++(b))");
    EXPECT_EQ(statement(u"a---b"), "((a)--)-(b)");
    EXPECT_EQ(statement(u"a++ ++"), "((a)++)++");
    EXPECT_EQ(statement(u"a+-+b"), "((a)+(-((none))))+(b)");
}

TEST(Expressions, CompoundAssignmentsThatCanBeWritten) {
    for (const char* op : {"+=", "-=", "*=", "/=", "%="}) {
        const std::string source = std::string("a ") + op + " b";
        EXPECT_EQ(statement(std::u16string(source.begin(), source.end())), std::string("(a)") + op + "(b)");
    }
}

TEST(Expressions, QuirkUnsignedShiftFallsApart) {
    EXPECT_EQ(outlineOf(u"a >>> b"), "Binary(> Binary(>> Identifier(a) -) Identifier(b))");
}

TEST(Expressions, QuirkUnsignedShiftAssignmentFallsApart) {
    // ">>" is taken, as ">" follows it; what is left is ">=".
    EXPECT_EQ(outlineOf(u"a >>>= b"), "Binary(>= Binary(>> Identifier(a) -) Identifier(b))");
}

TEST(Expressions, QuirkShiftAssignmentsFallApart) {
    EXPECT_EQ(outlineOf(u"a >>= 2"), "Binary(> Identifier(a) Binary(>= - Literal(5 2)))");
    EXPECT_EQ(outlineOf(u"a <<= 2"), "Binary(< Identifier(a) Binary(<= - Literal(5 2)))");
}

TEST(Expressions, QuirkBitAssignmentsFallApart) {
    EXPECT_EQ(outlineOf(u"a &= b"), "Assign(= Binary(& Identifier(a) -) Identifier(b))");
    EXPECT_EQ(outlineOf(u"a |= b"), "Assign(= Binary(| Identifier(a) -) Identifier(b))");
    EXPECT_EQ(outlineOf(u"a ^= b"), "Assign(= Binary(^ Identifier(a) -) Identifier(b))");
}

TEST(Expressions, QuirkThereIsNoUnaryPlus) {
    EXPECT_EQ(outlineOf(u"+1"), "Binary(+ - Literal(5 1))");
    EXPECT_EQ(outlineOf(u"a = +1"), "Assign(= Identifier(a) Binary(+ - Literal(5 1)))");
}

TEST(Expressions, MissingOperandIsAnAbsentChild) {
    EXPECT_EQ(outlineOf(u"1 + ;"), "Binary(+ Literal(5 1) -)");
    EXPECT_EQ(outlineOf(u"x = ;"), "Assign(= Identifier(x) -)");
    EXPECT_EQ(outlineOf(u"a, ;"), "Comma(Identifier(a) -)");
    EXPECT_EQ(outlineOf(u"!;"), "Unary(! -)");
    EXPECT_EQ(outlineOf(u"? :"), "Conditional(- - -)");
    EXPECT_EQ(outlineOf(u"++;"), "Unary(++ -)");
    EXPECT_EQ(outlineOf(u"||"), "LogicalOr(|| - -)");
    EXPECT_EQ(outlineOf(u"new"), "Unary(new -)");
    EXPECT_EQ(outlineOf(u".b"), "Member(- b)");
}

// ---- prefix and postfix ----

TEST(Expressions, UnaryWords) {
    EXPECT_EQ(outlineOf(u"typeof a"), "Unary(typeof Identifier(a))");
    EXPECT_EQ(outlineOf(u"delete a.b"), "Unary(delete Member(Identifier(a) b))");
    EXPECT_EQ(outlineOf(u"void 0"), "Unary(void Literal(9 0))");
    EXPECT_EQ(outlineOf(u"new Foo(1)"), "Unary(new Call(Identifier(Foo) Arguments([Literal(5 1)])))");
    EXPECT_EQ(outlineOf(u"new new a"), "Unary(new Unary(new Identifier(a)))");
    EXPECT_EQ(outlineOf(u"new a.b()"), "Unary(new MemberCall(Identifier(a) Arguments([]) b))");
    EXPECT_EQ(statement(u"typeof a + b"), "(typeof(a))+(b)");
}

TEST(Expressions, UnarySymbols) {
    EXPECT_EQ(outlineOf(u"~a"), "Unary(~ Identifier(a))");
    EXPECT_EQ(outlineOf(u"-~!a"), "Unary(- Unary(~ Unary(! Identifier(a))))");
    EXPECT_EQ(outlineOf(u"--a"), "Unary(-- Identifier(a))");
    EXPECT_EQ(outlineOf(u"- -a"), "Unary(- Unary(- Identifier(a)))");
}

TEST(Expressions, UnaryOperandGoesOnOverALineEnd) {
    EXPECT_EQ(statement(u"a = typeof\nb"), "(a)=(typeof(b))");
    EXPECT_EQ(statement(u"a +\nb"), "(a)+(b)");
}

TEST(Expressions, PostfixMayStandOnTheNextLineWithOneSignOnly) {
    EXPECT_EQ(support::regenerated(u"a\n++\nb"), "a;\n++(b);\n;\n");
    EXPECT_EQ(statement(u"a++\n"), "(a)++");
}

TEST(Expressions, PostfixBindsTighterThanPrefix) {
    EXPECT_EQ(statement(u"-a++"), "-((a)++)");
}

// ---- chains ----

TEST(Expressions, Chains) {
    EXPECT_EQ(outlineOf(u"a.b.c"), "Member(Member(Identifier(a) b) c)");
    EXPECT_EQ(outlineOf(u"a.b(1).c"), "Member(MemberCall(Identifier(a) Arguments([Literal(5 1)]) b) c)");
    EXPECT_EQ(outlineOf(u"a(1)(2)"),
              "Call(Call(Identifier(a) Arguments([Literal(5 1)])) Arguments([Literal(5 2)]))");
    EXPECT_EQ(outlineOf(u"(1)(2)"), "Call(Literal(5 1) Arguments([Literal(5 2)]))");
    EXPECT_EQ(outlineOf(u"a[b][c]"), "Index(Index(Identifier(a) Identifier(b)) Identifier(c))");
    EXPECT_EQ(outlineOf(u"a[b, c]"), "Index(Identifier(a) Comma(Identifier(b) Identifier(c)))");
}

TEST(Expressions, ChainGoesOnOverALineEndOnlyBeforePointsAndIndexes) {
    EXPECT_EQ(outlineOf(u"a\n.b"), "Member(Identifier(a) b)");
    EXPECT_EQ(outlineOf(u"a\n[b]"), "Index(Identifier(a) Identifier(b))");
    EXPECT_EQ(support::regenerated(u"a\n(b)"), "a;\nb;\n;\n");
}

TEST(Expressions, ReservedWordsAreNoMemberNames) {
    EXPECT_EQ(syntaxError(u"a.if"), "Error(Ln 1, Col 5): need identificator");
    EXPECT_EQ(syntaxError(u"a.true"), "Error(Ln 1, Col 7): need identificator");
    EXPECT_EQ(syntaxError(u"a.1"), "Error(Ln 1, Col 4): need ;");  // .1 is a number
    EXPECT_EQ(syntaxError(u"a.'b'"), "Error(Ln 1, Col 6): need identificator");
    EXPECT_EQ(syntaxError(u"a."), "Error(Ln 1, Col 3): need identificator");
}

TEST(Expressions, ArrayLiterals) {
    EXPECT_EQ(outlineOf(u"[]"), "Array([])");
    EXPECT_EQ(outlineOf(u"[1,2]"), "Array([Literal(5 1) Literal(5 2)])");
    EXPECT_EQ(outlineOf(u"[1,2,]"), "Array([Literal(5 1) Literal(5 2)])");
    EXPECT_EQ(outlineOf(u"[1,2][0]"), "Index(Array([Literal(5 1) Literal(5 2)]) Literal(9 0))");
    EXPECT_EQ(outlineOf(u"[1,2].length"), "Member(Array([Literal(5 1) Literal(5 2)]) length)");
    EXPECT_EQ(outlineOf(u"x = [\n1,\n2\n]"), "Assign(= Identifier(x) Array([Literal(5 1) Literal(5 2)]))");
    EXPECT_EQ(outlineOf(u"[a = 1, b]"), "Array([Assign(= Identifier(a) Literal(5 1)) Identifier(b)])");
}

TEST(Expressions, EmptyElementIsAnError) {
    EXPECT_EQ(syntaxError(u"[1,,2]"), "Error(Ln 1, Col 5): need )");
    EXPECT_EQ(syntaxError(u"[,1]"), "Error(Ln 1, Col 3): need )");
}

TEST(Expressions, QuirkUnclosedArrayLiteralAsksForTheBracketOfACall) {
    EXPECT_EQ(syntaxError(u"[1"), "Error(Ln 1, Col 3): need )");
    EXPECT_EQ(syntaxError(u"[1)"), "Error(Ln 1, Col 4): need )");
}

TEST(Expressions, Arguments) {
    EXPECT_EQ(outlineOf(u"f()"), "Call(Identifier(f) Arguments([]))");
    EXPECT_EQ(outlineOf(u"f(1,)"), "Call(Identifier(f) Arguments([Literal(5 1)]))");
    EXPECT_EQ(outlineOf(u"f((a,b))"), "Call(Identifier(f) Arguments([Comma(Identifier(a) Identifier(b))]))");
    EXPECT_EQ(outlineOf(u"f(a\n,b\n)"), "Call(Identifier(f) Arguments([Identifier(a) Identifier(b)]))");
    EXPECT_EQ(syntaxError(u"f(,)"), "Error(Ln 1, Col 4): need )");
    EXPECT_EQ(syntaxError(u"f(1 2)"), "Error(Ln 1, Col 7): need )");
    EXPECT_EQ(syntaxError(u"f(1;)"), "Error(Ln 1, Col 5): need )");
    EXPECT_EQ(syntaxError(u"f(1"), "Error(Ln 1, Col 4): need )");
}

TEST(Expressions, QuirkStringThatStartsWithACommaSeparates) {
    // The string "," is taken for the separator, and what is left of ",b" is a string still.
    EXPECT_EQ(outlineOf(u"f(a ',' b)"), "Call(Identifier(f) Arguments([Identifier(a) Identifier(b)]))");
    EXPECT_EQ(outlineOf(u"f(a ',b')"), "Call(Identifier(f) Arguments([Identifier(a) Literal(3 b)]))");
    EXPECT_EQ(outlineOf(u"[a ',']"), "Array([Identifier(a)])");
}

TEST(Expressions, Parentheses) {
    EXPECT_EQ(outlineOf(u"(((a)))"), "Identifier(a)");
    EXPECT_EQ(outlineOf(u"x = ()"), "Assign(= Identifier(x) -)");
    EXPECT_EQ(outlineOf(u"()[1]"), "Array([Literal(5 1)])");
    EXPECT_EQ(outlineOf(u"(a,\nb)"), "Comma(Identifier(a) Identifier(b))");
    EXPECT_EQ(syntaxError(u"(a"), "Error(Ln 1, Col 3): need )");
    EXPECT_EQ(syntaxError(u"(a b)"), "Error(Ln 1, Col 6): need )");
    EXPECT_EQ(syntaxError(u"("), "Error(Ln 1, Col 2): need )");
    EXPECT_EQ(syntaxError(u"(a\nb)"), "Error(Ln 2, Col 1): need )");
}

TEST(Expressions, Index) {
    EXPECT_EQ(syntaxError(u"a[]"), "Error(Ln 1, Col 4): need expression");
    EXPECT_EQ(syntaxError(u"a[1"), "Error(Ln 1, Col 4): need ]");
    EXPECT_EQ(syntaxError(u"a[1)"), "Error(Ln 1, Col 5): need ]");
}

// ---- regular-expression literals ----

TEST(RegularExpressionLiterals, WhereTheyStand) {
    EXPECT_EQ(outlineOf(u"x = /a/"), "Assign(= Identifier(x) RegExp(a))");
    EXPECT_EQ(outlineOf(u"/a/"), "RegExp(a)");
    EXPECT_EQ(outlineOf(u"f(/x/)"), "Call(Identifier(f) Arguments([RegExp(x)]))");
    EXPECT_EQ(outlineOf(u"f(/x/, 1, /y/)"),
              "Call(Identifier(f) Arguments([RegExp(x) Literal(5 1) RegExp(y)]))");
    EXPECT_EQ(outlineOf(u"[/x/]"), "Array([RegExp(x)])");
    EXPECT_EQ(outlineOf(u"(/x/)"), "RegExp(x)");
    EXPECT_EQ(outlineOf(u"/a/ * b"), "Binary(* RegExp(a) Identifier(b))");
    EXPECT_EQ(outlineOf(u"a + /b/"), "Binary(+ Identifier(a) RegExp(b))");
}

TEST(RegularExpressionLiterals, QuirkOnlyTheFirstOperandOfAChainCanBeOne) {
    // Behind "*" the slashes are divisions without a left or right side.
    EXPECT_EQ(outlineOf(u"a* /x/"), "Binary(/ Binary(/ Binary(* Identifier(a) -) Identifier(x)) -)");
    EXPECT_EQ(outlineOf(u"a*/x/"), "Binary(/ Binary(/ Binary(* Identifier(a) -) Identifier(x)) -)");
}

TEST(RegularExpressionLiterals, QuirkRestOfTheOperatorRunIsLost) {
    EXPECT_EQ(outlineOf(u"x = /=a/"), "Assign(= Identifier(x) RegExp(a))");
    EXPECT_EQ(outlineOf(u"x = /+-a/"), "Assign(= Identifier(x) RegExp(a))");
}

TEST(RegularExpressionLiterals, BackslashKeepsItselfAndTheNextCharacter) {
    EXPECT_EQ(outlineOf(u"/a\\/b\\\\/"), "RegExp(a\\/b\\\\)");
    EXPECT_EQ(outlineOf(u"/[\\/]/"), "RegExp([\\/])");
    EXPECT_EQ(syntaxError(u"/[/]/"), "Error(Ln 1, Col 5): need ;");  // brackets do not protect a slash
}

TEST(RegularExpressionLiterals, ThereAreNoFlags) {
    EXPECT_EQ(syntaxError(u"x = /a/g"), "Error(Ln 1, Col 9): need ;");
}

TEST(RegularExpressionLiterals, LiteralHasNoChain) {
    EXPECT_EQ(syntaxError(u"/a/.test(s)"), "Error(Ln 1, Col 6): need ;");
    EXPECT_EQ(syntaxError(u"f(/a/.b)"), "Error(Ln 1, Col 8): need )");
    EXPECT_EQ(syntaxError(u"f(/a/ + 1)"), "Error(Ln 1, Col 9): need )");
}

TEST(RegularExpressionLiterals, LineEndIsAnError) {
    EXPECT_EQ(syntaxError(u"x = /a\nb/"), "Error(Ln 2, Col 1): Unexpected char");
}

TEST(RegularExpressionLiterals, LineEndBeforeContinuationCharacterVanishes) {
    EXPECT_EQ(outlineOf(u"/a\n*b/"), "RegExp(a*b)");
}

TEST(RegularExpressionLiterals, EndOfTextIsAnError) {
    EXPECT_EQ(syntaxError(u"x = /a"), "Error(Ln 1, Col 7): Unexpected end of file");
    EXPECT_EQ(syntaxError(u"x = /a\\"), "Error(Ln 1, Col 8): Unexpected end of file");
    EXPECT_EQ(syntaxError(u"x = /"), "Error(Ln 1, Col 6): Unexpected end of file");
    EXPECT_EQ(syntaxError(u"/a\n"), "Error(Ln 2, Col 0): Unexpected end of file");
}

// ---- what the language does not have ----

TEST(Expressions, ThereIsNoObjectLiteral) {
    EXPECT_EQ(syntaxError(u"x = {a:1}"), "Error(Ln 1, Col 6): need ;");
}

TEST(Expressions, ThereIsNoFunctionExpression) {
    EXPECT_EQ(syntaxError(u"x = function () { }"), "Error(Ln 1, Col 14): need ;");
}

TEST(Expressions, ThereIsNoInAndNoInstanceof) {
    EXPECT_EQ(syntaxError(u"a in b"), "Error(Ln 1, Col 6): need ;");
    EXPECT_EQ(syntaxError(u"a instanceof b"), "Error(Ln 1, Col 14): need ;");
}

TEST(Expressions, ThisIsAnIdentifier) {
    EXPECT_EQ(outlineOf(u"this.a"), "Member(Identifier(this) a)");
    EXPECT_EQ(outlineOf(u"a.this"), "Member(Identifier(a) this)");
}

// ---- error tokens ----

TEST(Expressions, ErrorTokenWhereAnOperandIsExpected) {
    EXPECT_EQ(syntaxError(u"#"), "Error(Ln 1, Col 2): JSTT_ERROR_UNEXPECTEDCHAR #");
    EXPECT_EQ(syntaxError(u"x = @"), "Error(Ln 1, Col 6): JSTT_ERROR_UNEXPECTEDCHAR @");
    EXPECT_EQ(syntaxError(u"x = 'abc\ny"), "Error(Ln 2, Col 1): JSTT_ERROR_NEEDSINGLEQUOTATION abc");
    EXPECT_EQ(syntaxError(u"x = \"abc\ny"), "Error(Ln 2, Col 1): JSTT_ERROR_NEEDDOUBLEQUOTATION abc");
    EXPECT_EQ(syntaxError(u"f('a"), "Error(Ln 1, Col 5): JSTT_ERROR_NEEDSINGLEQUOTATION a");
    EXPECT_EQ(syntaxError(u"-'a"), "Error(Ln 1, Col 4): JSTT_ERROR_NEEDSINGLEQUOTATION a");
}

TEST(Expressions, ErrorTokenElsewhereOnlyEndsTheRule) {
    EXPECT_EQ(syntaxError(u"x #"), "Error(Ln 1, Col 4): need ;");
    EXPECT_EQ(syntaxError(u"a.#"), "Error(Ln 1, Col 4): need identificator");
    EXPECT_EQ(syntaxError(u"if #"), "Error(Ln 1, Col 5): need (");
}

}  // namespace
}  // namespace quorvelin
