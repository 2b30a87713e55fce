#include "objects/simple_objects.h"

#include "foundation/well_known_names.h"

namespace quorvelin {

void JSNull::asString(BString& out, JSContext*, JSObject*) {
    out = nameText(WellKnownName::nullWord);
}

void JSNull::asNumber(JSNumberValue& out, JSContext*, JSObject*) {
    out = JSNumberValue::of(0.0);
}

bool JSNull::asBoolean(JSContext*, JSObject*) {
    return false;
}

JSObject* JSNull::asObject(JSContext*, JSObject*) {
    return shared();
}

JSPlainObject::JSPlainObject(JSObject* function) : JSObject(function), function_(function) {
    if (function_ != nullptr) function_->addRef();
    setEngineClass(EngineClass::plainObject);
}

JSPlainObject::~JSPlainObject() {
    if (function_ != nullptr) function_->release();
}

bool JSPlainObject::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return hasOwnMember(name, ctx, receiver) ||
           (function_ != nullptr && function_->hasMember(name, ctx, receiver));
}

JSValueType JSPlainObject::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (asksFunction(name, ctx, receiver)) return function_->memberType(name, ctx, receiver);
    return JSObject::memberType(name, ctx, receiver);
}

JSObject* JSPlainObject::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (asksFunction(name, ctx, receiver)) return function_->getMember(name, ctx, receiver);
    return JSObject::getMember(name, ctx, receiver);
}

JSObject* JSPlainObject::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (asksFunction(name, ctx, receiver)) return function_->callMember(name, args, ctx, receiver);
    return JSObject::callMember(name, args, ctx, receiver);
}

}  // namespace quorvelin
