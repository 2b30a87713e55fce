#include "objects/number_object.h"

#include <limits>

#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/references.h"

namespace quorvelin {

JSValueType JSNumberInstance::valueType(JSContext*, JSObject*) {
    return JSValueType::number;
}

namespace {

bool isNumberMethod(const BString& name) {
    return name == nameText(WellKnownName::valueOf) || name == nameText(WellKnownName::toString);
}

}  // namespace

bool JSNumberInstance::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return isNumberMethod(name) || JSObject::hasMember(name, ctx, receiver);
}

JSValueType JSNumberInstance::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    return isNumberMethod(name) ? JSValueType::function : JSObject::memberType(name, ctx, receiver);
}

JSObject* JSNumberInstance::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isNumberMethod(name)) return ctx->makeMethodRef(this, name, true, receiver);
    return JSObject::getMember(name, ctx, receiver);
}

JSObject* JSNumberInstance::setMember(const BString& name, JSObject* value, JSContext* ctx,
                                      JSObject* receiver) {
    if (isNumberMethod(name)) {
        ctx->reportError(u"this property is read only");
        return nullptr;
    }
    return JSObject::setMember(name, value, ctx, receiver);
}

bool JSNumberInstance::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isNumberMethod(name)) {
        ctx->reportError(u"this property is read only");
        return false;
    }
    return JSObject::deleteMember(name, ctx, receiver);
}

JSObject* JSNumberInstance::callMember(const BString& name, JSObject*, JSContext* ctx, JSObject* receiver) {
    if (name == nameText(WellKnownName::valueOf)) return shared();
    if (name == nameText(WellKnownName::toString)) {
        // Quirk: the arguments, such as a radix, are ignored.
        BString text;
        asString(text, ctx, receiver);
        return ctx->makeString(text, receiver);
    }
    // Quirk: a call of any other member only reads it.
    return JSObject::getMember(name, ctx, receiver);
}

void JSNumberInstance::asString(BString& out, JSContext*, JSObject*) {
    out = value_.toText();
}

void JSNumberInstance::asNumber(JSNumberValue& out, JSContext*, JSObject*) {
    out = JSNumberValue::of(value_.value);
}

JSObject* JSNumberInstance::asObject(JSContext*, JSObject*) {
    return shared();
}

void JSNumberInstance::className(BString& out, JSContext*, JSObject*) {
    out = nameText(WellKnownName::NumberClass);
}

// ---- The constructor ----

namespace {

struct NumberConstant {
    WellKnownName name;
    double value;
};

// Quirk: three of the four are not what their names say, and a script's own member of such a name is never
// seen.
constexpr NumberConstant kConstants[] = {
    {WellKnownName::MAX_VALUE, std::numeric_limits<double>::max()},
    {WellKnownName::NaN, 0.0},
    {WellKnownName::NEGATIVE_INFINITY, 3.0},
    {WellKnownName::POSITIVE_INFINITY, 2.0},
};

const NumberConstant* findConstant(const BString& name) {
    for (const NumberConstant& constant : kConstants) {
        if (name == nameText(constant.name)) return &constant;
    }
    return nullptr;
}

}  // namespace

// Quirk: a function, unlike the other constructors.
JSValueType JSNumberConstructor::valueType(JSContext*, JSObject*) {
    return JSValueType::function;
}

bool JSNumberConstructor::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return findConstant(name) != nullptr || JSObject::hasMember(name, ctx, receiver);
}

JSValueType JSNumberConstructor::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (findConstant(name) != nullptr) return JSValueType::number;
    if (name == nameText(WellKnownName::constructor)) return JSValueType::object;
    return JSObject::memberType(name, ctx, receiver);
}

JSObject* JSNumberConstructor::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (const NumberConstant* constant = findConstant(name)) {
        return ctx->makeNumber(JSNumberValue::of(constant->value), receiver);
    }
    if (name == nameText(WellKnownName::constructor)) return shared();
    return JSObject::getMember(name, ctx, receiver);
}

JSObject* JSNumberConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    double number = 0.0;
    if (args != nullptr && !argNumber(args, 0, number, ctx, receiver) && ctx->isStopped()) return nullptr;
    Value made(ctx->makeNumber(JSNumberValue::of(number), receiver));
    if (ctx->isStopped()) return nullptr;
    return finishConstruction(made.take(), ctx, receiver);
}

void JSNumberConstructor::className(BString& out, JSContext* ctx, JSObject* receiver) {
    memberName(out, ctx, receiver);
}

// ---- Comparison ----

void comparisonNumber(JSObject* value, JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    Value current = Value::share(value);
    while (current) {
        switch (current->engineClass()) {
            case JSObject::EngineClass::number:
                out = static_cast<JSNumberInstance*>(current.get())->storedValue();
                return;
            case JSObject::EngineClass::property:
                current = Value::share(static_cast<JSProperty*>(current.get())->value());
                continue;
            case JSObject::EngineClass::memberReference:
            case JSObject::EngineClass::indexReference: {
                // Nothing behind a reference reads as 0, and a pending jump is the caller's to notice.
                current = static_cast<JSReference*>(current.get())->read(ctx, receiver);
                continue;
            }
            default:
                current->asNumber(out, ctx, receiver);
                return;
        }
    }
    out = JSNumberValue::of(0.0);
}

}  // namespace quorvelin
