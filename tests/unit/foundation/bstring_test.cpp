#include "foundation/bstring.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <utility>

#include "host/allocator.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;

class BStringTest : public testing::Test {
  protected:
    void TearDown() override { cancelAllocationFailure(); }
};

bool isCheapEmpty(const BString& text) {
    return text.length() == 0 && text.capacity() == 0 && text.data() == BString().data() &&
           text.data()[0] == 0;
}

TEST_F(BStringTest, EmptyTextAllocatesNothing) {
    failAllocation(1, AllocationFailure::onwards);
    const BString text;
    const BString ofNull(static_cast<const char16_t*>(nullptr));
    EXPECT_FALSE(allocationHasFailed());
    EXPECT_TRUE(isCheapEmpty(text));
    EXPECT_TRUE(isCheapEmpty(ofNull));
}

TEST_F(BStringTest, CapacityIsTheNextMultipleOf32WithRoomForTheNul) {
    for (const auto& [length, capacity] :
         {std::pair{0, 32}, {1, 32}, {31, 32}, {32, 64}, {33, 64}, {63, 64}, {64, 96}}) {
        const BString text = textOf(std::u16string(static_cast<size_t>(length), u'x'));
        EXPECT_EQ(text.length(), length);
        EXPECT_EQ(text.capacity(), capacity) << length;
        EXPECT_EQ(text.data()[length], 0);
    }
}

TEST_F(BStringTest, EmptyLiteralOwnsABuffer) {
    const BString text(u"");
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.capacity(), 32);
}

TEST_F(BStringTest, CopyOfTheEmptyTextAllocates32Characters) {
    const BString empty;
    const BString copy(
        empty);  // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    EXPECT_EQ(copy.length(), 0);
    EXPECT_EQ(copy.capacity(), 32);
    EXPECT_EQ(copy, empty);
}

TEST_F(BStringTest, CopySizesForTheSourcesLengthNotItsCapacity) {
    BString text = textOf(std::u16string(100, u'x'));
    ASSERT_TRUE(text.reserve(3));
    const BString copy(text);
    EXPECT_EQ(text.capacity(), 128);
    EXPECT_EQ(copy.capacity(), 32);
}

TEST_F(BStringTest, MoveTakesTheBuffer) {
    BString text(u"abc");
    const char16_t* const buffer = text.data();
    const BString moved(std::move(text));
    EXPECT_EQ(moved.data(), buffer);
    EXPECT_TRUE(isCheapEmpty(text));  // NOLINT(bugprone-use-after-move): that state is promised
}

TEST_F(BStringTest, GrowingFrom31To32ReallocatesAndUpTo31DoesNot) {
    BString text(u"");
    const char16_t* const buffer = text.data();
    failAllocation(1, AllocationFailure::onwards);
    for (int i = 0; i < 31; ++i) ASSERT_TRUE(text.append(u'x'));
    EXPECT_EQ(text.data(), buffer);
    EXPECT_EQ(text.capacity(), 32);
    EXPECT_FALSE(text.append(u'y'));
    cancelAllocationFailure();
    EXPECT_TRUE(text.append(u'y'));
    EXPECT_EQ(text.capacity(), 64);
    EXPECT_EQ(ascii(text), std::string(31, 'x') + "y");
}

TEST_F(BStringTest, ReserveNeverShrinks) {
    BString text = textOf(std::u16string(100, u'x'));
    ASSERT_TRUE(text.reserve(5));
    EXPECT_EQ(text.length(), 5);
    EXPECT_EQ(text.capacity(), 128);
}

TEST_F(BStringTest, ReserveOfTheCheapEmptyTextAllocates) {
    BString text;
    ASSERT_TRUE(text.reserve(0));
    EXPECT_EQ(text.capacity(), 32);
    BString longer;
    ASSERT_TRUE(longer.reserve(40));
    EXPECT_EQ(longer.length(), 40);
    EXPECT_EQ(longer.capacity(), 64);
}

TEST_F(BStringTest, GrowKeepsTheContent) {
    BString text(u"abc");
    ASSERT_TRUE(text.grow(50));
    EXPECT_EQ(text.length(), 50);
    EXPECT_EQ(std::memcmp(text.data(), u"abc", 8), 0);
    BString empty;
    ASSERT_TRUE(empty.grow(3));
    EXPECT_EQ(empty.length(), 3);
    EXPECT_EQ(empty.data()[0], 0);
}

TEST_F(BStringTest, LengthsThatCannotBeAreRefused) {
    BString text(u"abc");
    EXPECT_FALSE(text.reserve(-1));
    EXPECT_FALSE(text.reserve(INT_MAX));
    EXPECT_FALSE(text.grow(BString::kMaximumLength + 1));
    EXPECT_FALSE(text.append(u"x", BString::kMaximumLength));
    EXPECT_EQ(ascii(text), "abc");
}

TEST_F(BStringTest, ClearGivesTheCheapState) {
    BString text(u"abc");
    text.clear();
    EXPECT_TRUE(isCheapEmpty(text));
    text.clear();
    EXPECT_TRUE(isCheapEmpty(text));
}

TEST_F(BStringTest, AssignmentReusesTheBuffer) {
    const BString shorter(u"de");
    BString other = textOf(std::u16string(60, u'x'));
    const char16_t* const otherBuffer = other.data();
    other = shorter;
    EXPECT_EQ(other.data(), otherBuffer);
    EXPECT_EQ(other.capacity(), 64);
    EXPECT_EQ(other, shorter);
}

TEST_F(BStringTest, AssigningTheEmptyTextKeepsTheBuffer) {
    BString text(u"abc");
    const BString empty;
    text = empty;
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.capacity(), 32);
    EXPECT_EQ(text.data()[0], 0);
    BString cheap;
    cheap = empty;
    EXPECT_EQ(cheap.capacity(), 32);
}

TEST_F(BStringTest, AssigningATextToItselfDoesNothing) {
    BString text(u"abc");
    const char16_t* const buffer = text.data();
    BString& alias = text;
    text = alias;
    EXPECT_EQ(text.data(), buffer);
    EXPECT_EQ(ascii(text), "abc");
    BString empty;
    BString& emptyAlias = empty;
    empty = emptyAlias;
    EXPECT_TRUE(isCheapEmpty(empty));
}

TEST_F(BStringTest, Concatenation) {
    BString text;
    text += u"abc";
    EXPECT_EQ(text.capacity(), 32);
    text += BString(u"def");
    text += BString();
    EXPECT_EQ(ascii(text), "abcdef");
    EXPECT_EQ(text.data()[6], 0);
    text += text;
    EXPECT_EQ(ascii(text), "abcdefabcdef");
    for (int i = 0; i < 4; ++i) text += text;  // the buffer moves on the way
    EXPECT_EQ(text.length(), 192);
    EXPECT_EQ(text.capacity(), 224);
    EXPECT_EQ(ascii(text).substr(180), "abcdefabcdef");
}

TEST_F(BStringTest, AppendingAPartOfItself) {
    BString text = textOf(std::u16string(30, u'x') + u"y");
    ASSERT_TRUE(text.append(text.data() + 29, 2));
    EXPECT_EQ(ascii(text), std::string(30, 'x') + "yxy");
}

TEST_F(BStringTest, ConcatenatingToTheEmptyTextAllocatesAlsoForNothing) {
    BString text;
    text += BString();
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.capacity(), 32);
}

TEST_F(BStringTest, EqualityIsOfLengthAndUnits) {
    EXPECT_EQ(BString(u"abc"), BString(u"abc"));
    EXPECT_FALSE(BString(u"abc") == BString(u"abd"));
    EXPECT_FALSE(BString(u"abc") == BString(u"ab"));
    EXPECT_EQ(BString(), BString(u""));
    EXPECT_FALSE(textOf(std::u16string_view(u"a\0b", 3)) == textOf(std::u16string_view(u"a\0c", 3)));
    EXPECT_TRUE(BString(u"abc").equals(u"abc"));
    EXPECT_FALSE(BString(u"abc").equals(u"abcd"));
}

TEST_F(BStringTest, OrderIsByUnitsUpToTheFirstNul) {
    EXPECT_EQ(BString(u"abc").compare(BString(u"abc")), 0);
    EXPECT_LT(BString(u"abc").compare(BString(u"abd")), 0);
    EXPECT_GT(BString(u"abc").compare(BString(u"ab")), 0);
    EXPECT_LT(BString().compare(BString(u"a")), 0);
    EXPECT_GT(BString(u"\uFFFF").compare(BString(u"\u0001")), 0);
    EXPECT_EQ(textOf(std::u16string_view(u"a\0b", 3)).compare(BString(u"a")), 0);
}

TEST_F(BStringTest, Substr) {
    const BString text(u"abcdef");
    EXPECT_EQ(ascii(text.substr(2, 3)), "cde");
    EXPECT_EQ(ascii(text.substr(2, -1)), "cdef");
    EXPECT_EQ(ascii(text.substr(2, 100)), "cdef");
    EXPECT_EQ(text.substr(1, 2).capacity(), 32);
    EXPECT_EQ(text.substr(1, 2).data()[2], 0);
}

TEST_F(BStringTest, SubstrToTheEndWithNothingLeftIsTheCheapState) {
    const BString text(u"abc");
    EXPECT_TRUE(isCheapEmpty(text.substr(3, -1)));
    EXPECT_TRUE(isCheapEmpty(BString().substr(0, -1)));
}

TEST_F(BStringTest, SubstrOfNoCharactersOwnsABuffer) {
    EXPECT_EQ(BString(u"abc").substr(1, 0).capacity(), 32);
    EXPECT_EQ(BString(u"abc").substr(3, 5).capacity(), 32);
}

TEST_F(BStringTest, StartsWithAndRemovePrefix) {
    BString text(u"+=++");
    EXPECT_TRUE(text.startsWith(u"+="));
    EXPECT_TRUE(text.startsWith(u""));
    EXPECT_FALSE(text.startsWith(u"+=+++"));
    text.removePrefix(2);
    EXPECT_EQ(ascii(text), "++");
    text.removePrefix(0);
    EXPECT_EQ(ascii(text), "++");
    text.removePrefix(2);
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.data()[0], 0);
}

TEST_F(BStringTest, Format) {
    EXPECT_EQ(ascii(BString::format(L"%d and %ls", 12, L"text")), "12 and text");
    EXPECT_EQ(ascii(BString::format(L"nothing")), "nothing");
    EXPECT_EQ(ascii(BString::format(L"")), "");
    const std::wstring wide(1000, L'x');
    EXPECT_EQ(ascii(BString::format(L"<%ls>", wide.c_str())), "<" + std::string(1000, 'x') + ">");
}

TEST_F(BStringTest, FormattedTextGrowsInSteps) {
    // The first try has room for 32 characters, each further one for 16 more than the capacity before.
    EXPECT_EQ(BString::format(L"%ls", std::wstring(31, L'x').c_str()).capacity(), 32);
    EXPECT_EQ(BString::format(L"%ls", std::wstring(32, L'x').c_str()).capacity(), 64);
    EXPECT_EQ(BString::format(L"%ls", std::wstring(64, L'x').c_str()).capacity(), 96);
}

TEST_F(BStringTest, MayHoldNuls) {
    BString text = textOf(std::u16string_view(u"a\0b", 3));
    EXPECT_EQ(text.length(), 3);
    text += textOf(std::u16string_view(u"\0c", 2));
    EXPECT_EQ(ascii(text), "a\\u0000b\\u0000c");
}

TEST_F(BStringTest, FailedAllocationLeavesAValidText) {
    failAllocation(1, AllocationFailure::onwards);
    const BString made(u"abc");
    EXPECT_TRUE(isCheapEmpty(made));
    BString text;
    EXPECT_FALSE(text.append(u"abc"));
    EXPECT_TRUE(isCheapEmpty(text));
    EXPECT_FALSE(text.reserve(4));
    EXPECT_TRUE(isCheapEmpty(text));
    text = made;
    EXPECT_TRUE(isCheapEmpty(text));
    EXPECT_TRUE(isCheapEmpty(BString::format(L"%d", 5)));
}

TEST_F(BStringTest, FailedGrowthKeepsTheOldText) {
    BString text(u"abc");
    const BString longer = textOf(std::u16string(100, u'x'));
    failAllocation(1, AllocationFailure::onwards);
    EXPECT_FALSE(text.append(longer));
    EXPECT_FALSE(text.grow(100));
    EXPECT_FALSE(text.reserve(100));
    text += longer;
    text = longer;
    EXPECT_EQ(ascii(text), "abc");
    EXPECT_EQ(text.capacity(), 32);
    const BString copy(longer);
    EXPECT_TRUE(isCheapEmpty(copy));
    EXPECT_TRUE(isCheapEmpty(longer.substr(1, 50)));
}

TEST_F(BStringTest, FormatAtEveryFailingAllocation) {
    const std::wstring wide(300, L'x');
    bool failed = true;
    for (uint64_t count = 1; failed; ++count) {
        failAllocation(count);
        const BString text = BString::format(L"%ls", wide.c_str());
        failed = allocationHasFailed();
        EXPECT_EQ(text.length(), failed ? 0 : 300);
    }
}

}  // namespace
}  // namespace quorvelin
