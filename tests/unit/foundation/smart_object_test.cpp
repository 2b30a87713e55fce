// Counting, querying and dying of smart objects.
#include "foundation/smart_object.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <string>
#include <vector>

#include "foundation/owned.h"
#include "host/allocator.h"
#include "support/operation_place.h"

namespace quorvelin {
namespace {

int alive = 0;

class Thing : public BSmartObject {
  public:
    Thing() { ++alive; }
    ~Thing() override { --alive; }
};

TEST(SmartObject, IsBornWithOneHolder) {
    Thing* thing = new Thing();
    EXPECT_EQ(thing->refCount(), 0);
    EXPECT_EQ(alive, 1);
    EXPECT_TRUE(thing->release());
    EXPECT_EQ(alive, 0);
}

TEST(SmartObject, LastReleaseDestroys) {
    Thing* thing = new Thing();
    thing->addRef();
    thing->addRef();
    EXPECT_EQ(thing->refCount(), 2);
    EXPECT_FALSE(thing->release());
    EXPECT_FALSE(thing->release());
    EXPECT_EQ(thing->refCount(), 0);
    EXPECT_EQ(alive, 1);
    EXPECT_TRUE(thing->release());
    EXPECT_EQ(alive, 0);
}

TEST(SmartObject, NewGivesNullWithoutMemory) {
    failAllocation(1);
    EXPECT_EQ(new Thing(), nullptr);
    cancelAllocationFailure();
    EXPECT_EQ(alive, 0);
}

TEST(SmartObject, IsPresentAndSaysItsClass) {
    const Owned<Thing> thing(new Thing());
    EXPECT_TRUE(thing->isPresent());
    EXPECT_EQ(&thing->getClassId(), &identityOf(ClassId::BSmartObject));
    EXPECT_EQ(&static_cast<BNotifySender*>(thing.get())->getClassId(), &identityOf(ClassId::BSmartObject));
}

// ---- query ----

// Records what a query tells: "+Name" for a class entered, "-" for one left.
struct Visits final : IBQueryVisitor {
    void enter(const stype_info& identity, void* face) override {
        told.push_back(std::string("+") + identity.name());
        faces.push_back(face);
    }
    void leave() override { told.push_back("-"); }
    std::vector<std::string> told;
    std::vector<void*> faces;
};

TEST(SmartObjectQuery, EveryFace) {
    const Owned<Thing> thing(new Thing());
    BSmartObject* const object = thing.get();
    EXPECT_EQ(object->query(identityOf(ClassId::BSmartObject), nullptr), object);
    EXPECT_EQ(object->query(identityOf(ClassId::IBSmartObject), nullptr),
              static_cast<IBSmartObject*>(object));
    EXPECT_EQ(object->query(identityOf(ClassId::IBRemoteRemovable), nullptr),
              static_cast<IBRemoteRemovable*>(object));
    EXPECT_EQ(object->query(identityOf(ClassId::IBTransportable), nullptr),
              static_cast<IBTransportable*>(object));
    EXPECT_EQ(object->query(identityOf(ClassId::BNotifySender), nullptr),
              static_cast<BNotifySender*>(object));
    EXPECT_EQ(object->refCount(), 0);  // nothing is counted
}

TEST(SmartObjectQuery, SenderIsAnotherPointer) {
    const Owned<Thing> thing(new Thing());
    void* const face = thing->query(identityOf(ClassId::BNotifySender), nullptr);
    EXPECT_NE(face, nullptr);
    EXPECT_NE(face, static_cast<void*>(thing.get()));
}

TEST(SmartObjectQuery, UnknownIdentifierGivesNull) {
    const Owned<Thing> thing(new Thing());
    EXPECT_EQ(thing->query(identityOf(ClassId::IShell), nullptr), nullptr);
}

TEST(SmartObjectQuery, AfterASuccessThePathStaysEntered) {
    const Owned<Thing> thing(new Thing());
    Visits visits;
    EXPECT_NE(thing->query(identityOf(ClassId::BNotifySender), &visits), nullptr);
    EXPECT_EQ(visits.told, (std::vector<std::string>{"+BSmartObject", "+IBSmartObject", "+IBRemoteRemovable",
                                                     "+IBTransportable", "-", "+BNotifySender"}));
    EXPECT_EQ(visits.faces[0], static_cast<void*>(thing.get()));
    EXPECT_EQ(visits.faces[4], static_cast<BNotifySender*>(thing.get()));
    Visits first;
    EXPECT_NE(thing->query(identityOf(ClassId::BSmartObject), &first), nullptr);
    EXPECT_EQ(first.told, std::vector<std::string>{"+BSmartObject"});
}

TEST(SmartObjectQuery, AfterAMissEverythingIsLeft) {
    const Owned<Thing> thing(new Thing());
    Visits visits;
    EXPECT_EQ(thing->query(identityOf(ClassId::IShell), &visits), nullptr);
    EXPECT_EQ(visits.told,
              (std::vector<std::string>{"+BSmartObject", "+IBSmartObject", "+IBRemoteRemovable",
                                        "+IBTransportable", "-", "+BNotifySender", "-", "-", "-", "-"}));
}

TEST(SmartObjectQuery, FourWordsAreCompared) {
    struct Other final : stype_info {
        using stype_info::stype_info;
        const char* name() const override { return "Other"; }
        const char16_t* wideName() const override { return u"Other"; }
        void* queryOn(void*, IBQueryVisitor*) const override { return nullptr; }
    };
    const BGuid& guid = identityOf(ClassId::BSmartObject).guid;
    const Owned<Thing> thing(new Thing());
    const Other same(guid.words[0], guid.words[1], guid.words[2], guid.words[3]);
    EXPECT_NE(thing->query(same, nullptr),
              nullptr);  // another record of the same class, as another module has it
    const Other different(guid.words[0], guid.words[1], guid.words[2], guid.words[3] + 1);
    EXPECT_EQ(thing->query(different, nullptr), nullptr);
}

TEST(SmartObjectQuery, BasesAlone) {
    IBTransportable root;
    EXPECT_EQ(root.query(identityOf(ClassId::IBTransportable), nullptr), &root);
    EXPECT_EQ(root.query(identityOf(ClassId::BSmartObject), nullptr), nullptr);
    EXPECT_EQ(&root.getClassId(), &identityOf(ClassId::IBTransportable));

    class Removable : public IBRemoteRemovable {};
    Removable* removable = new Removable();
    EXPECT_EQ(&removable->getClassId(), &identityOf(ClassId::IBRemoteRemovable));
    Visits visits;
    EXPECT_EQ(removable->query(identityOf(ClassId::BSmartObject), &visits), nullptr);
    EXPECT_EQ(visits.told, (std::vector<std::string>{"+IBRemoteRemovable", "+IBTransportable", "-",
                                                     "+BNotifySender", "-", "-"}));
    EXPECT_TRUE(removable->release());
}

// ---- long chains ----

class Link : public BSmartObject {
  public:
    explicit Link(Link* nextLink) : next(nextLink) { ++alive; }
    ~Link() override { --alive; }
    Owned<Link> next;
};

Link* chain(int length) {
    Link* first = nullptr;
    for (int i = 0; i < length; ++i) first = new Link(first);
    return first;
}

TEST(SmartObjectChain, LongChainDiesWithoutDeepNativeStack) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 512 * 1024), 0);
    pthread_t thread;
    Link* first = chain(500000);
    ASSERT_EQ(alive, 500000);
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* link) -> void* {
                      static_cast<Link*>(link)->release();
                      return nullptr;
                  },
                  first),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(alive, 0);
}

TEST(SmartObjectChain, SharedPartOfAChainStays) {
    Link* tail = chain(100000);
    tail->addRef();
    Link* first = tail;
    for (int i = 0; i < 100000; ++i) first = new Link(first);
    EXPECT_TRUE(first->release());
    EXPECT_EQ(alive, 100000);
    EXPECT_TRUE(tail->release());
    EXPECT_EQ(alive, 0);
}

class Fork : public BSmartObject {
  public:
    Fork(Fork* leftFork, Fork* rightFork) : left(leftFork), right(rightFork) { ++alive; }
    ~Fork() override { --alive; }
    Owned<Fork> left;
    Owned<Fork> right;
};

TEST(SmartObjectChain, TreesDieWhole) {
    Fork* root = nullptr;
    for (int i = 0; i < 100000; ++i)
        root = i % 2 == 0 ? new Fork(root, new Fork(nullptr, nullptr)) : new Fork(nullptr, root);
    EXPECT_TRUE(root->release());
    EXPECT_EQ(alive, 0);
}

TEST(SmartObjectChain, ObjectsWithoutMemoryForAnythingStillDie) {
    Link* first = chain(10000);
    failAllocation(1, AllocationFailure::onwards);
    EXPECT_TRUE(first->release());
    cancelAllocationFailure();
    EXPECT_EQ(alive, 0);
}

// ---- Owned ----

TEST(Owned, KeepsOneReference) {
    Thing* thing = new Thing();
    {
        const Owned<Thing> first(thing);
        const Owned<Thing> second = Owned<Thing>::share(thing);
        EXPECT_EQ(thing->refCount(), 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Owned, MovesTakesAndResets) {
    Owned<Thing> first(new Thing());
    Owned<Thing> second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that state is promised
    second = Owned<Thing>(new Thing());
    EXPECT_EQ(alive, 1);
    Thing* taken = second.take();
    EXPECT_FALSE(second);
    taken->release();
    second = Owned<Thing>(new Thing());
    second.reset();
    EXPECT_EQ(alive, 0);
    second.reset();
    const Owned<Thing> none = Owned<Thing>::share(nullptr);
    EXPECT_FALSE(none);
}

// ---- the order of the operations, which hosts are built against ----

#ifdef QUORVELIN_KNOWS_OPERATION_PLACES

using support::operationPlace;

TEST(SmartObjectOperations, StandInOrder) {
    EXPECT_EQ(operationPlace(&IBTransportable::isPresent), 2u);
    EXPECT_EQ(operationPlace(&IBTransportable::getClassId), 3u);
    EXPECT_EQ(operationPlace(&IBTransportable::query), 4u);
    EXPECT_EQ(operationPlace(&IBRemoteRemovable::release), 5u);
    EXPECT_EQ(operationPlace(&IBRemoteRemovable::notifyDestroy), 6u);
    EXPECT_EQ(operationPlace(&IBSmartObject::addRef), 7u);
    EXPECT_EQ(operationPlace(&IBSmartObject::refCount), 8u);
    EXPECT_EQ(operationPlace(&BNotifySender::getClassId), 0u);
    EXPECT_EQ(operationPlace(&BNotifySender::query), 1u);
    EXPECT_EQ(operationPlace(&BNotifyListener::notified), 5u);
}

#endif

}  // namespace
}  // namespace quorvelin
