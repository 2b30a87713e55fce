#include "quorvelin/source_text.h"

#include <gtest/gtest.h>

#include "foundation/stream.h"
#include "frontend/parser.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin::tool {
namespace {

using support::ascii;

SourceText decode(std::string_view bytes) {
    std::optional<SourceText> source = SourceText::decode(bytes);
    return std::move(*source);
}

std::string text(std::string_view bytes) {
    return ascii(decode(bytes).text());
}

TEST(SourceText, Encodings) {
    EXPECT_EQ(text("a\xC3\xA4"), "a\\u00E4");
    EXPECT_EQ(text("\xEF\xBB\xBF"
                   "a"),
              "a");
    EXPECT_EQ(text(std::string_view("\xFF\xFE"
                                    "a\0",
                                    4)),
              "a");
    EXPECT_EQ(text(std::string_view("\xFE\xFF"
                                    "\0a",
                                    4)),
              "a");
    EXPECT_EQ(text(""), "");
    EXPECT_EQ(text("\xEF\xBB\xBF"), "");
}

TEST(SourceText, FirstByteOneMakesASavedTreeOfBytes) {
    const SourceText source = decode("\x01\xC3\xA4\xFF");
    EXPECT_TRUE(source.isSavedTree());
    EXPECT_EQ(ascii(source.text()), "\\u0001\\u00C3\\u00A4\\u00FF");
    EXPECT_FALSE(decode("a\x01").isSavedTree());
    EXPECT_FALSE(decode("").isSavedTree());
}

TEST(SourceText, Lines) {
    const SourceText source = decode("one\ntwo\r\nthree\rfour\n\rfive\n\nseven");
    const char16_t* const lines[] = {u"one", u"two", u"three", u"four", u"five", u"", u"seven"};
    for (int32_t number = 1; number <= 7; ++number) EXPECT_EQ(source.line(number), lines[number - 1]);
    EXPECT_EQ(source.line(0), u"");
    EXPECT_EQ(source.line(8), u"");
    EXPECT_EQ(decode("").line(1), u"");
}

TEST(SourceText, NulEndsTheText) {
    const SourceText source = decode(std::string_view("one\ntw\0o\nthree", 15));
    EXPECT_EQ(source.line(2), u"tw");
    EXPECT_EQ(source.line(3), u"");
}

// The place of the token that ends in the only "#" of a script: `#` starts no token, so the tokenizer stands
// at it.
void expectPlaceOfHash(std::string_view script) {
    const SourceText source = decode(script);
    BStringInputStream stream(&source.text());
    JSTokenizer tokenizer(&stream);
    while (tokenizer.nextToken(false) != JSTT_ERROR_UNEXPECTEDCHAR)
        ASSERT_NE(tokenizer.kind(), JSTT_EOF) << script;
    const SourceText::Place place = source.placeOf(tokenizer.line(), tokenizer.column());
    EXPECT_EQ(place.line, tokenizer.line()) << script;
    EXPECT_EQ(place.index, source.line(place.line).find(u'#'))
        << script << " at column " << tokenizer.column();
}

TEST(SourceText, PlaceOfEveryKindOfColumn) {
    for (const char* script : {
             "#",
             "abc #",
             "\t#",
             "ab\t c\t#",
             "a\n#",
             "a\n  #",
             "a\n\t#",
             "a\n \t #",
             "a\nb #",
             "a\nb\t#",
             "a\n\n\n  b #",
             "a\n+ #",
             "a\n  + #",
             "a\n{#",
             "a\n  {\t#",
             "a\n++#",
             "a\n ++ #",
             "a // c\n#",
             "a // c\n  #",
             "a // c\n\t#",
             "a // c\n+ #",
             "a // c\n// d\n  b #",
             "a /* b\n c */ #",
             "a /* b\n\tc */ #",
             "a /* b\n* c */ #",
             "'a\n+b' #",
             "a\r\nb #",
             "a\r\n\tb #",
             "\n#",
             "\n\n  #",
             "\xC3\xA4\n\xC3\xA4 #",
         }) {
        expectPlaceOfHash(script);
    }
}

// The place of a script's syntax error as "line:index".
std::string placeOfError(std::string_view script) {
    const SourceText source = decode(script);
    BStringInputStream stream(&source.text());
    JSParser parser(&stream);
    const Owned<JSNode> root(parser.parseProgram());
    if (root->kind != kErrorKind) return "no error";
    const SourceText::Place place = source.placeOf(root->line, root->column);
    return std::to_string(place.line) + ":" + std::to_string(place.index);
}

TEST(SourceText, PlaceOfALineEndIsBehindTheLine) {
    EXPECT_EQ(placeOfError("x y\nz"), "1:3");
    EXPECT_EQ(placeOfError("x y  \n\n\n  z"), "1:3");
    EXPECT_EQ(placeOfError("a\nx y // c\nz"), "2:3");
}

TEST(SourceText, PlaceOfTheEndOfTheText) {
    EXPECT_EQ(placeOfError("if (a) {"), "1:7");  // counted like the last character
    EXPECT_EQ(placeOfError("if (a) {\n"), "1:8");
    EXPECT_EQ(placeOfError("if (a) {\n b\n\n  \n"), "2:2");
    EXPECT_EQ(placeOfError("("), "1:0");
}

TEST(SourceText, PositionsThatDoNotExistStayInsideTheText) {
    const SourceText source = decode("ab\ncd");
    EXPECT_EQ(source.placeOf(0, 0), (SourceText::Place{1, 0}));
    EXPECT_EQ(source.placeOf(1, -5), (SourceText::Place{1, 0}));
    EXPECT_EQ(source.placeOf(1, 100), (SourceText::Place{1, 2}));
    EXPECT_EQ(source.placeOf(2, 100), (SourceText::Place{2, 2}));
    EXPECT_EQ(source.placeOf(99, 1), (SourceText::Place{1, 2}));
    EXPECT_EQ(decode("").placeOf(5, 5), (SourceText::Place{1, 0}));
    EXPECT_EQ(decode("\n \n").placeOf(3, 0), (SourceText::Place{1, 0}));
}

}  // namespace
}  // namespace quorvelin::tool
