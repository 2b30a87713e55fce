#include "machine/guid_stack.h"

#include <gtest/gtest.h>

#include "host/allocator.h"

namespace quorvelin {
namespace {

BGuid guidOf(uint32_t number) {
    return BGuid(number, 0, 0, number);
}

TEST(JSGuidStackTest, StartsEmptyWithCapacityEight) {
    const JSGuidStack stack;
    EXPECT_TRUE(stack.isEmpty());
    EXPECT_EQ(stack.capacity(), 8);
}

TEST(JSGuidStackTest, PopOfEmptyStackYieldsAllZeroIdentifier) {
    JSGuidStack stack;
    EXPECT_EQ(stack.pop(), BGuid());
    EXPECT_TRUE(stack.isEmpty());
}

TEST(JSGuidStackTest, LastInIsFirstOut) {
    JSGuidStack stack;
    for (uint32_t i = 1; i <= 3; ++i) EXPECT_TRUE(stack.push(guidOf(i)));
    EXPECT_EQ(stack.pop(), guidOf(3));
    EXPECT_EQ(stack.pop(), guidOf(2));
    EXPECT_TRUE(stack.push(guidOf(4)));
    EXPECT_EQ(stack.pop(), guidOf(4));
    EXPECT_EQ(stack.pop(), guidOf(1));
    EXPECT_EQ(stack.pop(), BGuid());
}

TEST(JSGuidStackTest, PeekCountsFromTheTop) {
    JSGuidStack stack;
    for (uint32_t i = 1; i <= 3; ++i) stack.push(guidOf(i));
    EXPECT_EQ(stack.peek(0), guidOf(3));
    EXPECT_EQ(stack.peek(2), guidOf(1));
    EXPECT_EQ(stack.peek(3), BGuid());
    EXPECT_EQ(stack.peek(-1), BGuid());
    EXPECT_EQ(stack.count(), 3);
}

TEST(JSGuidStackTest, CapacityDoubles) {
    JSGuidStack stack;
    for (uint32_t i = 1; i <= 8; ++i) stack.push(guidOf(i));
    EXPECT_EQ(stack.capacity(), 8);
    stack.push(guidOf(9));
    EXPECT_EQ(stack.capacity(), 16);
    for (uint32_t i = 10; i <= 17; ++i) stack.push(guidOf(i));
    EXPECT_EQ(stack.capacity(), 32);
    for (uint32_t i = 17; i >= 1; --i) EXPECT_EQ(stack.pop(), guidOf(i));
}

TEST(JSGuidStackTest, FailedGrowthLeavesStackAlone) {
    JSGuidStack stack;
    for (uint32_t i = 1; i <= 8; ++i) stack.push(guidOf(i));
    failAllocation(1);
    EXPECT_FALSE(stack.push(guidOf(9)));
    cancelAllocationFailure();
    EXPECT_EQ(stack.count(), 8);
    EXPECT_EQ(stack.peek(0), guidOf(8));
}

}  // namespace
}  // namespace quorvelin
