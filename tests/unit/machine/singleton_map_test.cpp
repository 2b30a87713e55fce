#include "machine/singleton_map.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/allocator.h"

namespace quorvelin {
namespace {

// The map never looks behind its pointers, so any address does for an object.
IBSingleton* object(uintptr_t number) {
    return reinterpret_cast<IBSingleton*>(number * 16);
}

std::vector<uint32_t> lastWords(const JSSingletonMap& map, uint32_t bucket) {
    std::vector<uint32_t> words;
    for (const auto* entry = map.chain(bucket); entry != nullptr; entry = entry->next) {
        words.push_back(entry->id.words[3]);
    }
    return words;
}

TEST(JSSingletonMapTest, StartsWith64EmptyBuckets) {
    const JSSingletonMap map;
    EXPECT_TRUE(map.isUsable());
    EXPECT_EQ(map.bucketCount(), 64);
    EXPECT_EQ(map.mask(), 63u);
    EXPECT_EQ(map.count(), 0);
    for (uint32_t i = 0; i < 64; ++i) EXPECT_EQ(map.chain(i), nullptr);
}

TEST(JSSingletonMapTest, UnknownIdentifierIsNull) {
    JSSingletonMap map;
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 4)), nullptr);
    EXPECT_EQ(map.remove(BGuid(1, 2, 3, 4)), nullptr);
    EXPECT_EQ(map.count(), 0);
}

TEST(JSSingletonMapTest, InsertedObjectIsFoundByAllFourWords) {
    JSSingletonMap map;
    EXPECT_EQ(map.insert(BGuid(1, 2, 3, 4), object(1)), nullptr);
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 4)), object(1));
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 5)), nullptr);
    EXPECT_EQ(map.find(BGuid(65, 2, 3, 4)), nullptr);
}

TEST(JSSingletonMapTest, SecondInsertReplacesAndGivesOldObject) {
    JSSingletonMap map;
    map.insert(BGuid(1, 2, 3, 4), object(1));
    EXPECT_EQ(map.insert(BGuid(1, 2, 3, 4), object(2)), object(1));
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 4)), object(2));
    EXPECT_EQ(map.count(), 1);
}

TEST(JSSingletonMapTest, FirstWordMaskedChoosesBucketAndNewEntryIsHeadOfItsChain) {
    JSSingletonMap map;
    map.insert(BGuid(5, 0, 0, 1), object(1));
    map.insert(BGuid(5 + 64, 0, 0, 2), object(2));
    map.insert(BGuid(0xFFFFFF00 + 5, 0, 0, 3), object(3));
    EXPECT_EQ(lastWords(map, 5), (std::vector<uint32_t>{3, 2, 1}));
    EXPECT_EQ(map.chain(5)->hash, 0xFFFFFF05u);
}

TEST(JSSingletonMapTest, RemoveUnlinksFromAnyPlaceOfAChain) {
    for (uint32_t removed = 1; removed <= 3; ++removed) {
        JSSingletonMap map;
        for (uint32_t i = 1; i <= 3; ++i) map.insert(BGuid(7, 0, 0, i), object(i));
        EXPECT_EQ(map.remove(BGuid(7, 0, 0, removed)), object(removed));
        EXPECT_EQ(map.count(), 2);
        for (uint32_t i = 1; i <= 3; ++i) {
            EXPECT_EQ(map.find(BGuid(7, 0, 0, i)), i == removed ? nullptr : object(i));
        }
    }
}

TEST(JSSingletonMapTest, GrowsAtTheSeventySecondEntry) {
    JSSingletonMap map;
    for (uint32_t i = 1; i <= 71; ++i) map.insert(BGuid(i, 0, 0, i), object(i));
    EXPECT_EQ(map.bucketCount(), 64);
    map.insert(BGuid(72, 0, 0, 72), object(72));
    EXPECT_EQ(map.bucketCount(), 128);
    EXPECT_EQ(map.mask(), 127u);
    EXPECT_EQ(map.count(), 72);
    for (uint32_t i = 1; i <= 72; ++i) EXPECT_EQ(map.find(BGuid(i, 0, 0, i)), object(i));
}

TEST(JSSingletonMapTest, SecondGrowthComesWhenTheLargerTableIsCrowded) {
    // (64 / 2 + 128) * 24575 / 32767 is just below 120.
    JSSingletonMap map;
    for (uint32_t i = 1; i <= 119; ++i) map.insert(BGuid(i, 0, 0, i), object(i));
    EXPECT_EQ(map.bucketCount(), 128);
    map.insert(BGuid(120, 0, 0, 120), object(120));
    EXPECT_EQ(map.bucketCount(), 256);
    EXPECT_EQ(map.mask(), 255u);
}

TEST(JSSingletonMapTest, ReplacingDoesNotGrow) {
    JSSingletonMap map;
    for (uint32_t i = 1; i <= 71; ++i) map.insert(BGuid(i, 0, 0, i), object(i));
    map.insert(BGuid(1, 0, 0, 1), object(99));
    EXPECT_EQ(map.bucketCount(), 64);
    EXPECT_EQ(map.count(), 71);
}

TEST(JSSingletonMapTest, GrowthMovesEachEntryToTheHeadOfItsNewChain) {
    JSSingletonMap map;
    // Three that stay together and two that part from them; the chain is 5, 4, 3, 2, 1 before it is moved.
    map.insert(BGuid(3, 0, 0, 1), object(1));
    map.insert(BGuid(3 + 64, 0, 0, 2), object(2));
    map.insert(BGuid(3 + 128, 0, 0, 3), object(3));
    map.insert(BGuid(3 + 192, 0, 0, 4), object(4));
    map.insert(BGuid(3 + 256, 0, 0, 5), object(5));
    for (uint32_t i = 6; i <= 72; ++i) map.insert(BGuid(i * 64, 0, 0, i), object(i));
    ASSERT_EQ(map.bucketCount(), 128);
    EXPECT_EQ(lastWords(map, 3), (std::vector<uint32_t>{1, 3, 5}));
    EXPECT_EQ(lastWords(map, 3 + 64), (std::vector<uint32_t>{2, 4}));
}

TEST(JSSingletonMapTest, FailedEntryStoresNothing) {
    JSSingletonMap map;
    failAllocation(1);
    EXPECT_EQ(map.insert(BGuid(1, 2, 3, 4), object(1)), nullptr);
    cancelAllocationFailure();
    EXPECT_EQ(map.count(), 0);
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 4)), nullptr);
}

TEST(JSSingletonMapTest, FailedGrowthKeepsAllEntries) {
    JSSingletonMap map;
    for (uint32_t i = 1; i <= 71; ++i) map.insert(BGuid(i, 0, 0, i), object(i));
    failAllocation(2);  // the entry comes first, the buckets second
    map.insert(BGuid(72, 0, 0, 72), object(72));
    EXPECT_TRUE(allocationHasFailed());
    cancelAllocationFailure();
    EXPECT_EQ(map.bucketCount(), 64);
    for (uint32_t i = 1; i <= 72; ++i) EXPECT_EQ(map.find(BGuid(i, 0, 0, i)), object(i));
    map.insert(BGuid(73, 0, 0, 73), object(73));
    EXPECT_EQ(map.bucketCount(), 128);
}

TEST(JSSingletonMapTest, MapWithoutBucketsFindsNothing) {
    failAllocation(1);
    JSSingletonMap map;
    cancelAllocationFailure();
    EXPECT_FALSE(map.isUsable());
    EXPECT_EQ(map.insert(BGuid(1, 2, 3, 4), object(1)), nullptr);
    EXPECT_EQ(map.find(BGuid(1, 2, 3, 4)), nullptr);
    EXPECT_EQ(map.remove(BGuid(1, 2, 3, 4)), nullptr);
}

}  // namespace
}  // namespace quorvelin
