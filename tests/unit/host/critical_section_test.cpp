#include "host/critical_section.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace quorvelin {
namespace {

bool enteredBeforeMain = [] {
    EnterCriticalSection(dataCSProc());
    LeaveCriticalSection(dataCSProc());
    return true;
}();

// Counts with a plain variable, which comes out right only if one thread at a time is inside.
int countWithThreads(SCriticalSection* section) {
    constexpr int threads = 4;
    constexpr int turns = 20000;
    int count = 0;
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([&] {
            for (int turn = 0; turn < turns; ++turn) {
                EnterCriticalSection(section);
                ++count;
                LeaveCriticalSection(section);
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    return count - threads * turns;
}

TEST(CriticalSectionTest, OneThreadAtATimeIsInside) {
    SCriticalSection section;
    InitializeCriticalSection(&section);
    EXPECT_EQ(countWithThreads(&section), 0);
    DeleteCriticalSection(&section);
}

TEST(CriticalSectionTest, ProcessWideLockExcludesOthersToo) {
    EXPECT_EQ(countWithThreads(dataCSProc()), 0);
}

TEST(CriticalSectionTest, HolderMayEnterAgainAndMustLeaveAsOften) {
    SCriticalSection section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EnterCriticalSection(&section);
    std::atomic<bool> otherIsInside{false};
    std::thread other([&] {
        EnterCriticalSection(&section);
        otherIsInside = true;
        LeaveCriticalSection(&section);
    });
    LeaveCriticalSection(&section);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(otherIsInside);
    LeaveCriticalSection(&section);
    other.join();
    EXPECT_TRUE(otherIsInside);
    DeleteCriticalSection(&section);
}

TEST(CriticalSectionTest, ThereIsOneProcessWideLock) {
    EXPECT_NE(dataCSProc(), nullptr);
    EXPECT_EQ(dataCSProc(), dataCSProc());
}

TEST(CriticalSectionTest, ProcessWideLockWorksBeforeMain) {
    EXPECT_TRUE(enteredBeforeMain);
}

}  // namespace
}  // namespace quorvelin
