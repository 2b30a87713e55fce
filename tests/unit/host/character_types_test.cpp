#include "host/character_types.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "host/character_tables.h"

namespace quorvelin {
namespace {

std::uint16_t typeOf(char16_t character) {
    std::uint16_t type = 0xFFFF;
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, &character, 1, &type), 1);
    return type;
}

TEST(CharacterTypesTest, AsciiLettersAreLettersAndNothingElseIs) {
    for (char16_t c = 0; c < 128; ++c) {
        const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
        EXPECT_EQ((typeOf(c) & C1_ALPHA) != 0, letter) << static_cast<int>(c);
    }
}

TEST(CharacterTypesTest, LettersOfEachCategory) {
    EXPECT_EQ(typeOf(0x00C4), C1_ALPHA);  // Lu: A with diaeresis
    EXPECT_EQ(typeOf(0x00DF), C1_ALPHA);  // Ll: sharp s
    EXPECT_EQ(typeOf(0x01C5), C1_ALPHA);  // Lt: D with small z
    EXPECT_EQ(typeOf(0x02B0), C1_ALPHA);  // Lm: modifier h
    EXPECT_EQ(typeOf(0x05D0), C1_ALPHA);  // Lo: alef
    EXPECT_EQ(typeOf(0x4E2D), C1_ALPHA);
    EXPECT_EQ(typeOf(0xFFDC), C1_ALPHA);  // the last one of the plane
}

TEST(CharacterTypesTest, OtherCategoriesAreNoLetters) {
    EXPECT_EQ(typeOf(0x0300), 0);  // combining mark
    EXPECT_EQ(typeOf(0x2160), 0);  // Roman numeral, a letter-like number
    EXPECT_EQ(typeOf(0x0660), 0);  // Arabic digit
    EXPECT_EQ(typeOf(0x20AC), 0);  // currency sign
    EXPECT_EQ(typeOf(0x00D7), 0);  // times sign
    EXPECT_EQ(typeOf(0xE000), 0);  // private use
    EXPECT_EQ(typeOf(0xFFFF), 0);
}

TEST(CharacterTypesTest, SurrogatesHaveNoType) {
    EXPECT_EQ(typeOf(0xD800), 0);
    EXPECT_EQ(typeOf(0xDC00), 0);
    EXPECT_EQ(typeOf(0xDFFF), 0);
}

TEST(CharacterTypesTest, SpacesAreExactlyThese) {
    const std::set<char16_t> spaces = {9,      10,     11,     12,     13,     32,     0x85,   0xA0,   0x1680,
                                       0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008,
                                       0x2009, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
    for (unsigned c = 0; c < 0x10000; ++c) {
        EXPECT_EQ(typeOf(static_cast<char16_t>(c)) == C1_SPACE, spaces.count(static_cast<char16_t>(c)) == 1)
            << c;
    }
}

TEST(CharacterTypesTest, RangesAscendAndDoNotTouch) {
    for (std::size_t i = 1; i < std::size(kLetterRanges); ++i) {
        EXPECT_LE(kLetterRanges[i].first, kLetterRanges[i].last);
        EXPECT_GT(kLetterRanges[i].first, kLetterRanges[i - 1].last + 1);
    }
}

TEST(CharacterTypesTest, EveryEdgeOfARangeIsFound) {
    for (const CharacterRange& range : kLetterRanges) {
        EXPECT_EQ(typeOf(range.first), C1_ALPHA);
        EXPECT_EQ(typeOf(range.last), C1_ALPHA);
        EXPECT_NE(typeOf(static_cast<char16_t>(range.first - 1)), C1_ALPHA);
        EXPECT_NE(typeOf(static_cast<char16_t>(range.last + 1)), C1_ALPHA);
    }
}

TEST(CharacterTypesTest, CountLimitsWhatIsWritten) {
    std::uint16_t types[3] = {7, 7, 7};
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, u"a b", 2, types), 1);
    EXPECT_EQ(types[0], C1_ALPHA);
    EXPECT_EQ(types[1], C1_SPACE);
    EXPECT_EQ(types[2], 7);
}

TEST(CharacterTypesTest, NegativeCountTakesWholeTextWithItsNul) {
    std::uint16_t types[4] = {7, 7, 7, 7};
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, u"a ", -1, types), 1);
    EXPECT_EQ(types[0], C1_ALPHA);
    EXPECT_EQ(types[1], C1_SPACE);
    EXPECT_EQ(types[2], 0);
    EXPECT_EQ(types[3], 7);
}

TEST(CharacterTypesTest, AnyLocaleGivesSameAnswers) {
    const char16_t alef = 0x05D0;
    for (const std::uint32_t locale : {0x0000u, 0x0409u, 0x041Fu}) {
        std::uint16_t type = 0;
        EXPECT_EQ(GetStringTypeExW(locale, CT_CTYPE1, &alef, 1, &type), 1);
        EXPECT_EQ(type, C1_ALPHA);
    }
}

TEST(CharacterTypesTest, OtherTypeClassOrMissingArgumentFails) {
    std::uint16_t type = 7;
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, 2, u"a", 1, &type), 0);
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, u"a", 0, &type), 0);
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, nullptr, 1, &type), 0);
    EXPECT_EQ(GetStringTypeExW(LOCALE_USER_DEFAULT, CT_CTYPE1, u"a", 1, nullptr), 0);
    EXPECT_EQ(type, 7);
}

}  // namespace
}  // namespace quorvelin
