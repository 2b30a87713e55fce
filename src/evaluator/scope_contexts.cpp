// JSLocalContext, JSWithContext and JSThisContext.
#include "evaluator/contexts.h"
#include "foundation/well_known_names.h"
#include "objects/js_property.h"

namespace quorvelin {

// ---- Local ----

JSLocalContext::~JSLocalContext() {
    for (int32_t i = 0; i < members().count(); ++i) {
        const JSProperty* cell = members().at(i);
        if (cell != nullptr && cell->isCountedInScope()) cell->name().atom()->leaveScope();
    }
}

bool JSLocalContext::declareVariable(const BString& name) {
    if (findMember(name, this, nullptr) >= 0) return true;
    const Name ownName(name);
    Owned<JSProperty> cell(ownName.atom() != nullptr ? new JSProperty(ownName, nullptr) : nullptr);
    if (cell && members().append(cell.get())) {
        if (parent() != nullptr) {
            ownName.atom()->enterScope();
            cell->setCountedInScope();
        }
        (void)cell.take();
    }
    return true;
}

// ---- With ----

JSWithContext::JSWithContext(JSContext* parent, JSObject* object)
    : JSContext(EngineContext{}, parent), object_(Value::share(object).take()) {
    asksObjectFirst_ = true;
    if (state() != nullptr) ++state()->objectScopes;
}

JSWithContext::~JSWithContext() {
    if (state() != nullptr) --state()->objectScopes;
    if (object_ != nullptr) object_->release();
}

// Quirk: a call by bare name does not see the object.
JSContext::Holder JSWithContext::holderOf(const NameQuery& query) {
    if (object_ != nullptr && query.purpose != NameQuery::Purpose::call &&
        object_->hasMember(query.name, query.ctx, query.receiver)) {
        return {Holder::object, object_};
    }
    return JSContext::holderOf(query);
}

// ---- This ----

JSThisContext::JSThisContext(JSContext* parent, JSObject* object)
    : JSContext(EngineContext{}, parent), object_(Value::share(object).take()) {}

JSThisContext::~JSThisContext() {
    if (object_ != nullptr) object_->release();
}

JSContext::Holder JSThisContext::holderOf(const NameQuery& query) {
    if (query.isNamed(WellKnownName::thisWord) &&
        (query.purpose != NameQuery::Purpose::call || object_ != nullptr)) {
        return {Holder::special};
    }
    return JSContext::holderOf(query);
}

JSValueType JSThisContext::specialType(const NameQuery&) {
    return JSValueType::object;
}

JSObject* JSThisContext::specialGet(const NameQuery&) {
    return Value::share(object_).take();
}

// Quirk: writing `this` assigns into the object instead of naming another one.
JSObject* JSThisContext::specialSet(const NameQuery& query, JSObject* value) {
    const Value object = Value::share(object_);
    if (object) return object->assign(value, query.ctx, query.receiver);
    setThis(value, query.ctx, query.receiver);
    return Value::share(value).take();
}

// Quirk: the message does not end the deletion, which then finds nothing to delete.
void JSThisContext::specialDelete(const NameQuery& query) {
    query.ctx->reportError(u"this property is read only");
}

JSObject* JSThisContext::specialCall(const NameQuery& query, JSObject* args) {
    const Value object = Value::share(object_);
    return object->call(args, query.ctx, query.receiver);
}

JSObject* JSThisContext::getThis(JSContext*, JSObject*) {
    return Value::share(object_).take();
}

void JSThisContext::setThis(JSObject* value, JSContext*, JSObject*) {
    const Value old(std::exchange(object_, Value::share(value).take()));
}

JSObject* JSThisContext::nearestThis() {
    return object_ != nullptr ? object_->shared() : JSContext::nearestThis();
}

}  // namespace quorvelin
