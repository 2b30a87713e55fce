#include "quorvelin/text_encoding.h"

#include <gtest/gtest.h>

#include "support/script_text.h"

namespace quorvelin::tool {
namespace {

using support::ascii;

std::string decoded(std::string_view bytes) {
    return ascii(decodeUtf8(bytes));
}

TEST(Utf8, CharactersOfAllLengths) {
    EXPECT_EQ(decoded("a\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80"), "a\\u00E4\\u4E2D\\uD83D\\uDE00");
    EXPECT_EQ(decoded("\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
              "\\u07FF\\u0800\\uFFFF\\uD800\\uDC00\\uDBFF\\uDFFF");
    EXPECT_EQ(decodeUtf8(std::string_view("a\0b", 3)).size(), 3u);
}

TEST(Utf8, WhatIsNotValidBecomesTheReplacementCharacter) {
    EXPECT_EQ(decoded("a\x80z"), "a\\uFFFDz");
    EXPECT_EQ(decoded("\xFF\xFE"), "\\uFFFD\\uFFFD");
    EXPECT_EQ(decoded("\xC3"), "\\uFFFD");
    EXPECT_EQ(decoded("\xC3z"), "\\uFFFDz");
    EXPECT_EQ(decoded("\xE4\xB8z"), "\\uFFFDz");
    EXPECT_EQ(decoded("\xF0\x9F\x98z"), "\\uFFFDz");
    EXPECT_EQ(decoded("\xC0\x80"), "\\uFFFD\\uFFFD");                        // longer than it needs to be
    EXPECT_EQ(decoded("\xE0\x9F\xBF"), "\\uFFFD\\uFFFD\\uFFFD");             // the same
    EXPECT_EQ(decoded("\xED\xA0\x80"), "\\uFFFD\\uFFFD\\uFFFD");             // a surrogate
    EXPECT_EQ(decoded("\xF4\x90\x80\x80"), "\\uFFFD\\uFFFD\\uFFFD\\uFFFD");  // above the last character
    EXPECT_EQ(decoded("\xE4\xC3\xA4"), "\\uFFFD\\u00E4");
}

TEST(Utf16, BothByteOrders) {
    EXPECT_EQ(ascii(decodeUtf16(std::string_view("a\0\x34\x12", 4), false)), "a\\u1234");
    EXPECT_EQ(ascii(decodeUtf16(std::string_view("\0a\x12\x34", 4), true)), "a\\u1234");
    EXPECT_EQ(ascii(decodeUtf16(std::string_view("\x00\xD8", 2), false)), "\\uD800");
    EXPECT_EQ(ascii(decodeUtf16(std::string_view("a\0b", 3), false)), "a\\uFFFD");
}

TEST(Utf8, WrittenTextReadsBack) {
    const std::u16string text = u"a\u00e4\u07ff\u0800\u4e2d\ufffd\xD83D\xDE00\xDBFF\xDFFF";
    EXPECT_EQ(decodeUtf8(encodeUtf8(text)), text);
}

TEST(Utf8, UnpairedSurrogatesAreWrittenAsTheReplacementCharacter) {
    EXPECT_EQ(encodeUtf8(std::u16string{0xD800}), "\xEF\xBF\xBD");
    EXPECT_EQ(encodeUtf8(std::u16string{0xDC00, u'a'}),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(encodeUtf8(std::u16string{0xD800, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(ShownText, ControlCharactersAreEscaped) {
    EXPECT_EQ(shownOnOneLine(u"a\n\r\t\\\u001B\u007F\u0085z"), "a\\n\\r\\t\\\\\\u001B\\u007F\\u0085z");
    EXPECT_EQ(shownOnOneLine(std::u16string_view(u"\0", 1)), "\\u0000");
    EXPECT_EQ(shownOnOneLine(u"\u00e4\u4e2d"), "\xC3\xA4\xE4\xB8\xAD");
}

TEST(JsonText, EverythingOutsideAsciiIsEscaped) {
    EXPECT_EQ(jsonString(u"a\"b\\c\n\u0001\u00e4"), "\"a\\\"b\\\\c\\n\\u0001\\u00E4\"");
    EXPECT_EQ(jsonString(std::u16string{0xD800, u'a'}), "\"\\uD800a\"");
}

}  // namespace
}  // namespace quorvelin::tool
