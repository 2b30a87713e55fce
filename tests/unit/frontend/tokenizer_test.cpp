// From characters to tokens: kinds and texts.
#include "frontend/tokenizer.h"

#include <gtest/gtest.h>

#include "foundation/stream.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;
using support::tokens;

TEST(Tokenizer, EmptyTextHasNoTokens) {
    EXPECT_EQ(tokens(u""), "");
    EXPECT_EQ(tokens(u"  \t "), "");
}

TEST(Tokenizer, NothingIsReadBeforeTheFirstToken) {
    const BString text = textOf(u"a");
    BStringInputStream stream(&text);
    const JSTokenizer tokenizer(&stream);
    EXPECT_EQ(stream.position(), 0u);
    EXPECT_EQ(tokenizer.kind(), JSTT_NONE);
    EXPECT_EQ(tokenizer.line(), 1);
    EXPECT_EQ(tokenizer.column(), 1);
}

TEST(Tokenizer, EndOfTextIsStickyAndKeepsTheTextOfTheTokenBefore) {
    const BString text = textOf(u"abc");
    BStringInputStream stream(&text);
    JSTokenizer tokenizer(&stream);
    EXPECT_EQ(tokenizer.nextToken(false), JSTT_IDENFICATOR);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(tokenizer.nextToken(false), JSTT_EOF);
    EXPECT_EQ(ascii(tokenizer.text()), "abc");
}

TEST(Tokenizer, NulAndEndMarkEndTheText) {
    EXPECT_EQ(tokens(std::u16string_view(u"a\0b", 3)), "IDENFICATOR a");
    EXPECT_EQ(tokens(u"a\uFFFFb"), "IDENFICATOR a");
    EXPECT_EQ(tokens(std::u16string_view(u"a\n\0b", 4)), "IDENFICATOR a");
}

// ---- line ends ----

TEST(Tokenizer, LineThatStartsWithOperatorContinuesTheOneBefore) {
    EXPECT_EQ(tokens(u"a\n+ b"), "IDENFICATOR a, OPERATORS +, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n- b"), "IDENFICATOR a, OPERATORS -, IDENFICATOR b");
    for (const char16_t c : std::u16string_view(u"%^&*=<>")) {
        const std::u16string run(1, c);
        EXPECT_EQ(tokens(u"a\n" + run + u" b"), "IDENFICATOR a, OPERATORS " + ascii(run) + ", IDENFICATOR b");
    }
    EXPECT_EQ(tokens(u"a\n| b"), "IDENFICATOR a, OPERATORS |, IDENFICATOR b");
    for (const char16_t c : std::u16string_view(u":,?.")) {
        const std::u16string one(1, c);
        EXPECT_EQ(tokens(u"a\n" + one + u"b"), "IDENFICATOR a, OPERATORS " + ascii(one) + ", IDENFICATOR b");
    }
    EXPECT_EQ(tokens(u"a\n/ b"), "IDENFICATOR a, OPERATORS /, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n\\"), "IDENFICATOR a, ERROR_UNEXPECTEDCHAR \\");
}

TEST(Tokenizer, LineThatStartsWithOtherCharactersKeepsItsLineEnd) {
    EXPECT_EQ(tokens(u"a\n(b)"),
              "IDENFICATOR a, OPERSEPARATOR \\n, PARENTHESES (, IDENFICATOR b, PARENTHESES )");
    EXPECT_EQ(tokens(u"a\n!b"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERATORS !, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n~b"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERATORS ~, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n)"), "IDENFICATOR a, OPERSEPARATOR \\n, PARENTHESES )");
    EXPECT_EQ(tokens(u"a\n'b'"), "IDENFICATOR a, OPERSEPARATOR \\n, STRING b");
    EXPECT_EQ(tokens(u"a\n;"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERSEPARATOR ;");
    EXPECT_EQ(tokens(u"a\n1"), "IDENFICATOR a, OPERSEPARATOR \\n, INT 1");
}

TEST(Tokenizer, LineThatStartsWithDoubledSignKeepsItsLineEnd) {
    EXPECT_EQ(tokens(u"a\n++b"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERATORS ++, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n  --b"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERATORS --, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n+-b"), "IDENFICATOR a, OPERATORS +-, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n+"), "IDENFICATOR a, OPERATORS +");
}

TEST(Tokenizer, LineEndBeforeBracesAndBracketsVanishes) {
    EXPECT_EQ(tokens(u"a\n}"), "IDENFICATOR a, PARENTHESES }");
    EXPECT_EQ(tokens(u"a\n{"), "IDENFICATOR a, PARENTHESES {");
    EXPECT_EQ(tokens(u"a\n["), "IDENFICATOR a, PARENTHESES [");
    EXPECT_EQ(tokens(u"a\n]"), "IDENFICATOR a, PARENTHESES ]");
}

TEST(Tokenizer, BlankLinesAtTheEndGiveNoToken) {
    EXPECT_EQ(tokens(u"a\n"), "IDENFICATOR a");
    EXPECT_EQ(tokens(u"a\n \n\t\n\r\n  "), "IDENFICATOR a");
}

TEST(Tokenizer, SeveralLineEndsAreOneToken) {
    EXPECT_EQ(tokens(u"a\n\n \t\r\n\rb"), "IDENFICATOR a, OPERSEPARATOR \\n, IDENFICATOR b");
}

TEST(Tokenizer, LineEndsOfAllFormsAreTheSame) {
    EXPECT_EQ(tokens(u"a\rb"), "IDENFICATOR a, OPERSEPARATOR \\n, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\r\nb"), "IDENFICATOR a, OPERSEPARATOR \\n, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a\n\rb"), "IDENFICATOR a, OPERSEPARATOR \\n, IDENFICATOR b");
}

TEST(Tokenizer, LineEndsCanBePassedOverButSemicolonsCannot) {
    EXPECT_EQ(tokens(u"a\nb;\nd", true), "IDENFICATOR a, IDENFICATOR b, OPERSEPARATOR ;, IDENFICATOR d");
}

// ---- comments ----

TEST(Tokenizer, QuirkLineCommentKeepsItsLineEnd) {
    EXPECT_EQ(tokens(u"a // c\n+ b"), "IDENFICATOR a, OPERSEPARATOR \\n, OPERATORS +, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a // c\n}"), "IDENFICATOR a, OPERSEPARATOR \\n, PARENTHESES }");
}

TEST(Tokenizer, LineCommentAtTheEnd) {
    EXPECT_EQ(tokens(u"a // c"), "IDENFICATOR a");
    EXPECT_EQ(tokens(u"// c"), "");
    EXPECT_EQ(tokens(u"// c\n// d\n"), "OPERSEPARATOR \\n, OPERSEPARATOR \\n");
}

TEST(Tokenizer, BlockComment) {
    EXPECT_EQ(tokens(u"a /* b \n c */ d"), "IDENFICATOR a, IDENFICATOR d");
    EXPECT_EQ(tokens(u"a /* b"), "IDENFICATOR a");
    EXPECT_EQ(tokens(u"/**/a"), "IDENFICATOR a");
    EXPECT_EQ(tokens(u"/***/a"), "IDENFICATOR a");
}

TEST(Tokenizer, CharacterBehindTheOpeningOfABlockCommentCannotCloseIt) {
    EXPECT_EQ(tokens(u"/*/ a */ b"), "IDENFICATOR b");
}

TEST(Tokenizer, CommentEndsOperatorRun) {
    EXPECT_EQ(tokens(u"a=//b\nd"), "IDENFICATOR a, OPERATORS =, OPERSEPARATOR \\n, IDENFICATOR d");
    EXPECT_EQ(tokens(u"a=/*b*/-d"), "IDENFICATOR a, OPERATORS =, OPERATORS -, IDENFICATOR d");
    EXPECT_EQ(tokens(u"a=/*b"), "IDENFICATOR a, OPERATORS =");
}

TEST(Tokenizer, OtherCommentSyntaxDoesNotExist) {
    EXPECT_EQ(tokens(u"a<!--b"), "IDENFICATOR a, OPERATORS <!--, IDENFICATOR b");
    EXPECT_EQ(tokens(u"a-->b"), "IDENFICATOR a, OPERATORS -->, IDENFICATOR b");
    EXPECT_EQ(tokens(u"#!a"), "ERROR_UNEXPECTEDCHAR #, OPERATORS !, IDENFICATOR a");
}

// ---- operators ----

TEST(Tokenizer, OperatorRunIsAllConsecutiveOperatorCharacters) {
    EXPECT_EQ(tokens(u"a=-1"), "IDENFICATOR a, OPERATORS =-, INT 1");
    EXPECT_EQ(tokens(u"x=!y"), "IDENFICATOR x, OPERATORS =!, IDENFICATOR y");
    EXPECT_EQ(tokens(u"a+=++b"), "IDENFICATOR a, OPERATORS +=++, IDENFICATOR b");
    EXPECT_EQ(tokens(u"!%&*+-<=>^|"), "OPERATORS !%&*+-<=>^|");
    EXPECT_EQ(tokens(u"=/ /"), "OPERATORS =/, OPERATORS /");
}

TEST(Tokenizer, OperatorRunHasNoLimit) {
    const std::u16string run(5000, u'+');
    EXPECT_EQ(tokens(run), "OPERATORS " + ascii(run));
}

TEST(Tokenizer, SomeOperatorsNeverJoinARun) {
    EXPECT_EQ(tokens(u"?:,~."), "OPERATORS ?, OPERATORS :, OPERATORS ,, OPERATORS ~, OPERATORS .");
    EXPECT_EQ(tokens(u"!~a"), "OPERATORS !, OPERATORS ~, IDENFICATOR a");
    EXPECT_EQ(
        tokens(u"a?-b:+c"),
        "IDENFICATOR a, OPERATORS ?, OPERATORS -, IDENFICATOR b, OPERATORS :, OPERATORS +, IDENFICATOR c");
}

TEST(Tokenizer, BracketsAndSemicolon) {
    EXPECT_EQ(tokens(u"()[]{};"),
              "PARENTHESES (, PARENTHESES ), PARENTHESES [, PARENTHESES ], PARENTHESES {, PARENTHESES }, "
              "OPERSEPARATOR ;");
}

TEST(Tokenizer, PointBeforeAnythingButADigitIsAnOperator) {
    EXPECT_EQ(tokens(u"a.b"), "IDENFICATOR a, OPERATORS ., IDENFICATOR b");
    EXPECT_EQ(tokens(u".5"), "FLOAT .5");
    EXPECT_EQ(tokens(u"..5"), "OPERATORS ., FLOAT .5");
    EXPECT_EQ(tokens(u"."), "OPERATORS .");
}

// ---- strings ----

TEST(Tokenizer, Strings) {
    EXPECT_EQ(tokens(u"'abc'"), "STRING abc");
    EXPECT_EQ(tokens(u"\"abc\"d"), "STRING abc, IDENFICATOR d");
    EXPECT_EQ(tokens(u"''"), "STRING ");
}

TEST(Tokenizer, QuirkQuoteOfTheOtherKindIsDropped) {
    EXPECT_EQ(tokens(u"\"it's\""), "STRING its");
    EXPECT_EQ(tokens(u"'say \"hi\"'"), "STRING say hi");
    EXPECT_EQ(tokens(u"\"it\\'s\""), "STRING it's");
    EXPECT_EQ(tokens(u"'\\\"'"), "STRING \"");
    EXPECT_EQ(tokens(u"'\\''"), "STRING '");
}

TEST(Tokenizer, LineEndInStringVanishesBeforeContinuationCharacter) {
    EXPECT_EQ(tokens(u"\"a\n+b\""), "STRING a+b");
    EXPECT_EQ(tokens(u"'a\n  {b'"), "STRING a{b");
    EXPECT_EQ(tokens(u"'a\n\n\n.b'"), "STRING a.b");
}

TEST(Tokenizer, LineEndInStringIsAnErrorOtherwise) {
    EXPECT_EQ(tokens(u"\"a\nb\""), "ERROR_NEEDDOUBLEQUOTATION a, IDENFICATOR b, ERROR_NEEDDOUBLEQUOTATION ");
    EXPECT_EQ(tokens(u"'a\nb"), "ERROR_NEEDSINGLEQUOTATION a, IDENFICATOR b");
    EXPECT_EQ(tokens(u"'a\\\nb"), "ERROR_NEEDSINGLEQUOTATION a, IDENFICATOR b");
    EXPECT_EQ(tokens(u"'a\n++"), "ERROR_NEEDSINGLEQUOTATION a, OPERATORS ++");
}

TEST(Tokenizer, UnterminatedStringAtTheEndOfTheText) {
    EXPECT_EQ(tokens(u"'abc"), "ERROR_NEEDSINGLEQUOTATION abc");
    EXPECT_EQ(tokens(u"\"abc"), "ERROR_NEEDDOUBLEQUOTATION abc");
    EXPECT_EQ(tokens(u"'abc\\"), "ERROR_NEEDSINGLEQUOTATION abc");
    EXPECT_EQ(tokens(u"'abc\n"), "ERROR_NEEDSINGLEQUOTATION abc");
    EXPECT_EQ(tokens(u"'\\x"), "ERROR_NEEDSINGLEQUOTATION \\u0000");
    EXPECT_EQ(tokens(u"'\\0"), "ERROR_NEEDSINGLEQUOTATION \\u0000");
}

TEST(Tokenizer, QuirkTabInStringBecomesBlank) {
    EXPECT_EQ(tokens(u"'a\tb\\\tc'"), "STRING a b c");
}

TEST(Tokenizer, Escapes) {
    EXPECT_EQ(tokens(uR"('\a\b\f\n\r\t\v')"), "STRING \\u0007\\u0008\\u000C\n\\u000D\\u0009\\u000B");
    EXPECT_EQ(tokens(uR"('\q\\\ ')"), "STRING q\\ ");
    EXPECT_EQ(tokens(uR"('\u0041')"), "STRING u0041");
    EXPECT_EQ(tokens(uR"('\8\9')"), "STRING 89");
}

TEST(Tokenizer, QuirkHexadecimalEscapeLooksAtThreeDigits) {
    EXPECT_EQ(tokens(uR"('\x41B')"), "STRING AB");
    EXPECT_EQ(tokens(uR"('\x41')"), "STRING A");
    EXPECT_EQ(tokens(uR"('\x4g')"), "STRING \\u0004g");
    EXPECT_EQ(tokens(uR"('\x0ff')"), "STRING \\u00FFf");
    EXPECT_EQ(tokens(uR"('\x100')"), "STRING \\u00100");
    EXPECT_EQ(tokens(uR"('\xFFF')"), "STRING \\u00FFF");
    EXPECT_EQ(tokens(uR"('\xzz')"), "STRING \\u0000zz");
    EXPECT_EQ(tokens(uR"('\x')"), "STRING \\u0000");
}

TEST(Tokenizer, QuirkFirstDigitOfOctalEscapeDoesNotCount) {
    EXPECT_EQ(tokens(uR"('\0')"), "STRING \\u0000");
    EXPECT_EQ(tokens(uR"('a\012')"), "STRING a\n");
    EXPECT_EQ(tokens(uR"('\101')"), "STRING \\u0001");
    EXPECT_EQ(tokens(uR"('\1018')"), "STRING \\u00018");
    // The third digit behind the first counts and is read again.
    EXPECT_EQ(tokens(uR"('\0101')"), "STRING A1");
    EXPECT_EQ(tokens(uR"('\0777')"), "STRING ?7");
    EXPECT_EQ(tokens(uR"('\0377')"), "STRING \\u00FF7");
}

// ---- numbers ----

TEST(Tokenizer, DecimalNumbers) {
    EXPECT_EQ(tokens(u"1 23 4567890"), "INT 1, INT 23, INT 4567890");
    EXPECT_EQ(tokens(u"1.5 1. 12e3 1E+5 1e-5"), "FLOAT 1.5, FLOAT 1., FLOAT 12e3, FLOAT 1E+5, FLOAT 1e-5");
    EXPECT_EQ(tokens(u"12ab"), "INT 12, IDENFICATOR ab");
}

TEST(Tokenizer, SecondPointStartsAnotherToken) {
    EXPECT_EQ(tokens(u"1.2.3"), "FLOAT 1.2, FLOAT .3");
    EXPECT_EQ(tokens(u"1..2"), "FLOAT 1., FLOAT .2");
    EXPECT_EQ(tokens(u"1e5.2"), "FLOAT 1e5, FLOAT .2");
}

TEST(Tokenizer, NumberShapeIsNotValidated) {
    EXPECT_EQ(tokens(u"1e"), "FLOAT 1e");
    EXPECT_EQ(tokens(u"1e+"), "FLOAT 1e+");
    EXPECT_EQ(tokens(u"1e5e5"), "FLOAT 1e5, IDENFICATOR e5");
}

TEST(Tokenizer, QuirkSignBehindTheDigitsOfAnExponentBelongsToTheNumber) {
    EXPECT_EQ(tokens(u"1e5-3"), "FLOAT 1e5-3");
    EXPECT_EQ(tokens(u"1e5+3-2"), "FLOAT 1e5+3, OPERATORS -, INT 2");
    EXPECT_EQ(tokens(u"1-3"), "INT 1, OPERATORS -, INT 3");
}

TEST(Tokenizer, Zero) {
    EXPECT_EQ(tokens(u"0"), "ZERO 0");
    EXPECT_EQ(tokens(u"0;"), "ZERO 0, OPERSEPARATOR ;");
    EXPECT_EQ(tokens(u"0.5"), "FLOAT .5");
    EXPECT_EQ(tokens(u"0.5.5"), "FLOAT .5, FLOAT .5");
    EXPECT_EQ(tokens(u"09"), "ZERO 0, INT 9");
    EXPECT_EQ(tokens(u"0e5"), "ZERO 0, IDENFICATOR e5");
}

TEST(Tokenizer, QuirkPointBehindZeroIsLostBeforeANonDigit) {
    EXPECT_EQ(tokens(u"0.x"), "ZERO 0, IDENFICATOR x");
    EXPECT_EQ(tokens(u"0.toString"), "ZERO 0, IDENFICATOR toString");
    EXPECT_EQ(tokens(u"0."), "ZERO 0");
}

TEST(Tokenizer, HexadecimalAndOctalNumbers) {
    EXPECT_EQ(tokens(u"0x1aF 0XFF"), "HEXINT 0x1aF, HEXINT 0XFF");
    EXPECT_EQ(tokens(u"0x"), "HEXINT 0x");
    EXPECT_EQ(tokens(u"0xg"), "HEXINT 0x, IDENFICATOR g");
    EXPECT_EQ(tokens(u"0123"), "OCTALINT 0123");
    EXPECT_EQ(tokens(u"00"), "OCTALINT 00");
    EXPECT_EQ(tokens(u"0128"), "OCTALINT 012, INT 8");
}

// ---- words ----

TEST(Tokenizer, Words) {
    EXPECT_EQ(tokens(u"abc _a $b a1_$"), "IDENFICATOR abc, IDENFICATOR _a, IDENFICATOR $b, IDENFICATOR a1_$");
    EXPECT_EQ(tokens(u"true false null"), "BOOL true, BOOL false, NULL null");
    EXPECT_EQ(tokens(u"True NULL"), "IDENFICATOR True, IDENFICATOR NULL");
}

TEST(Tokenizer, EveryReservedWord) {
    const char16_t* const words[] = {
        u"abstract",  u"boolean", u"break",      u"byte",    u"case",    u"catch",      u"char",
        u"class",     u"const",   u"continue",   u"default", u"delete",  u"do",         u"double",
        u"else",      u"extends", u"final",      u"finally", u"float",   u"for",        u"function",
        u"goto",      u"if",      u"implements", u"import",  u"in",      u"instanceof", u"int",
        u"interface", u"long",    u"native",     u"new",     u"package", u"private",    u"protected",
        u"public",    u"return",  u"short",      u"static",  u"super",   u"switch",     u"synchronized",
        u"throw",     u"throws",  u"transient",  u"try",     u"var",     u"typeof",     u"void",
        u"while",     u"with"};
    EXPECT_EQ(std::size(words), 51u);  // and true, false and null, which are told apart before
    for (const std::u16string word : words) {
        EXPECT_EQ(tokens(word), "RESERVED " + ascii(word));
        EXPECT_EQ(tokens(word + u"x"), "IDENFICATOR " + ascii(word) + "x");
    }
}

TEST(Tokenizer, ThisIsNoReservedWord) {
    EXPECT_EQ(tokens(u"this"), "IDENFICATOR this");
}

TEST(Tokenizer, WordClassCanBeWidened) {
    class Wider : public JSTokenizer {
      public:
        using JSTokenizer::JSTokenizer;
        int32_t classifyWord(const BString& word) const override {
            return word.equals(u"mine") ? static_cast<int32_t>(JSTT_RESERVED)
                                        : JSTokenizer::classifyWord(word);
        }
    };
    const BString text = textOf(u"mine if yours true");
    BStringInputStream stream(&text);
    Wider tokenizer(&stream);
    EXPECT_EQ(tokenizer.nextToken(false), JSTT_RESERVED);
    EXPECT_EQ(tokenizer.nextToken(false), JSTT_RESERVED);
    EXPECT_EQ(tokenizer.nextToken(false), JSTT_IDENFICATOR);
    EXPECT_EQ(tokenizer.nextToken(false), JSTT_BOOL);
}

TEST(Tokenizer, LettersOfAllScriptsMakeWords) {
    EXPECT_EQ(tokens(u"\u00e4\u0416\u4e2d1"), "IDENFICATOR \\u00E4\\u0416\\u4E2D1");
    EXPECT_EQ(tokens(u"\uFA0E"), "IDENFICATOR \\uFA0E");  // 0x8000 and above
}

TEST(Tokenizer, WordsHaveNoLengthLimit) {
    for (const size_t length : {255u, 256u, 257u, 512u, 100000u}) {
        const std::u16string word(length, u'w');
        EXPECT_EQ(tokens(word), "IDENFICATOR " + ascii(word));
    }
}

TEST(Tokenizer, CharactersThatStartNoToken) {
    EXPECT_EQ(tokens(u"#"), "ERROR_UNEXPECTEDCHAR #");
    EXPECT_EQ(tokens(u"@\\`"), "ERROR_UNEXPECTEDCHAR @, ERROR_UNEXPECTEDCHAR \\, ERROR_UNEXPECTEDCHAR `");
    EXPECT_EQ(tokens(u"\u0001\u000B\u000C\u001F\u007F"),
              "ERROR_UNEXPECTEDCHAR \\u0001, ERROR_UNEXPECTEDCHAR \\u000B, ERROR_UNEXPECTEDCHAR \\u000C, "
              "ERROR_UNEXPECTEDCHAR \\u001F, ERROR_UNEXPECTEDCHAR \\u007F");
    EXPECT_EQ(tokens(u"\u00A0\u20AC\u0661"),
              "ERROR_UNEXPECTEDCHAR \\u00A0, ERROR_UNEXPECTEDCHAR \\u20AC, ERROR_UNEXPECTEDCHAR \\u0661");
    EXPECT_EQ(tokens(u"\xD83D\xDE00"), "ERROR_UNEXPECTEDCHAR \\uD83D, ERROR_UNEXPECTEDCHAR \\uDE00");
}

TEST(Tokenizer, ScanningGoesOnBehindAnError) {
    EXPECT_EQ(tokens(u"a # 'b\nc"),
              "IDENFICATOR a, ERROR_UNEXPECTEDCHAR #, ERROR_NEEDSINGLEQUOTATION b, IDENFICATOR c");
}

TEST(TokenKind, NumbersAndNamesAreFixed) {
    EXPECT_STREQ(tokenKindName(0), "JSTT_NONE");
    EXPECT_STREQ(tokenKindName(8), "JSTT_OCTALINT");
    EXPECT_STREQ(tokenKindName(12), "JSTT_IDENFICATOR");
    EXPECT_STREQ(tokenKindName(15), "JSTT_EOF");
    EXPECT_STREQ(tokenKindName(16), "");
    EXPECT_STREQ(tokenKindName(17), "JSTT_ERROR_NEEDSINGLEQUOTATION");
    EXPECT_STREQ(tokenKindName(18), "JSTT_ERROR_NEEDDOUBLEQUOTATION");
    EXPECT_STREQ(tokenKindName(19), "JSTT_ERROR_UNEXPECTEDCHAR");
    EXPECT_STREQ(tokenKindName(20), "JSTT_ERROR_NEEDIDENFICATOR");
    EXPECT_STREQ(tokenKindName(21), "JSTT_ERROR_DUBLICATEIDENFICATOR");
    EXPECT_STREQ(tokenKindName(22), "");
    EXPECT_STREQ(tokenKindName(-1), "");
}

}  // namespace
}  // namespace quorvelin
