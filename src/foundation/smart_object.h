// Smart objects: the base classes of everything that lives long, from a node of a syntax tree to a machine.
//
// A smart object is counted, can say which class it is, can be asked for another face of itself by class
// identity, and tells listeners when it dies. The classes, their order and the order of their virtual
// operations are the host's contract; a class adds its own operations behind those of its bases.
//
// Ownership: an object is born with one holder. A pointer that an operation returns carries a reference for
// the caller, an argument is borrowed, and who stores a pointer adds a reference. `Owned` (owned.h) keeps
// such a pointer inside a function.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/identity.h"

namespace quorvelin {

class BNotifySender;

// Root interface.
class IBTransportable {
  public:
    IBTransportable() : self_(this) {}
    IBTransportable(const IBTransportable&) = delete;
    IBTransportable& operator=(const IBTransportable&) = delete;

    virtual ~IBTransportable() { self_ = nullptr; }

    // Always true. The engine never asks.
    virtual bool isPresent() const { return true; }

    // The identity of the most derived class that declares one.
    virtual const stype_info& getClassId() const;

    // The face of this object that belongs to the class `id`, or null. The result is borrowed: no reference
    // is added. `visitor` may be null; otherwise it is told of every class that is tried, and after a hit it
    // stays entered on the path from the object's class to the class found.
    virtual void* query(const stype_info& id, IBQueryVisitor* visitor);

    // Objects come from the host's allocator. `new` gives null when memory fails.
    static void* operator new(size_t size) noexcept;
    static void* operator new(size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept;
    static void operator delete(void*, void*) noexcept {}

  private:
    friend class BSmartObject;

    // The object itself while it lives; nothing reads it. While an object waits for its destruction behind
    // others, the word links it to the next one that waits.
    void* self_;
};

// Somebody who wants to hear of events. The handler is the fifth operation.
class BNotifyListener : public IBTransportable {
  public:
    // What the handler answers: stop the sending at once, or go on and let `send` remember it.
    static constexpr int32_t kGoOn = 0;
    static constexpr int32_t kStop = 1;
    static constexpr int32_t kRemember = 2;

    // `sender` is the sender face of the object that the event is about; it may be null.
    virtual int32_t notified(BNotifySender* sender) = 0;
};

// Virtual base of every smart object: the object as a sender of notifications, with its list of listeners.
// The list is the only thing about a smart object that several threads may touch; it is guarded by the host's
// process-wide lock, and listeners are called outside it.
class BNotifySender {
  public:
    BNotifySender() = default;
    BNotifySender(const BNotifySender&) = delete;
    BNotifySender& operator=(const BNotifySender&) = delete;

    virtual const stype_info& getClassId() const;
    virtual void* query(const stype_info& id, IBQueryVisitor* visitor);

    // Puts the listener behind those of lower and equal priority. The listener is not owned and must stay
    // valid until it is removed or this object is gone. Without memory the listener is not added.
    void addListener(BNotifyListener* listener, int32_t priority);

    // Takes the first entry of the listener out of the list; nothing if there is none.
    void removeListener(BNotifyListener* listener);

    // How many listeners the list counts; 0 without a list.
    int32_t listenerCount() const { return list_ != nullptr ? list_->count : 0; }
    bool hasList() const { return list_ != nullptr; }

    using Callback = int32_t (*)(BNotifySender* sender, uint32_t flags, BNotifyListener* listener);

    // Calls `callback` once for each different listener, in the order of the list, which may change
    // meanwhile. 1 when a callback answered 1, which ends the sending; else 2 when one answered 2; else 0.
    int32_t send(BNotifySender* sender, uint32_t flags, Callback callback);

  protected:
    // Not virtual: the operations of this face are the two above. Objects are deleted through their own
    // class.
    ~BNotifySender();

  private:
    struct Entry {
        Entry* next;
        Entry* previous;
        BNotifyListener* listener;
        int32_t priority;
    };
    // The sentinel of the circular list.
    struct List {
        Entry* next;
        Entry* previous;
        int32_t count;
    };

    // The sentinel seen as an entry; only its two links are used.
    static Entry* sentinel(List* list) { return reinterpret_cast<Entry*>(list); }

    List* list_ = nullptr;
};

class IBRemoteRemovable : public IBTransportable, public virtual BNotifySender {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    // Lets the object go: fires `notifyDestroy` and destroys it at once. True when it is gone.
    virtual bool release();

    // Tells the object's own listeners, then the process-wide list "OnDestroy", that the object dies.
    virtual void notifyDestroy();
};

class IBSmartObject : public IBRemoteRemovable {
  public:
    virtual void addRef() = 0;
    // The raw count: 0 means one holder.
    virtual int32_t refCount() const = 0;
};

class BSmartObject : public IBSmartObject {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    // One holder less. The last one fires `notifyDestroy`, destroys the object and gets true; every other
    // gets false. However long the chain of objects that die with this one, native stack use is bounded.
    bool release() override;
    void addRef() override { ++count_; }
    int32_t refCount() const override { return count_; }

  private:
    void destroy();

    int32_t count_ = 0;
};

// One class on the walk of a `query`: its identity, the face to hand out, and how deep below the object's own
// class it stands. A walk is a table of these in the order of trial, each class in front of its bases.
struct QueryStep {
    ClassId id;
    void* face;
    int32_t depth;
};

// The one implementation of `query`: tries the steps in order and keeps the visitor's path.
void* walkQuery(const QueryStep* steps, int32_t stepCount, const stype_info& id, IBQueryVisitor* visitor);

}  // namespace quorvelin
