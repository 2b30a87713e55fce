#include "foundation/smart_object.h"

#include <atomic>
#include <new>

#include "foundation/heap_block.h"
#include "host/allocator.h"
#include "host/critical_section.h"
#include "host/global_data.h"

namespace quorvelin {

namespace {

// Holds the host's process-wide lock.
class ProcessLock {
  public:
    ProcessLock() : section_(dataCSProc()) { EnterCriticalSection(section_); }
    ~ProcessLock() { LeaveCriticalSection(section_); }
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

  private:
    SCriticalSection* section_;
};

// The process-wide list that hears of every object's end, and the name under which it is known.
constexpr const char* kOnDestroy = "OnDestroy";

// Set when the process-wide list of this library has been torn down.
bool globalSenderIsGone = false;

class GlobalSender final : public BNotifySender {
  public:
    ~GlobalSender() {
        // The library goes away: nobody may find its list any more.
        globalSenderIsGone = true;
        const stype_info& key = identityOf(ClassId::IBRemoteRemovable);
        if (BGlobalData::getItem(key, kOnDestroy) == static_cast<BNotifySender*>(this)) {
            BGlobalData::setItem(key, kOnDestroy, nullptr, nullptr);
        }
    }
};

// The process-wide list; null when there is none any more.
BNotifySender* onDestroySender() {
    const stype_info& key = identityOf(ClassId::IBRemoteRemovable);
    void* item = BGlobalData::getItem(key, kOnDestroy);
    if (item == nullptr && !globalSenderIsGone) {
        static GlobalSender sender;
        item = static_cast<BNotifySender*>(&sender);
        BGlobalData::setItem(key, kOnDestroy, item, nullptr);
    }
    return static_cast<BNotifySender*>(item);
}

int32_t callListener(BNotifySender* sender, uint32_t, BNotifyListener* listener) {
    return listener->notified(sender);
}

}  // namespace

void* IBTransportable::operator new(size_t size) noexcept {
    return _smalloc(size);
}

void IBTransportable::operator delete(void* block) noexcept {
    _sfree(block);
}

const stype_info& IBTransportable::getClassId() const {
    return identityOf(ClassId::IBTransportable);
}

void* IBTransportable::query(const stype_info& id, IBQueryVisitor* visitor) {
    const QueryStep steps[] = {{ClassId::IBTransportable, this, 0}};
    return walkQuery(steps, 1, id, visitor);
}

const stype_info& BNotifySender::getClassId() const {
    return identityOf(ClassId::BNotifySender);
}

void* BNotifySender::query(const stype_info& id, IBQueryVisitor* visitor) {
    const QueryStep steps[] = {{ClassId::BNotifySender, this, 0}};
    return walkQuery(steps, 1, id, visitor);
}

BNotifySender::~BNotifySender() {
    if (list_ == nullptr) return;
    const ProcessLock lock;
    Entry* entry = list_->next;
    while (entry != sentinel(list_)) {
        Entry* next = entry->next;
        _sfree(entry);
        entry = next;
    }
    _sfree(list_);
    list_ = nullptr;
}

void BNotifySender::addListener(BNotifyListener* listener, int32_t priority) {
    const ProcessLock lock;
    if (list_ == nullptr) {
        list_ = static_cast<List*>(_smalloc(sizeof(List)));
        if (list_ == nullptr) return;
        list_->next = list_->previous = sentinel(list_);
        list_->count = 0;
    }
    Entry* before = list_->next;
    while (before != sentinel(list_) && before->priority <= priority) before = before->next;
    Entry* entry = static_cast<Entry*>(_smalloc(sizeof(Entry)));
    if (entry != nullptr) {
        *entry = {before, before->previous, listener, priority};
        before->previous->next = entry;
        before->previous = entry;
    }
    // Quirk: the count grows although memory for the entry failed and the listener will not be called.
    ++list_->count;
}

void BNotifySender::removeListener(BNotifyListener* listener) {
    const ProcessLock lock;
    if (list_ == nullptr) return;
    for (Entry* entry = list_->next; entry != sentinel(list_); entry = entry->next) {
        if (entry->listener != listener) continue;
        entry->previous->next = entry->next;
        entry->next->previous = entry->previous;
        _sfree(entry);
        --list_->count;
        return;
    }
}

int32_t BNotifySender::send(BNotifySender* sender, uint32_t flags, Callback callback) {
    constexpr size_t kStartCapacity = 8;
    HeapBlock<BNotifyListener*> called;
    size_t calledCount = 0;
    if (!called.resize(kStartCapacity)) return BNotifyListener::kGoOn;

    const auto wasCalled = [&](const BNotifyListener* listener) {
        for (size_t i = 0; i < calledCount; ++i) {
            if (called[i] == listener) return true;
        }
        return false;
    };

    int32_t answer = BNotifyListener::kGoOn;
    for (;;) {
        // The list may have changed since the last call, so the search starts over each time.
        BNotifyListener* next = nullptr;
        {
            const ProcessLock lock;
            if (list_ == nullptr) break;
            for (Entry* entry = list_->next; entry != sentinel(list_) && next == nullptr;
                 entry = entry->next) {
                if (!wasCalled(entry->listener)) next = entry->listener;
            }
        }
        if (next == nullptr || !called.growTo(calledCount + 1)) break;
        called[calledCount++] = next;
        const int32_t result = callback(sender, flags, next);
        if (result == BNotifyListener::kStop) return BNotifyListener::kStop;
        if (result == BNotifyListener::kRemember) answer = BNotifyListener::kRemember;
    }
    return answer;
}

const stype_info& IBRemoteRemovable::getClassId() const {
    return identityOf(ClassId::IBRemoteRemovable);
}

void* IBRemoteRemovable::query(const stype_info& id, IBQueryVisitor* visitor) {
    const QueryStep steps[] = {
        {ClassId::IBRemoteRemovable, this, 0},
        {ClassId::IBTransportable, this, 1},
        {ClassId::BNotifySender, static_cast<BNotifySender*>(this), 1},
    };
    return walkQuery(steps, 3, id, visitor);
}

bool IBRemoteRemovable::release() {
    notifyDestroy();
    delete this;
    return true;
}

void IBRemoteRemovable::notifyDestroy() {
    BNotifySender* self = this;
    if (hasList()) send(self, 0, callListener);
    // Every value that a script computes dies here, so the list is looked up again only when the host's items
    // changed.
    static std::atomic<BNotifySender*> knownSender{nullptr};
    static std::atomic<uint32_t> knownChange{0};
    const uint32_t change = BGlobalData::changeCount();
    BNotifySender* everybody = knownSender.load(std::memory_order_relaxed);
    if (knownChange.load(std::memory_order_acquire) != change) {
        everybody = onDestroySender();
        knownSender.store(everybody, std::memory_order_relaxed);
        knownChange.store(change, std::memory_order_release);
    }
    if (everybody != nullptr && everybody->hasList()) everybody->send(self, 0, callListener);
}

const stype_info& BSmartObject::getClassId() const {
    return identityOf(ClassId::BSmartObject);
}

void* BSmartObject::query(const stype_info& id, IBQueryVisitor* visitor) {
    const QueryStep steps[] = {
        {ClassId::BSmartObject, this, 0},
        {ClassId::IBSmartObject, this, 1},
        {ClassId::IBRemoteRemovable, this, 2},
        {ClassId::IBTransportable, this, 3},
        {ClassId::BNotifySender, static_cast<BNotifySender*>(this), 3},
    };
    return walkQuery(steps, 5, id, visitor);
}

bool BSmartObject::release() {
    if (count_ != 0) {
        --count_;
        return false;
    }
    notifyDestroy();
    destroy();
    return true;
}

namespace {

// Destroying an object releases what it holds, which may destroy that in turn. To a certain depth this simply
// nests, so that things die in their natural order; what would die deeper than that waits in a list that the
// outermost destruction works off.
constexpr int32_t kDeepestDestruction = 64;
thread_local int32_t destructionDepth = 0;
thread_local BSmartObject* firstWaiting = nullptr;

}  // namespace

void BSmartObject::destroy() {
    if (destructionDepth >= kDeepestDestruction) {
        self_ = firstWaiting;
        firstWaiting = this;
        return;
    }
    ++destructionDepth;
    delete this;
    if (destructionDepth == 1) {
        while (firstWaiting != nullptr) {
            BSmartObject* next = firstWaiting;
            firstWaiting = static_cast<BSmartObject*>(next->self_);
            delete next;
        }
    }
    --destructionDepth;
}

void* walkQuery(const QueryStep* steps, int32_t stepCount, const stype_info& id, IBQueryVisitor* visitor) {
    int32_t entered = 0;
    const auto leaveTo = [&](int32_t depth) {
        for (; entered > depth; --entered) {
            if (visitor != nullptr) visitor->leave();
        }
    };
    for (int32_t i = 0; i < stepCount; ++i) {
        leaveTo(steps[i].depth);
        const stype_info& tried = identityOf(steps[i].id);
        if (visitor != nullptr) visitor->enter(tried, steps[i].face);
        ++entered;
        if (id.guid == tried.guid) return steps[i].face;
    }
    leaveTo(0);
    return nullptr;
}

}  // namespace quorvelin
