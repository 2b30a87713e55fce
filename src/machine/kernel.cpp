#include "machine/kernel.h"

#include "foundation/well_known_names.h"
#include "objects/member_request.h"
#include "stdlib/console.h"

namespace quorvelin {

const stype_info& JSKernel::getClassId() const {
    return identityOf(ClassId::JSKernel);
}

void* JSKernel::query(const stype_info& id, IBQueryVisitor* visitor) {
    const QueryStep steps[] = {
        {ClassId::JSKernel, this, 0},
        {ClassId::IQuorvelin, this, 1},
        {ClassId::BSmartObject, this, 2},
        {ClassId::IBSmartObject, this, 3},
        {ClassId::IBRemoteRemovable, this, 4},
        {ClassId::IBTransportable, this, 5},
        {ClassId::BNotifySender, static_cast<BNotifySender*>(this), 5},
    };
    return walkQuery(steps, static_cast<int32_t>(sizeof steps / sizeof steps[0]), id, visitor);
}

namespace {

JSObject* getConsole(JSKernel& self, JSMemberRequest& request) {
    return self.makeConsole(request.ctx, request.receiver);
}

// Assigning to `console` is accepted and has no effect.
JSObject* ignoreConsole(JSKernel&, JSMemberRequest&) {
    return nullptr;
}

constexpr NativeMember<JSKernel> kMembers[] = {
    {WellKnownName::console, JSValueType::object, getConsole, ignoreConsole, nullptr},
};

}  // namespace

bool JSKernel::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSContext::dispatchMember(request);
}

JSObject* JSKernel::makeConsole(JSContext*, JSObject*) {
    return new JSConsole();
}

}  // namespace quorvelin
