// The class factory: the one object that a host gets out of the module, and from which it asks for machines
// by class identifier.
//
// It stands on three layers. The interfaces IBSingleton and IBQuery give the first operations behind those of
// a smart object; BClassFactory keeps objects of which there may be only one, and hears when an object that
// it made dies; quorvelinfactory makes machines. The order of the virtual operations is the host's contract.
//
// Each living object that the factory made holds one reference on the factory, so the factory outlives them.
#pragma once

#include <cstdint>

#include "foundation/smart_object.h"
#include "machine/create_kernel.h"
#include "machine/guid_stack.h"
#include "machine/singleton_map.h"

namespace quorvelin {

// Something of which a factory keeps only one. It takes counting from BSmartObject but does not answer to
// that name.
class IBSingleton : public BSmartObject {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    // Fires `notifyDestroy` and deletes the object, however many hold it.
    virtual void destroySelf();
};

// Something that makes objects by class identifier.
class IBQuery : public IBSingleton {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    // The new object, or the kept one of a class of which there is only one; null when there is no such class
    // or no memory. A new object has one holder, the caller; a kept one is borrowed. `reserved` is never
    // read.
    virtual IBRemoteRemovable* createInstance(const BGuid& id, uintptr_t reserved) = 0;
};

class BClassFactory : public IBQuery {
  public:
    BClassFactory();

    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    // Lets all kept objects destroy themselves.
    virtual void dropSingletons();

    // Called when a kept object dies. A hook: does nothing.
    virtual void instanceGone(BNotifySender* object);

    // False when there was no memory for the factory's own tables.
    bool isUsable() const { return singletons_.isUsable(); }

    const JSSingletonMap& singletons() const { return singletons_; }
    const JSGuidStack& singletonIds() const { return singletonIds_; }

  protected:
    // The object kept under the identifier, or null; borrowed.
    IBRemoteRemovable* keptInstance(const BGuid& id) const { return singletons_.find(id); }

    // Enters a new object into the factory's books: keeps it under `id` if it is a singleton, gives it its
    // reference on the factory, and makes sure that the factory hears of its end.
    void adopt(const BGuid& id, IBRemoteRemovable* instance);

  private:
    using DestroyHandler = int32_t (BClassFactory::*)(BNotifySender* destroyed);

    // Stands in the listener list of every object that the factory made.
    class DestroyReceiver final : public BNotifyListener {
      public:
        DestroyReceiver(BClassFactory* factory, DestroyHandler handler)
            : factory_(factory), handler_(handler) {}
        int32_t notified(BNotifySender* sender) override { return (factory_->*handler_)(sender); }

      private:
        BClassFactory* factory_;
        DestroyHandler handler_;
    };

    // May delete the factory, of which the destroyed object may have been the last holder. `destroyed` may be
    // null.
    int32_t instanceDestroyed(BNotifySender* destroyed);

    JSSingletonMap singletons_;
    JSGuidStack singletonIds_;
    DestroyReceiver receiver_;
};

// The factory of this module: makes machines, and nothing else.
class quorvelinfactory final : public BClassFactory {
  public:
    using KernelMaker = BSmartObject* (*)();

    // A new factory with one holder, or null when memory fails. `makeKernel` gives what `createInstance`
    // hands out.
    static quorvelinfactory* create(KernelMaker makeKernel = createKernel);

    ~quorvelinfactory() override;

    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;

    IBRemoteRemovable* createInstance(const BGuid& id, uintptr_t reserved) override;

  private:
    explicit quorvelinfactory(KernelMaker makeKernel) : makeKernel_(makeKernel) {}

    KernelMaker makeKernel_;
};

}  // namespace quorvelin
