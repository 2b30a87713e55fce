// JSLocalContext, JSWithContext and JSThisContext.
#include "evaluator/contexts.h"
#include "foundation/well_known_names.h"
#include "objects/js_property.h"

namespace quorvelin {

namespace {

bool isThis(const BString& name) { return name == nameText(WellKnownName::thisWord); }

}  // namespace

// ---- Local ----

bool JSLocalContext::declareVariable(const BString& name) {
    if (findMember(name, this, nullptr) >= 0) return true;
    Value cell(new JSProperty(Name(name), nullptr));
    if (cell && members().append(static_cast<JSProperty*>(cell.get()))) (void)cell.take();
    return true;
}

// ---- With ----

JSWithContext::JSWithContext(JSContext* parent, JSObject* object)
    : JSContext(EngineContext{}, parent), object_(Value::share(object).take()) {}

JSWithContext::~JSWithContext() {
    if (object_ != nullptr) object_->release();
}

bool JSWithContext::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return objectHas(name, ctx, receiver) || JSContext::hasMember(name, ctx, receiver);
}

JSValueType JSWithContext::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (objectHas(name, ctx, receiver)) return object_->memberType(name, ctx, receiver);
    return JSContext::memberType(name, ctx, receiver);
}

JSObject* JSWithContext::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (objectHas(name, ctx, receiver)) return object_->getMember(name, ctx, receiver);
    return JSContext::getMember(name, ctx, receiver);
}

JSObject* JSWithContext::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (objectHas(name, ctx, receiver)) return object_->setMember(name, value, ctx, receiver);
    return JSContext::setMember(name, value, ctx, receiver);
}

bool JSWithContext::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (objectHas(name, ctx, receiver)) return object_->deleteMember(name, ctx, receiver);
    return JSContext::deleteMember(name, ctx, receiver);
}

// ---- This ----

JSThisContext::JSThisContext(JSContext* parent, JSObject* object)
    : JSContext(EngineContext{}, parent), object_(Value::share(object).take()) {}

JSThisContext::~JSThisContext() {
    if (object_ != nullptr) object_->release();
}

bool JSThisContext::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return isThis(name) || JSContext::hasMember(name, ctx, receiver) ||
           (object_ != nullptr && object_->hasMember(name, ctx, receiver));
}

JSValueType JSThisContext::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isThis(name)) return JSValueType::object;
    if (objectAnswers(name, ctx, receiver)) return object_->memberType(name, ctx, receiver);
    return JSContext::memberType(name, ctx, receiver);
}

JSObject* JSThisContext::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isThis(name)) return Value::share(object_).take();
    if (objectAnswers(name, ctx, receiver)) return object_->getMember(name, ctx, receiver);
    return JSContext::getMember(name, ctx, receiver);
}

JSObject* JSThisContext::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (isThis(name)) {
        // Quirk: writing `this` assigns into the object instead of naming another one.
        const Value object = Value::share(object_);
        if (object) return object->assign(value, ctx, receiver);
        setThis(value, ctx, receiver);
        return Value::share(value).take();
    }
    if (objectAnswers(name, ctx, receiver)) return object_->setMember(name, value, ctx, receiver);
    return JSContext::setMember(name, value, ctx, receiver);
}

bool JSThisContext::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    // Quirk: the message does not end the operation.
    if (isThis(name)) ctx->reportError(u"this property is read only");
    if (objectAnswers(name, ctx, receiver)) return object_->deleteMember(name, ctx, receiver);
    return JSContext::deleteMember(name, ctx, receiver);
}

JSObject* JSThisContext::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (isThis(name) && object_ != nullptr) {
        const Value object = Value::share(object_);
        return object->call(args, ctx, receiver);
    }
    if (objectAnswers(name, ctx, receiver)) return object_->callMember(name, args, ctx, receiver);
    return JSContext::callMember(name, args, ctx, receiver);
}

JSObject* JSThisContext::getThis(JSContext*, JSObject*) { return Value::share(object_).take(); }

void JSThisContext::setThis(JSObject* value, JSContext*, JSObject*) {
    const Value old(std::exchange(object_, Value::share(value).take()));
}

JSObject* JSThisContext::nearestThis() {
    return object_ != nullptr ? object_->shared() : JSContext::nearestThis();
}

}  // namespace quorvelin
