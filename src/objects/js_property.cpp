#include "objects/js_property.h"

#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/text_instance.h"

namespace quorvelin {

JSProperty::JSProperty(const Name& name, JSObject* value) : name_(name), value_(value) {
    if (value_ != nullptr) value_->addRef();
    setEngineClass(EngineClass::property);
}

JSProperty::JSProperty(ComputedName, JSObject* value) : value_(value), computesName_(true) {
    if (value_ != nullptr) value_->addRef();
}

JSProperty::~JSProperty() {
    if (value_ != nullptr) value_->release();
}

// The held value may be replaced while it works, so it is held on to.
#define HELD const Value held = Value::share(value_)

JSValueType JSProperty::valueType(JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->valueType(ctx, receiver) : JSValueType::undefined;
}

bool JSProperty::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held && held->hasMember(name, ctx, receiver);
}

JSValueType JSProperty::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->memberType(name, ctx, receiver) : JSValueType::undefined;
}

JSObject* JSProperty::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->getMember(name, ctx, receiver) : nullptr;
}

// An empty cell that is written into becomes a plain object first.
bool JSProperty::fillWithObject(JSContext* ctx, JSObject* receiver) {
    if (value_ != nullptr) return true;
    value_ = ctx->makeObject(receiver);
    return value_ != nullptr;
}

JSObject* JSProperty::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (!fillWithObject(ctx, receiver)) return nullptr;
    HELD;
    return held->setMember(name, value, ctx, receiver);
}

bool JSProperty::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held && held->deleteMember(name, ctx, receiver);
}

JSObject* JSProperty::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->callMember(name, args, ctx, receiver) : nullptr;
}

JSObject* JSProperty::getItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->getItem(index, ctx, receiver) : nullptr;
}

JSObject* JSProperty::setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (!fillWithObject(ctx, receiver)) return nullptr;
    HELD;
    return held->setItem(index, value, ctx, receiver);
}

void JSProperty::deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    HELD;
    if (held) held->deleteItem(index, ctx, receiver);
}

JSObject* JSProperty::assign(JSObject* value, JSContext* ctx, JSObject* receiver) {
    // Quirk: the old value goes first, so that a value that is read through this very cell is found empty:
    // `x = x` leaves x undefined.
    { const Value old(std::exchange(value_, nullptr)); }
    if (value == nullptr) return nullptr;
    Value stored;
    switch (value->valueType(ctx, receiver)) {
        case JSValueType::string: {
            TextOf text(value, ctx, receiver);
            const BString& units = text.text(ctx, receiver);
            if (!ctx->isStopped()) stored = Value(ctx->makeString(units, receiver));
            break;
        }
        case JSValueType::number: {
            JSNumberValue number;
            value->asNumber(number, ctx, receiver);
            if (!ctx->isStopped()) stored = Value(ctx->makeNumber(number, receiver));
            break;
        }
        case JSValueType::boolean: {
            const bool truth = value->asBoolean(ctx, receiver);
            if (!ctx->isStopped()) stored = Value(ctx->makeBoolean(truth, receiver));
            break;
        }
        case JSValueType::object:
        case JSValueType::function:
            stored = Value(value->asObject(ctx, receiver));
            break;
        case JSValueType::expression: {
            BString text;
            value->asExpression(text, ctx, receiver);
            if (!ctx->isStopped()) stored = Value(ctx->makeRegExp(text, receiver));
            break;
        }
        default:
            break;
    }
    // A script that ran during the conversion may have filled the cell meanwhile.
    const Value replaced(std::exchange(value_, stored.take()));
    return value_ != nullptr ? value_->shared() : nullptr;
}

JSObject* JSProperty::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->call(args, ctx, receiver) : nullptr;
}

void JSProperty::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    HELD;
    if (held) {
        held->asString(out, ctx, receiver);
    } else {
        out = nameText(WellKnownName::undefined);
    }
}

void JSProperty::asExpression(BString& out, JSContext* ctx, JSObject* receiver) {
    HELD;
    if (held) {
        held->asExpression(out, ctx, receiver);
    } else {
        out.clear();
    }
}

void JSProperty::asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    HELD;
    if (held) {
        held->asNumber(out, ctx, receiver);
    } else {
        out = JSNumberValue::of(0.0);
    }
}

bool JSProperty::asBoolean(JSContext* ctx, JSObject* receiver) {
    HELD;
    return held && held->asBoolean(ctx, receiver);
}

JSObject* JSProperty::asObject(JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->asObject(ctx, receiver) : nullptr;
}

void JSProperty::className(BString& out, JSContext* ctx, JSObject* receiver) {
    HELD;
    if (held) {
        held->className(out, ctx, receiver);
    } else {
        out = nameText(WellKnownName::undefined);
    }
}

void JSProperty::memberName(BString& out, JSContext*, JSObject*) {
    out = name_.text();
}

int32_t JSProperty::memberCount(JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->memberCount(ctx, receiver) : 0;
}

JSObject* JSProperty::memberAt(int32_t index, JSContext* ctx, JSObject* receiver) {
    HELD;
    return held ? held->memberAt(index, ctx, receiver) : nullptr;
}

void JSProperty::clearMembers(JSContext*, JSObject*) {
    const Value old(std::exchange(value_, nullptr));
}

#undef HELD

}  // namespace quorvelin
