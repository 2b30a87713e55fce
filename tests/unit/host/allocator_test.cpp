#include "host/allocator.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

namespace quorvelin {
namespace {

class AllocatorTest : public testing::Test {
  protected:
    void TearDown() override { cancelAllocationFailure(); }
};

bool allocationSucceeds() {
    void* block = _smalloc(16);
    _sfree(block);
    return block != nullptr;
}

TEST_F(AllocatorTest, BlockCanBeWrittenAndGrownWithItsContent) {
    char* block = static_cast<char*>(_smalloc(8));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "1234567", 8);
    block = static_cast<char*>(_srealloc(block, 4000));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "1234567");
    _sfree(block);
}

TEST_F(AllocatorTest, SizeZeroGivesBlock) {
    void* block = _smalloc(0);
    EXPECT_NE(block, nullptr);
    void* again = _srealloc(block, 0);
    EXPECT_NE(again, nullptr);
    _sfree(again);
}

TEST_F(AllocatorTest, ReallocationOfNullAllocates) {
    void* block = _srealloc(nullptr, 10);
    EXPECT_NE(block, nullptr);
    _sfree(block);
    _sfree(nullptr);
}

TEST_F(AllocatorTest, NthAllocationFailsOnce) {
    failAllocation(3);
    EXPECT_TRUE(allocationSucceeds());
    EXPECT_TRUE(allocationSucceeds());
    EXPECT_FALSE(allocationHasFailed());
    EXPECT_FALSE(allocationSucceeds());
    EXPECT_TRUE(allocationHasFailed());
    EXPECT_TRUE(allocationSucceeds());
}

TEST_F(AllocatorTest, AllocationsFailOnwardsUntilCancelled) {
    failAllocation(2, AllocationFailure::onwards);
    EXPECT_TRUE(allocationSucceeds());
    EXPECT_FALSE(allocationSucceeds());
    EXPECT_FALSE(allocationSucceeds());
    cancelAllocationFailure();
    EXPECT_TRUE(allocationSucceeds());
    EXPECT_TRUE(allocationHasFailed());
}

TEST_F(AllocatorTest, FailedReallocationKeepsBlock) {
    char* block = static_cast<char*>(_smalloc(8));
    std::memcpy(block, "content", 8);
    failAllocation(1);
    EXPECT_EQ(_srealloc(block, 100000), nullptr);
    EXPECT_STREQ(block, "content");
    _sfree(block);
}

TEST_F(AllocatorTest, NewPlanReplacesOldOne) {
    failAllocation(1, AllocationFailure::onwards);
    EXPECT_FALSE(allocationSucceeds());
    failAllocation(2);
    EXPECT_FALSE(allocationHasFailed());
    EXPECT_TRUE(allocationSucceeds());
    EXPECT_FALSE(allocationSucceeds());
    EXPECT_TRUE(allocationSucceeds());
}

TEST_F(AllocatorTest, PlanBelongsToItsThread) {
    failAllocation(1, AllocationFailure::onwards);
    bool otherThread = false;
    std::thread([&] { otherThread = allocationSucceeds(); }).join();
    EXPECT_TRUE(otherThread);
    EXPECT_FALSE(allocationSucceeds());
}

TEST_F(AllocatorTest, PlanOfEndedThreadLeavesOthersAlone) {
    std::thread([] { failAllocation(1, AllocationFailure::onwards); }).join();
    EXPECT_TRUE(allocationSucceeds());
}

}  // namespace
}  // namespace quorvelin
