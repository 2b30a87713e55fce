// The default conversions of JSObject: how a value turns into text, a number, a truth value or an object by
// its type. They are deliberately this language's own: text that does not parse is 0, and a function is
// false.
#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/js_object.h"

namespace quorvelin {

namespace {

// Calls the method `name` of an object without arguments, if it has one. True when that gave a value.
bool callConversion(WellKnownName name, JSObject& object, JSContext* ctx, JSObject* receiver, Value& result) {
    const BString& text = nameText(name);
    if (!object.hasMember(text, ctx, receiver)) return false;
    result = Value(object.callMember(text, nullptr, ctx, receiver));
    if (ctx->isStopped()) return false;
    return result && result->valueType(ctx, receiver) != JSValueType::undefined;
}

}  // namespace

void JSObject::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    switch (valueType(ctx, receiver)) {
        case JSValueType::number: {
            JSNumberValue number;
            asNumber(number, ctx, receiver);
            out = number.toText();
            return;
        }
        case JSValueType::boolean:
            out = nameText(asBoolean(ctx, receiver) ? WellKnownName::trueWord : WellKnownName::falseWord);
            return;
        case JSValueType::object:
            objectAsString(out, ctx, receiver);
            return;
        case JSValueType::function: {
            out.clear();
            const Value source(callMember(nameText(WellKnownName::decompile), nullptr, ctx, receiver));
            if (ctx->isStopped()) return;
            if (source) {
                source->asString(out, ctx, receiver);
                return;
            }
            BString name;
            memberName(name, ctx, receiver);
            TextBuilder text;
            text.append(u"function ");
            text.append(name);
            text.append(u"(){ [native code] }");
            out = text.text();
            return;
        }
        default:
            out = nameText(WellKnownName::undefined);
            return;
    }
}

void JSObject::objectAsString(BString& out, JSContext* ctx, JSObject* receiver) {
    const Value object(asObject(ctx, receiver));
    if (ctx->isStopped()) {
        out = nameText(WellKnownName::undefined);
        return;
    }
    if (!object) {
        out = nameText(WellKnownName::nullWord);
        return;
    }
    if (object.get() != this) {
        for (const WellKnownName method : {WellKnownName::toString, WellKnownName::valueOf}) {
            Value result;
            const bool gaveValue = callConversion(method, *object, ctx, receiver, result);
            if (ctx->isStopped()) {
                out = nameText(WellKnownName::undefined);
                return;
            }
            if (gaveValue) {
                result->asString(out, ctx, receiver);
                return;
            }
        }
    }
    BString name;
    className(name, ctx, receiver);
    TextBuilder text;
    text.append(u"[object ");
    text.append(name);
    text.append(u']');
    out = text.text();
}

void JSObject::asExpression(BString& out, JSContext*, JSObject*) {
    out.clear();
}

void JSObject::asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    out = JSNumberValue::of(0.0);
    const JSValueType type = valueType(ctx, receiver);
    switch (type) {
        case JSValueType::string:
        case JSValueType::expression: {
            BString text;
            if (type == JSValueType::string) {
                asString(text, ctx, receiver);
            } else {
                asExpression(text, ctx, receiver);
            }
            out = numberOfText(text);
            return;
        }
        case JSValueType::boolean:
            if (asBoolean(ctx, receiver)) out = JSNumberValue::of(1.0);
            return;
        case JSValueType::object: {
            const Value object(asObject(ctx, receiver));
            if (ctx->isStopped() || !object || object.get() == this) return;
            Value result;
            if (callConversion(WellKnownName::valueOf, *object, ctx, receiver, result)) {
                result->asNumber(out, ctx, receiver);
            }
            return;
        }
        default:
            return;
    }
}

bool JSObject::asBoolean(JSContext* ctx, JSObject* receiver) {
    switch (valueType(ctx, receiver)) {
        case JSValueType::string: {
            BString text;
            asString(text, ctx, receiver);
            return !text.isEmpty();
        }
        case JSValueType::expression: {
            BString text;
            asExpression(text, ctx, receiver);
            return !text.isEmpty();
        }
        case JSValueType::number: {
            JSNumberValue number;
            asNumber(number, ctx, receiver);
            return number.kind != JSNumberKind::notANumber && !number.isZero();
        }
        case JSValueType::object: {
            const Value object(asObject(ctx, receiver));
            if (ctx->isStopped() || !object) return false;
            if (object.get() == this) return true;
            Value result;
            if (callConversion(WellKnownName::valueOf, *object, ctx, receiver, result)) {
                return result->asBoolean(ctx, receiver);
            }
            return true;
        }
        default:
            return false;  // Quirk: a function is false.
    }
}

JSObject* JSObject::asObject(JSContext* ctx, JSObject* receiver) {
    switch (valueType(ctx, receiver)) {
        case JSValueType::undefined:
            return nullptr;
        case JSValueType::number: {
            // Quirk: the number 0 has no object, unless its class says otherwise.
            JSNumberValue number;
            asNumber(number, ctx, receiver);
            return number.isZero() ? nullptr : shared();
        }
        default:
            return shared();
    }
}

void JSObject::className(BString& out, JSContext* ctx, JSObject* receiver) {
    if (constructor_ != nullptr) {
        const Value constructor = Value::share(constructor_);
        constructor->memberName(out, ctx, receiver);
        return;
    }
    WellKnownName word = WellKnownName::unknow;
    switch (valueType(ctx, receiver)) {
        case JSValueType::undefined:
            word = WellKnownName::undefined;
            break;
        case JSValueType::string:
            word = WellKnownName::StringClass;
            break;
        case JSValueType::number:
            word = WellKnownName::NumberClass;
            break;
        case JSValueType::boolean:
            word = WellKnownName::BooleanClass;
            break;
        case JSValueType::function:
            word = WellKnownName::FunctionClass;
            break;
        case JSValueType::expression:
            word = WellKnownName::ExpressionClass;
            break;
        case JSValueType::object: {
            const Value object(asObject(ctx, receiver));
            if (object && object.get() != this) {
                object->className(out, ctx, receiver);
                return;
            }
            word = WellKnownName::ArrayClass;  // Quirk: an object without a constructor goes by this word.
            break;
        }
    }
    out = nameText(word);
}

}  // namespace quorvelin
