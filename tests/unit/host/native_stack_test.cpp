#include "host/native_stack.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <ucontext.h>

#include <cstddef>
#include <functional>

namespace quorvelin {
namespace {

std::uintptr_t currentAddress() {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

// Writes to the lowest byte of the stack, which ends the process if it is not usable.
void touchLimit() {
    auto* lowest = reinterpret_cast<volatile char*>(hostStackLimit());
    *lowest = 1;
    EXPECT_EQ(*lowest, 1);
}

void* runFunction(void* argument) {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
}

void runOnThread(std::size_t stackSize, std::function<void()> body) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackSize), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, runFunction, &body), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(NativeStackTest, MainThreadReachesToItsLimit) {
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_STACK, &limit), 0);
    EXPECT_LT(hostStackLimit(), currentAddress());
    if (limit.rlim_cur != RLIM_INFINITY) {
        EXPECT_LE(currentAddress() - hostStackLimit(), limit.rlim_cur);
        EXPECT_GT(currentAddress() - hostStackLimit(), limit.rlim_cur / 2);
        touchLimit();
    }
}

TEST(NativeStackTest, ThreadWithChosenSizeReachesToItsLimit) {
    for (const std::size_t size : {std::size_t{512} << 10, std::size_t{4} << 20, std::size_t{64} << 20}) {
        runOnThread(size, [size] {
            EXPECT_LT(hostStackLimit(), currentAddress());
            EXPECT_GT(currentAddress() - hostStackLimit(), size / 2);
            touchLimit();
        });
    }
}

TEST(NativeStackTest, ThreadOnGivenMemoryReachesToItsStart) {
    constexpr std::size_t size = std::size_t{1} << 20;
    void* stack = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(stack, MAP_FAILED);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstack(&attributes, stack, size), 0);
    std::uintptr_t limit = 0;
    std::function<void()> body = [&] { limit = hostStackLimit(); };
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, runFunction, &body), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(limit, reinterpret_cast<std::uintptr_t>(stack));
    munmap(stack, size);
}

TEST(NativeStackTest, SecondQuestionGivesSameAnswer) {
    EXPECT_EQ(hostStackLimit(), hostStackLimit());
    runOnThread(1 << 20, [] { EXPECT_EQ(hostStackLimit(), hostStackLimit()); });
}

TEST(NativeStackTest, ThreadsHaveDifferentLimits) {
    std::uintptr_t other = 0;
    runOnThread(1 << 20, [&] { other = hostStackLimit(); });
    EXPECT_NE(other, hostStackLimit());
}

// Stack switching confuses the address sanitizer, and none of its checks matters here.
#if !defined(__SANITIZE_ADDRESS__)
ucontext_t mainContext;
ucontext_t ownContext;
std::uintptr_t limitOnOwnStack;
std::uintptr_t addressOnOwnStack;

void askOnOwnStack() {
    limitOnOwnStack = hostStackLimit();
    addressOnOwnStack = currentAddress();
}

TEST(NativeStackTest, StackMadeByTheCallerGivesCautiousGuess) {
    const std::uintptr_t before = hostStackLimit();
    constexpr std::size_t size = 1 << 20;
    void* stack = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(stack, MAP_FAILED);
    ASSERT_EQ(getcontext(&ownContext), 0);
    ownContext.uc_stack.ss_sp = stack;
    ownContext.uc_stack.ss_size = size;
    ownContext.uc_link = &mainContext;
    makecontext(&ownContext, askOnOwnStack, 0);
    ASSERT_EQ(swapcontext(&mainContext, &ownContext), 0);
    EXPECT_LT(limitOnOwnStack, addressOnOwnStack);
    EXPECT_GE(limitOnOwnStack, reinterpret_cast<std::uintptr_t>(stack));
    EXPECT_LE(addressOnOwnStack - limitOnOwnStack, 256u * 1024);
    EXPECT_EQ(hostStackLimit(), before);
    munmap(stack, size);
}
#endif

}  // namespace
}  // namespace quorvelin
