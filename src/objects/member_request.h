// JSMemberRequest, what a class's `dispatchMember` is handed, and the shared walker over tables of native
// members.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/name.h"
#include "foundation/well_known_names.h"
#include "objects/js_object.h"

namespace quorvelin {

enum class JSRequestOp : uint32_t { exists = 0, type = 1, get = 2, set = 3, call = 4 };

struct JSMemberRequest {
    // For exists and type.
    JSMemberRequest(const BString& memberName, JSRequestOp requestOp)
        : name(&memberName), op(requestOp), wellKnown(wellKnownOf(memberName)) {}
    // For get, set and call.
    JSMemberRequest(const BString& memberName, JSRequestOp requestOp, JSObject* requestArgument,
                    JSContext* context, JSObject* requestReceiver)
        : name(&memberName),
          op(requestOp),
          argument(requestArgument),
          ctx(context),
          receiver(requestReceiver),
          wellKnown(wellKnownOf(memberName)) {}

    // The member's name.
    const BString* name;
    JSRequestOp op;
    // Out, for type.
    JSValueType type = JSValueType::undefined;
    // Out, for get, set and call; carries a reference for the caller.
    JSObject* result = nullptr;
    // In: for set the value to store, for call the argument list. Borrowed, may be null.
    JSObject* argument = nullptr;
    // In, for get, set and call.
    JSContext* ctx = nullptr;
    JSObject* receiver = nullptr;

    // Which of the engine's own names the name is (a WellKnownName), or -1. For the engine's classes.
    int32_t wellKnown;

    bool isNamed(WellKnownName which) const { return wellKnown == static_cast<int32_t>(which); }

  private:
    static int32_t wellKnownOf(const BString& text) {
        const Atom* atom = Atom::ofInternedText(text);
        return atom != nullptr ? atom->wellKnown() : searchWellKnown(text);
    }
    static int32_t searchWellKnown(const BString& text);
};

// One member of a native class. A null operation is one that the class does not serve: the request goes to
// the base class. `get` null on a member of type function gives a method reference.
template <typename Class>
struct NativeMember {
    WellKnownName name;
    JSValueType type;
    // The value, with a reference for the caller.
    JSObject* (*get)(Class& self, JSMemberRequest& request) = nullptr;
    // Stores `request.argument`; the result of the request, with a reference.
    JSObject* (*set)(Class& self, JSMemberRequest& request) = nullptr;
    // Calls with `request.argument`; the result with a reference.
    JSObject* (*call)(Class& self, JSMemberRequest& request) = nullptr;
};

// The method reference that a get of a native method gives.
JSObject* makeNativeMethodRef(JSObject& self, JSMemberRequest& request);

// Answers the request from the table, in its order. False when no member matches or the matching one does not
// serve the operation; the caller then asks its base class.
template <typename Class, size_t count>
bool dispatchNative(const NativeMember<Class> (&table)[count], Class& self, JSMemberRequest& request) {
    if (request.wellKnown < 0) return false;
    for (const NativeMember<Class>& member : table) {
        if (!request.isNamed(member.name)) continue;
        switch (request.op) {
            case JSRequestOp::exists:
                return true;
            case JSRequestOp::type:
                request.type = member.type;
                return true;
            case JSRequestOp::get:
                if (member.get != nullptr) {
                    request.result = member.get(self, request);
                } else if (member.type == JSValueType::function) {
                    request.result = makeNativeMethodRef(self, request);
                } else {
                    return false;
                }
                return true;
            case JSRequestOp::set:
                if (member.set == nullptr) return false;
                request.result = member.set(self, request);
                return true;
            case JSRequestOp::call:
                if (member.call == nullptr) return false;
                request.result = member.call(self, request);
                return true;
        }
    }
    return false;
}

}  // namespace quorvelin
