// Where tokens and nodes stand. The position of a token is that of the character taken last when it was
// scanned: the one behind the token for most, the token's own last character for those that end without a
// look-ahead.
#include <gtest/gtest.h>

#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::outlineOf;
using support::syntaxError;
using support::tokensWithPositions;

TEST(TokenPositions, QuirkFirstCharacterOfTheTextHasColumnTwo) {
    EXPECT_EQ(tokensWithPositions(u"("), "1:2 PARENTHESES (, 1:2 EOF");
    EXPECT_EQ(tokensWithPositions(u"#"), "1:2 ERROR_UNEXPECTEDCHAR #, 1:2 EOF");
}

TEST(TokenPositions, TokenWithLookAheadStandsAtTheCharacterBehindIt) {
    EXPECT_EQ(tokensWithPositions(u"ab c"), "1:4 IDENFICATOR ab, 1:5 IDENFICATOR c, 1:5 EOF");
    EXPECT_EQ(tokensWithPositions(u"12+3 "), "1:4 INT 12, 1:5 OPERATORS +, 1:6 INT 3, 1:6 EOF");
}

TEST(TokenPositions, TokenWithoutLookAheadStandsAtItsLastCharacter) {
    EXPECT_EQ(tokensWithPositions(u"'ab'x"), "1:5 STRING ab, 1:6 IDENFICATOR x, 1:6 EOF");
    EXPECT_EQ(tokensWithPositions(u"(),:?~;"),
              "1:2 PARENTHESES (, 1:3 PARENTHESES ), 1:4 OPERATORS ,, 1:5 OPERATORS :, 1:6 OPERATORS ?, "
              "1:7 OPERATORS ~, 1:8 OPERSEPARATOR ;, 1:8 EOF");
}

TEST(TokenPositions, TabMovesToTheNextMultipleOfEight) {
    EXPECT_EQ(tokensWithPositions(u"\t("), "1:9 PARENTHESES (, 1:9 EOF");
    EXPECT_EQ(tokensWithPositions(u"x\t("), "1:8 IDENFICATOR x, 1:9 PARENTHESES (, 1:9 EOF");
    EXPECT_EQ(tokensWithPositions(u"1234567\t("), "1:16 INT 1234567, 1:17 PARENTHESES (, 1:17 EOF");
}

TEST(TokenPositions, QuirkFirstCharacterBehindAKeptLineEndHasColumnTwo) {
    EXPECT_EQ(tokensWithPositions(u";\n("),
              "1:2 OPERSEPARATOR ;, 2:1 OPERSEPARATOR \\n, 2:2 PARENTHESES (, 2:2 EOF");
    EXPECT_EQ(tokensWithPositions(u";\n  (("),
              "1:2 OPERSEPARATOR ;, 2:3 OPERSEPARATOR \\n, 2:4 PARENTHESES (, 2:5 PARENTHESES (, 2:5 EOF");
}

TEST(TokenPositions, FirstCharacterBehindAVanishedLineEndHasColumnOne) {
    EXPECT_EQ(tokensWithPositions(u";\n{"), "1:2 OPERSEPARATOR ;, 2:1 PARENTHESES {, 2:1 EOF");
    EXPECT_EQ(tokensWithPositions(u";\n\n  {"), "1:2 OPERSEPARATOR ;, 3:3 PARENTHESES {, 3:3 EOF");
}

TEST(TokenPositions, FirstCharacterBehindALineCommentHasColumnOne) {
    EXPECT_EQ(tokensWithPositions(u";//x\n("),
              "1:2 OPERSEPARATOR ;, 2:0 OPERSEPARATOR \\n, 2:1 PARENTHESES (, 2:1 EOF");
}

TEST(TokenPositions, LineEndPutInFrontOfADoubledSignStandsWhereTheSignDoes) {
    EXPECT_EQ(tokensWithPositions(u";\n ++a"),
              "1:2 OPERSEPARATOR ;, 2:2 OPERSEPARATOR \\n, 2:4 OPERATORS ++, 2:4 IDENFICATOR a, 2:4 EOF");
}

TEST(TokenPositions, PairsOfLineEndCharactersAreOneLine) {
    EXPECT_EQ(tokensWithPositions(u";\r\n\n\r\r{"), "1:2 OPERSEPARATOR ;, 4:1 PARENTHESES {, 4:1 EOF");
}

TEST(TokenPositions, EndOfTextBehindALineEndStandsOnTheNextLine) {
    EXPECT_EQ(tokensWithPositions(u";\n  "), "1:2 OPERSEPARATOR ;, 2:2 EOF");
}

TEST(NodePositions, OperatorNodesStandAtTheirOperator) {
    EXPECT_EQ(outlineOf(u"a+b", true), "Binary@1:4(+ Identifier@1:3(a) Identifier@1:4(b))");
    EXPECT_EQ(outlineOf(u"a =b", true), "Assign@1:5(= Identifier@1:3(a) Identifier@1:5(b))");
    EXPECT_EQ(outlineOf(u"a?b:c", true),
              "Conditional@1:3(Identifier@1:3(a) Identifier@1:5(b) Identifier@1:6(c))");
    EXPECT_EQ(outlineOf(u"-a", true), "Unary@1:3(- Identifier@1:3(a))");
    EXPECT_EQ(outlineOf(u"a++;", true), "Postfix@1:5(++ Identifier@1:3(a))");
}

TEST(NodePositions, OperatorsOfOneRunStandAtOnePlace) {
    EXPECT_EQ(outlineOf(u"a=-b", true), "Assign@1:5(= Identifier@1:3(a) Unary@1:5(- Identifier@1:5(b)))");
}

TEST(NodePositions, MembersCallsAndIndexes) {
    EXPECT_EQ(outlineOf(u"a.b", true), "Member@1:4(Identifier@1:3(a) b)");
    EXPECT_EQ(outlineOf(u"a.b(c)", true),
              "MemberCall@1:5(Identifier@1:3(a) Arguments@1:7([Identifier@1:7(c)]) b)");
    EXPECT_EQ(outlineOf(u"f(c)", true), "Call@1:3(Identifier@1:3(f) Arguments@1:5([Identifier@1:5(c)]))");
    EXPECT_EQ(outlineOf(u"a[0]", true), "Index@1:3(Identifier@1:3(a) Literal@1:5(9 0))");
    EXPECT_EQ(outlineOf(u"[0]", true), "Array@1:4([Literal@1:4(9 0)])");
}

TEST(NodePositions, StatementsStandAtTheirFirstToken) {
    EXPECT_EQ(outlineOf(u"if (a) b", true), "If@1:4(Identifier@1:7(a) Identifier@1:9(b) -)");
    EXPECT_EQ(outlineOf(u"return a;", true), "Return@1:8(Identifier@1:10(a))");
    EXPECT_EQ(outlineOf(u"{\n  return a;\n}", true), "StatementList@2:10([Return@2:10(Identifier@2:12(a))])");
    EXPECT_EQ(outlineOf(u"function f(a) { }", true), "Function@1:10(Parameters@1:14([a]) - f)");
    EXPECT_EQ(outlineOf(u"a: b", true), "Label@1:3(a Identifier@1:5(b))");
    EXPECT_EQ(outlineOf(u"var a = 1", true), "Var@1:7([a=Literal@1:10(5 1)])");
}

TEST(NodePositions, ProgramStandsAtTheStart) {
    const Owned<JSNode> root = support::parse(u"\n\n  a");
    EXPECT_EQ(root->line, 1);
    EXPECT_EQ(root->column, 1);
    EXPECT_EQ(support::outline(root.get(), true),
              "StatementList@1:1([StatementList@3:4([Identifier@3:4(a)])])");
}

TEST(ErrorPositions, ErrorsStandWhereTheTokenizerStands) {
    EXPECT_EQ(syntaxError(u"x y;"), "Error(Ln 1, Col 5): need ;");
    EXPECT_EQ(syntaxError(u"x y"), "Error(Ln 1, Col 4): need ;");
    EXPECT_EQ(syntaxError(u"\tx y"), "Error(Ln 1, Col 11): need ;");
    EXPECT_EQ(syntaxError(u"x\ty"), "Error(Ln 1, Col 9): need ;");
    EXPECT_EQ(syntaxError(u"1234567\ty"), "Error(Ln 1, Col 17): need ;");
    EXPECT_EQ(syntaxError(u"x )"), "Error(Ln 1, Col 4): need ;");
    EXPECT_EQ(syntaxError(u"x \"ab\" "), "Error(Ln 1, Col 7): need ;");
}

}  // namespace
}  // namespace quorvelin
