#include "foundation/native_stack_guard.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <cstddef>

namespace quorvelin {
namespace {

// Goes down until the guard answers.
[[gnu::noinline]] char descend(int* levels) {
    volatile char frame[512];
    frame[0] = 1;
    if (nativeStackIsShort()) return frame[0];
    ++*levels;
    frame[1] = descend(levels);
    return frame[1];  // a use of the frame behind the call keeps this from becoming a loop
}

struct Descent {
    int levels = 0;
    static void* run(void* pointer) {
        Descent& descent = *static_cast<Descent*>(pointer);
        descend(&descent.levels);
        return nullptr;
    }
};

// On memory of the test's own, as the system gives a thread a larger stack than asked for when it has one at
// hand.
int levelsOnStackOf(size_t size) {
    void* const stack = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(stack, MAP_FAILED);
    Descent descent;
    pthread_attr_t attributes;
    EXPECT_EQ(pthread_attr_init(&attributes), 0);
    EXPECT_EQ(pthread_attr_setstack(&attributes, stack, size), 0);
    pthread_t thread;
    EXPECT_EQ(pthread_create(&thread, &attributes, Descent::run, &descent), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    munmap(stack, size);
    return descent.levels;
}

TEST(NativeStackGuard, AmpleStackIsNotShort) {
    EXPECT_FALSE(nativeStackIsShort());
}

TEST(NativeStackGuard, AnswersBeforeTheStackEnds) {
    int levels = 0;
    descend(&levels);
    EXPECT_GT(levels, 100);
    EXPECT_FALSE(nativeStackIsShort());  // back up there is room again
}

TEST(NativeStackGuard, EveryThreadHasItsOwnLimit) {
    const int small = levelsOnStackOf(size_t{2} << 20);
    const int large = levelsOnStackOf(size_t{16} << 20);
    EXPECT_GT(small, 100);
    EXPECT_GT(large, 4 * small);
}

TEST(NativeStackGuard, StackSmallerThanTheReserveIsShortAtOnce) {
    EXPECT_EQ(levelsOnStackOf(size_t{64} << 10), 0);
}

}  // namespace
}  // namespace quorvelin
