#include "machine/class_factory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/allocator.h"
#include "machine/module_state.h"

namespace quorvelin {
namespace {

const BGuid& guidOf(ClassId id) {
    return identityOf(id).guid;
}

int living = 0;

// In place of a machine: an object that the factory can make, and that counts itself.
class FakeKernel : public BSmartObject {
  public:
    FakeKernel() { ++living; }
    ~FakeKernel() override { --living; }
};

// One that refuses to be removed.
class FacelessKernel final : public FakeKernel {
  public:
    void* query(const stype_info&, IBQueryVisitor*) override { return nullptr; }
};

// One of which the factory keeps only one.
class SingleKernel final : public IBSingleton {
  public:
    SingleKernel() { ++living; }
    ~SingleKernel() override { --living; }
    const stype_info& getClassId() const override { return identityOf(ClassId::JSKernel); }
};

template <class Kernel>
BSmartObject* make() {
    return new Kernel;
}

BSmartObject* makeNothing() {
    return nullptr;
}

BSmartObject* mayNotBeAsked() {
    ADD_FAILURE() << "a machine was made";
    return nullptr;
}

class ClassFactoryTest : public testing::Test {
  protected:
    void SetUp() override { living = 0; }
    void TearDown() override {
        cancelAllocationFailure();
        EXPECT_EQ(living, 0);
    }
};

TEST_F(ClassFactoryTest, AnyOtherIdentifierYieldsNull) {
    quorvelinfactory* factory = quorvelinfactory::create(mayNotBeAsked);
    for (int32_t i = 0; i < static_cast<int32_t>(ClassId::count); ++i) {
        const auto id = static_cast<ClassId>(i);
        if (id != ClassId::JSKernel) {
            EXPECT_EQ(factory->createInstance(guidOf(id), 0), nullptr);
        }
    }
    for (int word = 0; word < 4; ++word) {
        BGuid nearly = guidOf(ClassId::JSKernel);
        nearly.words[word] ^= 1;
        EXPECT_EQ(factory->createInstance(nearly, 0), nullptr);
    }
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
}

TEST_F(ClassFactoryTest, IdentifierOfIQuorvelinYieldsNull) {
    quorvelinfactory* factory = quorvelinfactory::create(mayNotBeAsked);
    EXPECT_EQ(factory->createInstance(guidOf(ClassId::IQuorvelin), 0), nullptr);
    factory->release();
}

TEST_F(ClassFactoryTest, TwoCallsYieldTwoDistinctInstances) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    IBRemoteRemovable* first = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    IBRemoteRemovable* second = factory->createInstance(guidOf(ClassId::JSKernel), 99);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(factory->singletons().count(), 0);
    EXPECT_TRUE(factory->singletonIds().isEmpty());
    first->release();
    second->release();
    factory->release();
}

TEST_F(ClassFactoryTest, InstanceHasOneHolder) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    IBRemoteRemovable* instance = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_EQ(static_cast<BSmartObject*>(instance)->refCount(), 0);
    EXPECT_TRUE(instance->release());
    EXPECT_EQ(living, 0);
    factory->release();
}

TEST_F(ClassFactoryTest, EachLivingInstanceHoldsOneReferenceOnTheFactory) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    IBRemoteRemovable* first = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_EQ(factory->refCount(), 1);
    IBRemoteRemovable* second = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_EQ(factory->refCount(), 2);
    first->release();
    EXPECT_EQ(factory->refCount(), 1);
    second->release();
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_TRUE(factory->release());
}

TEST_F(ClassFactoryTest, FactoryListensToItsInstanceWithPriorityZero) {
    class Early final : public BNotifyListener {
      public:
        explicit Early(quorvelinfactory* factory) : factory_(factory) {}
        int32_t notified(BNotifySender*) override {
            seen = factory_->refCount();
            return kGoOn;
        }
        int32_t seen = -1;

      private:
        quorvelinfactory* factory_;
    };
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    Early before(factory);
    Early after(factory);
    IBRemoteRemovable* instance = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_EQ(instance->listenerCount(), 1);
    instance->addListener(&before, -1);
    instance->addListener(&after, 0);
    instance->release();
    EXPECT_EQ(before.seen, 1);
    EXPECT_EQ(after.seen, 0);
    factory->release();
}

TEST_F(ClassFactoryTest, MissingMemoryForInstanceYieldsNull) {
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    EXPECT_EQ(factory->createInstance(guidOf(ClassId::JSKernel), 0), nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
    factory = quorvelinfactory::create(make<FakeKernel>);
    failAllocation(1);
    EXPECT_EQ(factory->createInstance(guidOf(ClassId::JSKernel), 0), nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
}

TEST_F(ClassFactoryTest, InstanceThatRefusesIBRemoteRemovableYieldsNull) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FacelessKernel>);
    EXPECT_EQ(factory->createInstance(guidOf(ClassId::JSKernel), 0), nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_EQ(living, 0);
    factory->release();
}

TEST_F(ClassFactoryTest, SingletonIsKeptAndGivenAgain) {
    quorvelinfactory* factory = quorvelinfactory::create(make<SingleKernel>);
    IBRemoteRemovable* first = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(factory->createInstance(guidOf(ClassId::JSKernel), 0), first);
    EXPECT_EQ(living, 1);
    EXPECT_EQ(factory->refCount(), 1);
    EXPECT_EQ(factory->singletons().find(guidOf(ClassId::JSKernel)), first);
    EXPECT_EQ(factory->singletonIds().count(), 1);
    EXPECT_EQ(factory->singletonIds().peek(0), guidOf(ClassId::JSKernel));
    first->release();
    factory->release();
}

TEST_F(ClassFactoryTest, DeadSingletonIsForgottenAndMadeAnew) {
    quorvelinfactory* factory = quorvelinfactory::create(make<SingleKernel>);
    factory->createInstance(guidOf(ClassId::JSKernel), 0)->release();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(factory->singletons().count(), 0);
    EXPECT_EQ(factory->refCount(), 0);
    IBRemoteRemovable* second = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    ASSERT_NE(second, nullptr);
    second->release();
    factory->release();
}

TEST_F(ClassFactoryTest, DropSingletonsDestroysWhatIsKept) {
    quorvelinfactory* factory = quorvelinfactory::create(make<SingleKernel>);
    IBRemoteRemovable* kept = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    static_cast<BSmartObject*>(kept)->addRef();  // however many hold it
    factory->dropSingletons();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(factory->singletons().count(), 0);
    EXPECT_TRUE(factory->singletonIds().isEmpty());
    EXPECT_EQ(factory->refCount(), 0);
    factory->dropSingletons();
    factory->release();
}

TEST_F(ClassFactoryTest, DropSingletonsPassesOverTheDead) {
    quorvelinfactory* factory = quorvelinfactory::create(make<SingleKernel>);
    factory->createInstance(guidOf(ClassId::JSKernel), 0)->release();
    EXPECT_EQ(factory->singletonIds().count(), 1);
    factory->dropSingletons();
    EXPECT_TRUE(factory->singletonIds().isEmpty());
    factory->release();
}

TEST_F(ClassFactoryTest, DropSingletonsMayEndTheFactoryItself) {
    quorvelinfactory* factory = quorvelinfactory::create(make<SingleKernel>);
    moduleState().factory = factory;
    factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_FALSE(factory->release());  // only the kept object holds the factory now
    factory->dropSingletons();
    EXPECT_EQ(moduleState().factory, nullptr);
}

// A factory of a host's own, on the layer that keeps singletons.
class OwnFactory final : public BClassFactory {
  public:
    IBRemoteRemovable* createInstance(const BGuid& id, uintptr_t) override {
        auto* instance = id == guidOf(ClassId::JSKernel) ? static_cast<BSmartObject*>(new SingleKernel)
                                                         : static_cast<BSmartObject*>(new FakeKernel);
        adopt(id, instance);
        return instance;
    }
    void instanceGone(BNotifySender* object) override { gone.push_back(object); }

    std::vector<BNotifySender*> gone;
};

TEST_F(ClassFactoryTest, InstanceGoneIsCalledForKeptObjectsOnly) {
    auto* factory = new OwnFactory;
    factory->createInstance(guidOf(ClassId::IQuorvelin), 0)->release();
    EXPECT_TRUE(factory->gone.empty());
    IBRemoteRemovable* kept = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    BNotifySender* face = kept;
    kept->release();
    EXPECT_EQ(factory->gone, std::vector<BNotifySender*>{face});
    factory->release();
}

TEST_F(ClassFactoryTest, NotificationWithoutObjectLetsOneReferenceGo) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    IBRemoteRemovable* instance = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    const auto callWithNull = [](BNotifySender*, uint32_t, BNotifyListener* listener) {
        return listener->notified(nullptr);
    };
    EXPECT_EQ(instance->send(instance, 0, callWithNull), BNotifyListener::kRemember);
    EXPECT_EQ(factory->refCount(), 0);
    factory->addRef();  // for what the end of the instance will take
    instance->release();
    factory->release();
}

TEST_F(ClassFactoryTest, DestroySelfFiresNotificationsAndDeletes) {
    class Counter final : public BNotifyListener {
      public:
        int32_t notified(BNotifySender*) override {
            ++calls;
            return kGoOn;
        }
        int calls = 0;
    };
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    moduleState().factory = factory;
    Counter counter;
    factory->addListener(&counter, 0);
    factory->addRef();
    factory->destroySelf();
    EXPECT_EQ(counter.calls, 1);
    EXPECT_EQ(moduleState().factory, nullptr);
}

class Recorder final : public IBQueryVisitor {
  public:
    void enter(const stype_info& identity, void* face) override {
        tried += std::string(identity.name()) + " ";
        path += identity.name()[0];
        lastFace = face;
    }
    void leave() override { path.pop_back(); }

    std::string tried;
    std::string path;
    void* lastFace = nullptr;
};

TEST_F(ClassFactoryTest, QueryAnswersInOrder) {
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    Recorder recorder;
    EXPECT_EQ(factory->query(identityOf(ClassId::JSKernel), &recorder), nullptr);
    EXPECT_EQ(recorder.tried,
              "quorvelinfactory BClassFactory IBQuery IBSingleton IBSmartObject IBRemoteRemovable "
              "IBTransportable BNotifySender ");
    EXPECT_EQ(recorder.path, "");
    factory->release();
}

TEST_F(ClassFactoryTest, EveryFaceButTheSenderIsTheObjectItself) {
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    for (const ClassId id :
         {ClassId::quorvelinfactory, ClassId::BClassFactory, ClassId::IBQuery, ClassId::IBSingleton,
          ClassId::IBSmartObject, ClassId::IBRemoteRemovable, ClassId::IBTransportable}) {
        EXPECT_EQ(factory->query(identityOf(id), nullptr), factory) << identityOf(id).name();
    }
    void* sender = factory->query(identityOf(ClassId::BNotifySender), nullptr);
    EXPECT_EQ(sender, static_cast<BNotifySender*>(factory));
    EXPECT_NE(sender, static_cast<void*>(factory));
    EXPECT_EQ(factory->query(identityOf(ClassId::BSmartObject), nullptr), nullptr);
    EXPECT_EQ(factory->query(identityOf(ClassId::IQuorvelin), nullptr), nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
}

TEST_F(ClassFactoryTest, SuccessfulQueryLeavesThePathEntered) {
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    Recorder recorder;
    factory->query(identityOf(ClassId::IBSingleton), &recorder);
    EXPECT_EQ(recorder.path, "qBII");
    EXPECT_EQ(recorder.lastFace, factory);
    factory->release();
}

TEST_F(ClassFactoryTest, EachLayerHasItsOwnClassIdentifier) {
    quorvelinfactory* factory = quorvelinfactory::create(makeNothing);
    EXPECT_EQ(&factory->getClassId(), &identityOf(ClassId::quorvelinfactory));
    EXPECT_EQ(&factory->BClassFactory::getClassId(), &identityOf(ClassId::BClassFactory));
    EXPECT_EQ(factory->BClassFactory::query(identityOf(ClassId::quorvelinfactory), nullptr), nullptr);
    EXPECT_EQ(factory->BClassFactory::query(identityOf(ClassId::BClassFactory), nullptr), factory);
    factory->release();
}

class ModuleStateTest : public ClassFactoryTest {
  protected:
    void SetUp() override {
        ClassFactoryTest::SetUp();
        ASSERT_EQ(moduleState().factory, nullptr);
    }
};

TEST_F(ModuleStateTest, TwoRequestsYieldTheSameFactoryAndLeaveItsCountUnchanged) {
    quorvelinfactory* factory = moduleFactory();
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_EQ(moduleFactory(), factory);
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
}

TEST_F(ModuleStateTest, EndOfTheFactoryClearsTheModulesPointer) {
    quorvelinfactory* factory = moduleFactory();
    EXPECT_EQ(moduleState().factory, factory);
    EXPECT_TRUE(factory->release());
    EXPECT_EQ(moduleState().factory, nullptr);
    quorvelinfactory* next = moduleFactory();
    ASSERT_NE(next, nullptr);
    next->release();
}

TEST_F(ModuleStateTest, FactoryLivesWhileAnInstanceLives) {
    quorvelinfactory* factory = quorvelinfactory::create(make<FakeKernel>);
    moduleState().factory = factory;
    IBRemoteRemovable* instance = factory->createInstance(guidOf(ClassId::JSKernel), 0);
    EXPECT_FALSE(factory->release());
    EXPECT_EQ(moduleState().factory, factory);
    EXPECT_EQ(moduleFactory(), factory);
    instance->release();
    EXPECT_EQ(moduleState().factory, nullptr);
}

TEST_F(ModuleStateTest, FailedAllocationYieldsNullAndNextRequestTriesAgain) {
    bool succeeded = false;
    for (uint64_t n = 1; !succeeded && n < 20; ++n) {
        failAllocation(n);
        quorvelinfactory* factory = moduleFactory();
        succeeded = !allocationHasFailed();
        cancelAllocationFailure();
        EXPECT_EQ(moduleState().factory, factory);
        if (factory != nullptr) {
            factory->release();
        } else {
            quorvelinfactory* next = moduleFactory();
            ASSERT_NE(next, nullptr);
            next->release();
        }
    }
    EXPECT_TRUE(succeeded);
}

TEST_F(ModuleStateTest, EntryPointStoresHandleAtProcessAttachAndAlwaysSucceeds) {
    void* const old = moduleState().handle;
    int handle = 0;
    int other = 0;
    EXPECT_TRUE(moduleEntryPoint(&handle, ModuleEvent::processAttach));
    EXPECT_EQ(moduleState().handle, &handle);
    EXPECT_TRUE(moduleEntryPoint(&other, ModuleEvent::processDetach));
    EXPECT_EQ(moduleState().handle, &handle);
    moduleState().handle = old;
}

TEST_F(ModuleStateTest, DescriptionIsSetAtStartUp) {
    EXPECT_EQ(std::u16string(moduleState().description), u"JavaScript plug-in");
}

}  // namespace
}  // namespace quorvelin
