// JSKernel, the machine: one complete script world. It is a global context with the member `console`, and the
// class that a host names when it asks the factory for a machine.
#pragma once

#include "machine/global_context.h"

namespace quorvelin {

class JSKernel : public JSGlobalContext {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // A new console object. A host's own machine class gives one that shows something.
    virtual JSObject* makeConsole(JSContext* ctx, JSObject* receiver);
};

}  // namespace quorvelin
