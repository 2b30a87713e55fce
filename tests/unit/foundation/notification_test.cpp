// Listeners: their order, what may happen to the list meanwhile, and the news of an object's end.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "foundation/smart_object.h"
#include "host/allocator.h"
#include "host/critical_section.h"
#include "host/global_data.h"

namespace quorvelin {
namespace {

class Sender : public BSmartObject {
  public:
    explicit Sender(bool* gone = nullptr) : gone_(gone) {}
    ~Sender() override {
        if (gone_ != nullptr) *gone_ = true;
    }

  private:
    bool* gone_;
};

// Writes its name down, then does what the test wants.
class Listener final : public BNotifyListener {
  public:
    Listener(std::string name, std::vector<std::string>* calls, int32_t answer = kGoOn)
        : name_(std::move(name)), calls_(calls), answer_(answer) {}

    int32_t notified(BNotifySender* sender) override {
        calls_->push_back(name_);
        lastSender = sender;
        if (action) action();
        return answer_;
    }

    std::function<void()> action;
    BNotifySender* lastSender = nullptr;

  private:
    std::string name_;
    std::vector<std::string>* calls_;
    int32_t answer_;
};

int32_t callNotified(BNotifySender* sender, uint32_t, BNotifyListener* listener) {
    return listener->notified(sender);
}

class Notification : public testing::Test {
  protected:
    void TearDown() override { cancelAllocationFailure(); }

    int32_t send() { return sender.send(&sender, 0, callNotified); }

    using Calls = std::vector<std::string>;
    Calls calls;
    Listener a{"a", &calls};
    Listener b{"b", &calls};
    Listener c{"c", &calls};
    Sender sender;
};

TEST_F(Notification, ListIsMadeWithTheFirstListener) {
    EXPECT_FALSE(sender.hasList());
    EXPECT_EQ(sender.listenerCount(), 0);
    EXPECT_EQ(send(), 0);
    sender.addListener(&a, 0);
    EXPECT_TRUE(sender.hasList());
    EXPECT_EQ(sender.listenerCount(), 1);
    sender.removeListener(&a);
    EXPECT_TRUE(sender.hasList());
    EXPECT_EQ(sender.listenerCount(), 0);
    EXPECT_EQ(send(), 0);
    EXPECT_EQ(calls, Calls{});
}

TEST_F(Notification, LowPrioritiesComeFirstAndEqualOnesInOrderOfAddition) {
    Listener d("d", &calls);
    Listener e("e", &calls);
    sender.addListener(&a, 5);
    sender.addListener(&b, -1);
    sender.addListener(&c, 5);
    sender.addListener(&d, 0);
    sender.addListener(&e, -1);
    send();
    EXPECT_EQ(calls, (Calls{"b", "e", "d", "a", "c"}));
}

TEST_F(Notification, SenderFaceReachesTheListener) {
    sender.addListener(&a, 0);
    send();
    EXPECT_EQ(a.lastSender, static_cast<BNotifySender*>(&sender));
}

TEST_F(Notification, ListenerRegisteredTwiceIsCalledOnce) {
    sender.addListener(&a, 0);
    sender.addListener(&b, 1);
    sender.addListener(&a, 2);
    EXPECT_EQ(sender.listenerCount(), 3);
    send();
    EXPECT_EQ(calls, (Calls{"a", "b"}));
    sender.removeListener(&a);
    EXPECT_EQ(sender.listenerCount(), 2);
    calls.clear();
    send();
    EXPECT_EQ(calls, (Calls{"b", "a"}));
}

TEST_F(Notification, StopEndsTheSending) {
    Listener stop("stop", &calls, BNotifyListener::kStop);
    sender.addListener(&a, 0);
    sender.addListener(&stop, 1);
    sender.addListener(&b, 2);
    EXPECT_EQ(send(), 1);
    EXPECT_EQ(calls, (Calls{"a", "stop"}));
}

TEST_F(Notification, RememberedAnswerIsTheResult) {
    Listener remember("remember", &calls, BNotifyListener::kRemember);
    Listener odd("odd", &calls, 77);
    sender.addListener(&remember, 0);
    sender.addListener(&a, 1);
    sender.addListener(&odd, 2);
    EXPECT_EQ(send(), 2);
    EXPECT_EQ(calls, (Calls{"remember", "a", "odd"}));
    Listener stop("stop", &calls, BNotifyListener::kStop);
    sender.addListener(&stop, 3);
    EXPECT_EQ(send(), 1);
}

TEST_F(Notification, OtherAnswersLeaveNoMark) {
    Listener odd("odd", &calls, -1);
    sender.addListener(&odd, 0);
    EXPECT_EQ(send(), 0);
}

TEST_F(Notification, ListenerAddedMeanwhileIsCalledInTheSameSending) {
    sender.addListener(&b, 5);
    b.action = [&] {
        sender.addListener(&c, 9);
        sender.addListener(&a, 0);  // in front of the one that is being called
        b.action = nullptr;
    };
    send();
    EXPECT_EQ(calls, (Calls{"b", "a", "c"}));
}

TEST_F(Notification, ListenerRemovedMeanwhileIsNotCalled) {
    sender.addListener(&a, 0);
    sender.addListener(&b, 1);
    sender.addListener(&c, 2);
    a.action = [&] {
        sender.removeListener(&a);
        sender.removeListener(&b);
    };
    send();
    EXPECT_EQ(calls, (Calls{"a", "c"}));
    EXPECT_EQ(sender.listenerCount(), 1);
}

TEST_F(Notification, ManyListenersAreEachCalledOnce) {
    std::vector<std::unique_ptr<Listener>> many;
    for (int i = 0; i < 100; ++i) {
        many.push_back(std::make_unique<Listener>(std::to_string(i), &calls));
        sender.addListener(many.back().get(), i);
    }
    send();
    ASSERT_EQ(calls.size(), 100u);
    for (size_t i = 0; i < 100; ++i) EXPECT_EQ(calls[i], std::to_string(i));
}

TEST_F(Notification, ListenersAreCalledOutsideTheLock) {
    sender.addListener(&a, 0);
    a.action = [&] {
        // Another thread gets at the lock, which it could not while this one held it.
        std::thread([&] {
            EnterCriticalSection(dataCSProc());
            LeaveCriticalSection(dataCSProc());
        }).join();
    };
    send();
    EXPECT_EQ(calls, Calls{"a"});
}

TEST_F(Notification, QuirkCountGrowsWithoutMemoryForTheEntry) {
    sender.addListener(&a, 0);
    failAllocation(1);
    sender.addListener(&b, 0);
    EXPECT_EQ(sender.listenerCount(), 2);
    cancelAllocationFailure();
    send();
    EXPECT_EQ(calls, Calls{"a"});
}

TEST_F(Notification, WithoutMemoryForTheListNothingHappens) {
    failAllocation(1);
    sender.addListener(&a, 0);
    EXPECT_FALSE(sender.hasList());
}

TEST_F(Notification, ListsMayBeUsedByManyThreads) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            Calls own;
            Listener listener("x", &own);
            for (int i = 0; i < 500; ++i) {
                sender.addListener(&listener, i % 3);
                sender.removeListener(&listener);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(sender.listenerCount(), 0);
}

// ---- the end of an object ----

BNotifySender* everybody() {
    return static_cast<BNotifySender*>(
        BGlobalData::getItem(identityOf(ClassId::IBRemoteRemovable), "OnDestroy"));
}

TEST_F(Notification, EndIsToldToOwnListenersThenToEverybodysList) {
    bool gone = false;
    Sender* object = new Sender(&gone);
    (new Sender())->release();  // the first end makes the process-wide list
    ASSERT_NE(everybody(), nullptr);
    a.action = b.action = [&] { EXPECT_FALSE(gone); };
    everybody()->addListener(&b, -10);
    object->addListener(&a, 10);
    BNotifySender* const face = object;
    EXPECT_TRUE(object->release());
    EXPECT_TRUE(gone);
    EXPECT_EQ(calls, (Calls{"a", "b"}));
    EXPECT_EQ(a.lastSender, face);
    EXPECT_EQ(b.lastSender, face);
    everybody()->removeListener(&b);
}

TEST_F(Notification, OnlyTheLastReleaseTells) {
    Sender* object = new Sender();
    object->addListener(&a, 0);
    object->addRef();
    object->release();
    EXPECT_EQ(calls, Calls{});
    object->release();
    EXPECT_EQ(calls, Calls{"a"});
}

TEST_F(Notification, StopOfAnOwnListenerDoesNotSaveTheObjectNorSilenceTheOthers) {
    bool gone = false;
    Sender* object = new Sender(&gone);
    Listener stop("stop", &calls, BNotifyListener::kStop);
    object->addListener(&stop, 0);
    object->addListener(&a, 1);
    (new Sender())->release();
    everybody()->addListener(&b, 0);
    object->release();
    everybody()->removeListener(&b);
    EXPECT_TRUE(gone);
    EXPECT_EQ(calls, (Calls{"stop", "b"}));
}

}  // namespace
}  // namespace quorvelin
