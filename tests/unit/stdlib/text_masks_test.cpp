#include "stdlib/util/text_masks.h"

#include <gtest/gtest.h>

#include <string>

#include "host/allocator.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;

std::string fit(const char16_t* mask, const char16_t* text) {
    return ascii(fitIntoMask(mask, text));
}

TEST(FitIntoMask, TakesDigitsAndKeepsLiterals) {
    EXPECT_EQ(fit(u"(999) 999", u"a12b3456"), "(123) 456");
    EXPECT_EQ(fit(u"99-99", u"1"), "1-");
    EXPECT_EQ(fit(u"9b9", u"x"), "b");
    EXPECT_EQ(fit(u"", u"abc"), "");
}

TEST(FitIntoMask, Classes) {
    EXPECT_EQ(fit(u"?*", u" x y"), " x y");
    EXPECT_EQ(fit(u"AAA", u"1a-b2c"), "abc");
    EXPECT_EQ(fit(u"A", u"1\u0416"), "\\u0416");
    EXPECT_EQ(fit(u"XXX", u"-1-a-"), "1a");
    EXPECT_EQ(fit(u"9*", u"ab1cd"), "1cd");
    EXPECT_EQ(fit(u"*9*?X", u"ab"), "ab");
    EXPECT_EQ(fit(u"9", u"\u0661"), "");  // a digit of another script is none
}

TEST(FitIntoMask, CaseModes) {
    EXPECT_EQ(fit(u">A<A", u"hi"), "Hi");
    EXPECT_EQ(fit(u">A<A", u"HI"), "Hi");
    EXPECT_EQ(fit(u">ab<CD=eF", u""), "ABcdeF");
    EXPECT_EQ(fit(u">*", u"aB\u00e9"), "AB\\u00E9");
    EXPECT_EQ(fit(u"<?X", u"QR"), "qr");
    EXPECT_EQ(fit(u">?=?", u"ab"), "Ab");
}

TEST(FitIntoMask, Escapes) {
    EXPECT_EQ(fit(u"\\9\\A\\\\\\*", u"1a"), "9A\\*");
    EXPECT_EQ(fit(u"\\n\\t\\a\\b\\f\\r\\v", u""), "\n\\u0009\\u0007\\u0008\\u000C\\u000D\\u000B");
    EXPECT_EQ(fit(u"\\x41B", u""), "AB");
    EXPECT_EQ(fit(u"\\xg", u""), "xg");
    EXPECT_EQ(fit(u"a\\", u""), "a");
    EXPECT_EQ(fit(u">\\qb", u""), "qB");
}

TEST(FitIntoMask, QuirkAnOctalEscapeSwallowsTheNextCharacter) {
    EXPECT_EQ(fit(u"\\101bc", u""), "Ac");
    EXPECT_EQ(fit(u"\\7", u""), "\\u0007");
}

TEST(FitIntoMask, SurvivesEveryFailedAllocation) {
    const BString mask(u"abcdefghijklmnopqrstuvwxyz?");
    const BString text(u"x");
    for (uint64_t count = 1;; ++count) {
        failAllocation(count);
        const BString result = fitIntoMask(mask, text);
        const bool hasFailed = allocationHasFailed();
        cancelAllocationFailure();
        if (!hasFailed) {
            EXPECT_EQ(result.length(), 27);
            break;
        }
        EXPECT_TRUE(result.isEmpty());
    }
}

std::string date(const char16_t* format, int64_t seconds) {
    return ascii(formatDate(format, seconds));
}

constexpr int64_t kMoment = 1794646773;  // Saturday 14 November 2026, 08:59:33

TEST(FormatDate, Examples) {
    EXPECT_EQ(date(u"dd.mm.yyyy", 0), "01.01.1970");
    EXPECT_EQ(date(u"ddd mmm", 0), "Thu Janu");
    EXPECT_EQ(date(u"h:MM tt", 43200), "12:00 pm");
    EXPECT_EQ(date(u"ddd mmm d H:MM:ss yyyy", kMoment), "Sat Nove 14 8:59:33 2026");
}

TEST(FormatDate, Fields) {
    EXPECT_EQ(date(u"m mm mmm mmmm mmmmm", kMoment), "11 11 Nove November November");
    EXPECT_EQ(date(u"m mm", 86400), "1 01");
    EXPECT_EQ(date(u"d dd ddd dddd ddddd", kMoment), "14 14 Sat Saturday Saturday");
    EXPECT_EQ(date(u"y yy yyy yyyy yyyyy", kMoment), "2026 26 2026 2026 2026");
    EXPECT_EQ(date(u"H HH HHH", kMoment), "8 08 08");
    EXPECT_EQ(date(u"h hh hhh", 0), "12 12 12");
    EXPECT_EQ(date(u"h hh", 13 * 3600), "1 01");
    EXPECT_EQ(date(u"M MM MMM", 300), "5 05 05");
    EXPECT_EQ(date(u"s ss sss", 7), "7 07 07");
    EXPECT_EQ(date(u"t tt ttt", 0), "a am am");
    EXPECT_EQ(date(u"t tt", 12 * 3600), "p pm");
}

TEST(FormatDate, QuirkTheShortMonthHasFourLetters) {
    EXPECT_EQ(date(u"mmm", 0), "Janu");
    EXPECT_EQ(date(u"mmm", 86400 * 130), "May");
}

TEST(FormatDate, OtherCharactersAreCopied) {
    EXPECT_EQ(date(u"[x/Y-D]", 0), "[x/Y-D]");
    EXPECT_EQ(date(u"\\m\\m mm \\\\", 0), "mm 01 \\");
    EXPECT_EQ(date(u"m\\", 0), "1");
    EXPECT_EQ(date(u"m\\mm", 0), "1m1");
}

TEST(FormatDate, FieldsAreThoseOfTheCalendar) {
    EXPECT_EQ(date(u"d.m.", 31 * 86400), "32.1.");
}

TEST(FormatDate, YearsBeforeZero) {
    EXPECT_EQ(date(u"y", -62198755200).size(), 4u);
    EXPECT_EQ(date(u"yyyy", -64000000000), "-059");
    EXPECT_EQ(date(u"yy", -64000000000), "-59");
}

}  // namespace
}  // namespace quorvelin
