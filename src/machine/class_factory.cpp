#include "machine/class_factory.h"

#include <iterator>

#include "foundation/owned.h"
#include "machine/module_state.h"

namespace quorvelin {

namespace {

// A factory and its bases stand in one line, so that every class's walk is the tail of this one.
constexpr ClassId kLineage[] = {
    ClassId::quorvelinfactory, ClassId::BClassFactory,     ClassId::IBQuery,         ClassId::IBSingleton,
    ClassId::IBSmartObject,    ClassId::IBRemoteRemovable, ClassId::IBTransportable,
};
constexpr int32_t kLineageLength = static_cast<int32_t>(std::size(kLineage));

// `query` from the class `first` on: all faces are the object itself but that of the sender, which is the
// virtual base of IBRemoteRemovable.
void* queryFrom(ClassId first, IBSingleton* object, const stype_info& id, IBQueryVisitor* visitor) {
    QueryStep steps[kLineageLength + 1];
    int32_t count = 0;
    bool reached = false;
    for (const ClassId tried : kLineage) {
        reached = reached || tried == first;
        if (reached) {
            steps[count] = {tried, object, count};
            ++count;
        }
    }
    steps[count] = {ClassId::BNotifySender, static_cast<BNotifySender*>(object), count - 1};
    return walkQuery(steps, count + 1, id, visitor);
}

}  // namespace

const stype_info& IBSingleton::getClassId() const {
    return identityOf(ClassId::IBSingleton);
}

void* IBSingleton::query(const stype_info& id, IBQueryVisitor* visitor) {
    return queryFrom(ClassId::IBSingleton, this, id, visitor);
}

void IBSingleton::destroySelf() {
    notifyDestroy();
    delete this;
}

const stype_info& IBQuery::getClassId() const {
    return identityOf(ClassId::IBQuery);
}

void* IBQuery::query(const stype_info& id, IBQueryVisitor* visitor) {
    return queryFrom(ClassId::IBQuery, this, id, visitor);
}

BClassFactory::BClassFactory() : receiver_(this, &BClassFactory::instanceDestroyed) {}

const stype_info& BClassFactory::getClassId() const {
    return identityOf(ClassId::BClassFactory);
}

void* BClassFactory::query(const stype_info& id, IBQueryVisitor* visitor) {
    return queryFrom(ClassId::BClassFactory, this, id, visitor);
}

void BClassFactory::dropSingletons() {
    // Each kept object holds a reference on this factory, perhaps the last one.
    const auto self = Owned<BClassFactory>::share(this);
    while (!singletonIds_.isEmpty()) {
        IBSingleton* kept = singletons_.remove(singletonIds_.pop());
        if (kept != nullptr) kept->destroySelf();
    }
}

void BClassFactory::instanceGone(BNotifySender*) {}

void BClassFactory::adopt(const BGuid& id, IBRemoteRemovable* instance) {
    auto* singleton = static_cast<IBSingleton*>(instance->query(identityOf(ClassId::IBSingleton), nullptr));
    if (singleton != nullptr && singletons_.insert(id, singleton) == nullptr) singletonIds_.push(id);
    addRef();
    instance->addListener(&receiver_, 0);
}

int32_t BClassFactory::instanceDestroyed(BNotifySender* destroyed) {
    const bool isSingleton =
        destroyed != nullptr && destroyed->query(identityOf(ClassId::IBSingleton), nullptr) != nullptr;
    if (isSingleton) {
        singletons_.remove(destroyed->getClassId().guid);
        instanceGone(destroyed);
    }
    release();
    return BNotifyListener::kRemember;
}

quorvelinfactory* quorvelinfactory::create(KernelMaker makeKernel) {
    auto* factory = new quorvelinfactory(makeKernel);
    if (factory != nullptr && !factory->isUsable()) {
        delete factory;
        return nullptr;
    }
    return factory;
}

quorvelinfactory::~quorvelinfactory() {
    // First of all, so that the next request for the factory makes a new one.
    if (moduleState().factory == this) moduleState().factory = nullptr;
}

const stype_info& quorvelinfactory::getClassId() const {
    return identityOf(ClassId::quorvelinfactory);
}

void* quorvelinfactory::query(const stype_info& id, IBQueryVisitor* visitor) {
    return queryFrom(ClassId::quorvelinfactory, this, id, visitor);
}

IBRemoteRemovable* quorvelinfactory::createInstance(const BGuid& id, uintptr_t) {
    if (!(id == identityOf(ClassId::JSKernel).guid)) return nullptr;
    if (IBRemoteRemovable* kept = keptInstance(id)) return kept;
    Owned<BSmartObject> kernel(makeKernel_());
    if (!kernel) return nullptr;
    auto* instance =
        static_cast<IBRemoteRemovable*>(kernel->query(identityOf(ClassId::IBRemoteRemovable), nullptr));
    if (instance == nullptr) return nullptr;
    adopt(id, instance);
    static_cast<void>(kernel.take());  // the caller holds the object through `instance` from here on
    return instance;
}

}  // namespace quorvelin
