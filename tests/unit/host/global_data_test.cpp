#include "host/global_data.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "host/allocator.h"

namespace quorvelin {
namespace {

struct Record final : stype_info {
    using stype_info::stype_info;
    const char* name() const override { return "Record"; }
    const char16_t* wideName() const override { return u"Record"; }
    void* queryOn(void*, IBQueryVisitor*) const override { return nullptr; }
};

const Record first(1, 2, 3, 4);
const Record firstOfAnotherModule(1, 2, 3, 4);
const Record second(5, 6, 7, 8);

std::vector<void*> cleaned;
void remember(void* pointer) {
    cleaned.push_back(pointer);
}

class GlobalDataTest : public testing::Test {
  protected:
    void SetUp() override { cleaned.clear(); }
    void TearDown() override {
        cancelAllocationFailure();
        BGlobalData::setItem(first, "item", nullptr, nullptr);
        BGlobalData::setItem(second, "item", nullptr, nullptr);
    }

    int one = 1;
    int two = 2;
};

TEST_F(GlobalDataTest, UnknownItemIsNull) {
    EXPECT_EQ(BGlobalData::getItem(first, "item"), nullptr);
}

TEST_F(GlobalDataTest, ItemIsFoundByIdentityAndName) {
    ASSERT_TRUE(BGlobalData::setItem(first, "item", &one, nullptr));
    EXPECT_EQ(BGlobalData::getItem(first, "item"), &one);
    EXPECT_EQ(BGlobalData::getItem(first, "other"), nullptr);
    EXPECT_EQ(BGlobalData::getItem(second, "item"), nullptr);
}

TEST_F(GlobalDataTest, IdentityCountsByValue) {
    BGlobalData::setItem(first, "item", &one, nullptr);
    EXPECT_EQ(BGlobalData::getItem(firstOfAnotherModule, "item"), &one);
}

TEST_F(GlobalDataTest, NameIsCopied) {
    std::string name = "item";
    BGlobalData::setItem(first, name.c_str(), &one, nullptr);
    name = "gone";
    EXPECT_EQ(BGlobalData::getItem(first, "item"), &one);
}

TEST_F(GlobalDataTest, ReplacedItemIsCleanedUp) {
    BGlobalData::setItem(first, "item", &one, remember);
    BGlobalData::setItem(first, "item", &two, nullptr);
    EXPECT_EQ(cleaned, std::vector<void*>{&one});
    EXPECT_EQ(BGlobalData::getItem(first, "item"), &two);
}

TEST_F(GlobalDataTest, RemovedItemIsCleanedUp) {
    BGlobalData::setItem(first, "item", &one, remember);
    EXPECT_TRUE(BGlobalData::setItem(first, "item", nullptr, nullptr));
    EXPECT_EQ(cleaned, std::vector<void*>{&one});
    EXPECT_EQ(BGlobalData::getItem(first, "item"), nullptr);
    EXPECT_TRUE(BGlobalData::setItem(first, "item", nullptr, nullptr));
    EXPECT_EQ(cleaned.size(), 1u);
}

TEST_F(GlobalDataTest, SamePointerOnlyChangesCleanUp) {
    BGlobalData::setItem(first, "item", &one, remember);
    BGlobalData::setItem(first, "item", &one, nullptr);
    EXPECT_TRUE(cleaned.empty());
    BGlobalData::setItem(first, "item", &two, nullptr);
    EXPECT_TRUE(cleaned.empty());
}

TEST_F(GlobalDataTest, CleanUpMayUseTheTable) {
    BGlobalData::setItem(first, "item", &one,
                         [](void* pointer) { BGlobalData::setItem(second, "item", pointer, nullptr); });
    BGlobalData::setItem(first, "item", nullptr, nullptr);
    EXPECT_EQ(BGlobalData::getItem(second, "item"), &one);
}

TEST_F(GlobalDataTest, FailedAllocationLeavesTableAlone) {
    failAllocation(1);
    EXPECT_FALSE(BGlobalData::setItem(first, "item", &one, remember));
    EXPECT_EQ(BGlobalData::getItem(first, "item"), nullptr);
    EXPECT_TRUE(cleaned.empty());
    EXPECT_TRUE(BGlobalData::setItem(first, "item", &one, nullptr));
}

TEST_F(GlobalDataTest, ThreadsShareTheTable) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this, i] {
            const std::string own = "own" + std::to_string(i);
            for (int turn = 0; turn < 2000; ++turn) {
                ASSERT_TRUE(BGlobalData::setItem(first, own.c_str(), &one, nullptr));
                ASSERT_TRUE(BGlobalData::setItem(first, "item", i % 2 == 0 ? &one : &two, nullptr));
                ASSERT_EQ(BGlobalData::getItem(first, own.c_str()), &one);
                ASSERT_NE(BGlobalData::getItem(first, "item"), nullptr);
                ASSERT_TRUE(BGlobalData::setItem(first, own.c_str(), nullptr, nullptr));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(GlobalDataExitTest, ItemsAreCleanedUpAtExitNewestFirstWhileTheTableCanBeRead) {
    const auto program = [] {
        static char older[] = "older";
        static char newer[] = "newer";
        BGlobalData::setItem(first, "older", older,
                             [](void* pointer) { std::fprintf(stderr, "%s", static_cast<char*>(pointer)); });
        BGlobalData::setItem(first, "newer", newer, [](void* pointer) {
            std::fprintf(stderr, "%s %s ", static_cast<char*>(pointer),
                         static_cast<char*>(BGlobalData::getItem(first, "older")));
        });
        std::exit(0);
    };
    EXPECT_EXIT(program(), testing::ExitedWithCode(0), "^newer older older$");
}

}  // namespace
}  // namespace quorvelin
