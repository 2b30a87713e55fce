#include "foundation/barray.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvelin {
namespace {

class BArrayTest : public testing::Test {
  protected:
    void TearDown() override { cancelAllocationFailure(); }
};

std::vector<int> contents(const BArray<int>& array) {
    return std::vector<int>(array.data(), array.data() + array.count());
}

TEST_F(BArrayTest, StartsWithEightZeroedPlaces) {
    const BArray<int*> array;
    EXPECT_EQ(array.count(), 0);
    EXPECT_EQ(array.capacity(), 8);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(array.data()[i], nullptr);
}

TEST_F(BArrayTest, StartCapacityCanBeGiven) {
    EXPECT_EQ(BArray<int>(3).capacity(), 3);
    BArray<int> none(0);
    EXPECT_EQ(none.capacity(), 0);
    ASSERT_TRUE(none.append(5));
    EXPECT_EQ(none.at(0), 5);
}

TEST_F(BArrayTest, InsertIntoAFullArrayDoublesItWithAZeroedTail) {
    BArray<int> array;
    for (int i = 0; i < 8; ++i) ASSERT_TRUE(array.append(i + 1));
    EXPECT_EQ(array.capacity(), 8);
    ASSERT_TRUE(array.insert(0, 99));
    EXPECT_EQ(array.capacity(), 16);
    EXPECT_EQ(contents(array), (std::vector<int>{99, 1, 2, 3, 4, 5, 6, 7, 8}));
    for (int i = 9; i < 16; ++i) EXPECT_EQ(array.data()[i], 0) << i;
}

TEST_F(BArrayTest, InsertOfManyTakesWhatItNeeds) {
    BArray<int> array;
    ASSERT_TRUE(array.append(1));
    ASSERT_TRUE(array.insert(1, 7, 30));
    EXPECT_EQ(array.capacity(), 31);
    EXPECT_EQ(array.count(), 31);
    ASSERT_TRUE(array.insert(0, 8, 2));
    EXPECT_EQ(array.capacity(), 62);
}

TEST_F(BArrayTest, InsertMovesTheTailUp) {
    BArray<int> array;
    for (int i = 1; i <= 4; ++i) ASSERT_TRUE(array.append(i));
    ASSERT_TRUE(array.insert(2, 9, 3));
    EXPECT_EQ(contents(array), (std::vector<int>{1, 2, 9, 9, 9, 3, 4}));
    EXPECT_TRUE(array.insert(1, 5, 0));
    EXPECT_EQ(array.count(), 7);
}

TEST_F(BArrayTest, ElementMayLieInTheArrayItself) {
    BArray<int> array;
    for (int i = 1; i <= 8; ++i) ASSERT_TRUE(array.append(i));
    ASSERT_TRUE(array.insert(0, array.at(7), 2));
    EXPECT_EQ(array.at(0), 8);
    EXPECT_EQ(array.at(1), 8);
}

TEST_F(BArrayTest, EraseHandsTheElementBackAndKeepsTheCapacity) {
    BArray<int> array;
    for (int i = 1; i <= 9; ++i) ASSERT_TRUE(array.append(i));
    EXPECT_EQ(array.erase(0), 1);
    EXPECT_EQ(array.erase(3), 5);
    EXPECT_EQ(array.eraseLast(), 9);
    EXPECT_EQ(contents(array), (std::vector<int>{2, 3, 4, 6, 7, 8}));
    EXPECT_EQ(array.capacity(), 16);
    array.clear();
    EXPECT_EQ(array.count(), 0);
    EXPECT_EQ(array.capacity(), 16);
}

TEST_F(BArrayTest, Swap) {
    BArray<int> a;
    BArray<int> b(2);
    ASSERT_TRUE(a.append(1));
    a.swap(b);
    EXPECT_EQ(a.count(), 0);
    EXPECT_EQ(a.capacity(), 2);
    EXPECT_EQ(contents(b), std::vector<int>{1});
}

TEST_F(BArrayTest, LazyArrayAllocatesWithItsFirstElement) {
    failAllocation(1, AllocationFailure::onwards);
    BArray<int> array(BArray<int>::Lazy{});
    EXPECT_FALSE(allocationHasFailed());
    EXPECT_EQ(array.capacity(), 0);
    cancelAllocationFailure();
    ASSERT_TRUE(array.append(1));
    EXPECT_EQ(array.capacity(), 8);
}

TEST_F(BArrayTest, WithoutMemoryTheArrayIsValidAndTriesAgain) {
    failAllocation(1);
    BArray<int> array;
    EXPECT_EQ(array.capacity(), 0);
    ASSERT_TRUE(array.append(1));
    EXPECT_EQ(array.capacity(), 8);
}

TEST_F(BArrayTest, FailedGrowthChangesNothing) {
    BArray<int> array;
    for (int i = 1; i <= 8; ++i) ASSERT_TRUE(array.append(i));
    failAllocation(1, AllocationFailure::onwards);
    EXPECT_FALSE(array.append(9));
    EXPECT_FALSE(array.insert(3, 9, 5));
    EXPECT_EQ(contents(array), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(array.capacity(), 8);
}

TEST_F(BArrayTest, CountBeyondTheRangeIsRefused) {
    BArray<char> array;
    ASSERT_TRUE(array.append('a'));
    EXPECT_FALSE(array.insert(0, 'b', INT32_MAX));
    EXPECT_EQ(array.count(), 1);
}

}  // namespace
}  // namespace quorvelin
