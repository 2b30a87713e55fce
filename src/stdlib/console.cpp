#include "stdlib/console.h"

#include "foundation/well_known_names.h"
#include "objects/member_request.h"

namespace quorvelin {

namespace {

using Operation = void (JSConsole::*)(JSObject* args, JSContext* ctx, JSObject* receiver);

// Every method of a console gives undefined.
template <Operation operation>
JSObject* callOperation(JSConsole& self, JSMemberRequest& request) {
    (self.*operation)(request.argument, request.ctx, request.receiver);
    return nullptr;
}

constexpr NativeMember<JSConsole> kMembers[] = {
    {WellKnownName::show, JSValueType::function, nullptr, nullptr, callOperation<&JSConsole::callShow>},
    {WellKnownName::println, JSValueType::function, nullptr, nullptr, callOperation<&JSConsole::callPrintln>},
    {WellKnownName::hide, JSValueType::function, nullptr, nullptr, callOperation<&JSConsole::callHide>},
    {WellKnownName::clear, JSValueType::function, nullptr, nullptr, callOperation<&JSConsole::callClear>},
};

}  // namespace

bool JSConsole::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSObject::dispatchMember(request);
}

void JSConsole::callShow(JSObject*, JSContext*, JSObject*) {
    show();
}

void JSConsole::show() {}

void JSConsole::callHide(JSObject*, JSContext*, JSObject*) {
    hide();
}

void JSConsole::hide() {}

void JSConsole::callPrintln(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (argString(args, 0, text, ctx, receiver)) println(text);
}

void JSConsole::println(const BString&) {}

// Quirk: the cells are forgotten, not released; what a script stored on a console and cleared is never freed.
// And the operation `clear` is not called.
void JSConsole::callClear(JSObject*, JSContext*, JSObject*) {
    members().forgetAll();
}

void JSConsole::clear() {}

}  // namespace quorvelin
