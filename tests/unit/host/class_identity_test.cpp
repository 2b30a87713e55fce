#include "host/class_identity.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <string>

namespace quorvelin {
namespace {

struct Record final : stype_info {
    using stype_info::stype_info;
    const char* name() const override { return "Record"; }
    const char16_t* wideName() const override { return u"Record"; }
    void* queryOn(void* object, IBQueryVisitor*) const override { return object; }
};

constinit const Record builtBeforeAnyCode(0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1);

TEST(BGuidTest, DefaultIsAllZero) {
    EXPECT_EQ(BGuid(), BGuid(0, 0, 0, 0));
}

TEST(BGuidTest, SetStoresFourWords) {
    BGuid guid;
    guid.set(1, 2, 3, 4);
    EXPECT_EQ(guid.words[0], 1u);
    EXPECT_EQ(guid.words[1], 2u);
    EXPECT_EQ(guid.words[2], 3u);
    EXPECT_EQ(guid.words[3], 4u);
}

TEST(BGuidTest, EveryWordCountsInEquality) {
    const BGuid guid(1, 2, 3, 4);
    EXPECT_EQ(guid, BGuid(1, 2, 3, 4));
    EXPECT_NE(guid, BGuid(9, 2, 3, 4));
    EXPECT_NE(guid, BGuid(1, 9, 3, 4));
    EXPECT_NE(guid, BGuid(1, 2, 9, 4));
    EXPECT_NE(guid, BGuid(1, 2, 3, 9));
}

TEST(BGuidTest, HashIsFirstWord) {
    EXPECT_EQ(BGuid(0xDEADBEEF, 2, 3, 4).hash(), 0xDEADBEEFu);
}

TEST(BGuidTest, ParseFillsBytesInStorageOrder) {
    BGuid guid;
    ASSERT_TRUE(guid.parse(u"000102030405060708090a0b0c0d0e0f"));
    unsigned char bytes[16];
    std::memcpy(bytes, guid.words, sizeof bytes);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(bytes[i], i);
    }
    if (std::endian::native == std::endian::little) {
        EXPECT_EQ(guid.words[0], 0x03020100u);
    }
}

TEST(BGuidTest, ParseTakesBothCasesOfLetters) {
    BGuid lower;
    BGuid upper;
    ASSERT_TRUE(lower.parse(u"abcdefabcdefabcdefabcdefabcdefab"));
    ASSERT_TRUE(upper.parse(u"ABCDEFABCDEFABCDEFABCDEFABCDEFAB"));
    EXPECT_EQ(lower, upper);
    unsigned char first;
    std::memcpy(&first, lower.words, 1);
    EXPECT_EQ(first, 0xAB);
}

TEST(BGuidTest, ParseTakesAnyOtherCharacterForUpperCaseLetter) {
    BGuid guid;
    // 'G' stands six places behind 'A' and so counts 16; '@' stands one before it and counts 9.
    ASSERT_TRUE(guid.parse(u"0G@0" + std::u16string(28, u'0')));
    unsigned char bytes[2];
    std::memcpy(bytes, guid.words, sizeof bytes);
    EXPECT_EQ(bytes[0], 16);
    EXPECT_EQ(bytes[1], 0x90);
}

TEST(BGuidTest, ParseRefusesShorterText) {
    BGuid guid(1, 2, 3, 4);
    EXPECT_FALSE(guid.parse(std::u16string(31, u'0')));
    EXPECT_FALSE(guid.parse(u""));
    EXPECT_EQ(guid, BGuid(1, 2, 3, 4));
}

TEST(BGuidTest, ParseIgnoresWhatFollowsThe32Characters) {
    BGuid guid(1, 2, 3, 4);
    EXPECT_TRUE(guid.parse(std::u16string(32, u'0') + u"ffff"));
    EXPECT_EQ(guid, BGuid());
}

TEST(StypeInfoTest, TextHoldsFourUpperCaseWords) {
    EXPECT_STREQ(builtBeforeAnyCode.text, "0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1 ");
    EXPECT_EQ(std::strlen(builtBeforeAnyCode.text), 47u);
}

TEST(StypeInfoTest, WordWithFewerThanEightDigitsStaysPaddedByTemplateZeros) {
    const Record record(0x3617278, 0xA, 0, 0x10);
    EXPECT_STREQ(record.text, "0x03617278, 0x0000000A, 0x00000000, 0x00000010 ");
}

}  // namespace
}  // namespace quorvelin
