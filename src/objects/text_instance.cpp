#include "objects/text_instance.h"

#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "objects/js_property.h"
#include "objects/references.h"

namespace quorvelin {

JSValueType JSTextInstance::valueType(JSContext*, JSObject*) {
    return JSValueType::string;
}

void JSTextInstance::asString(BString& out, JSContext*, JSObject*) {
    out = value_;
}

void JSTextInstance::asNumber(JSNumberValue& out, JSContext*, JSObject*) {
    out = numberOfText(value_);
}

bool JSTextInstance::asBoolean(JSContext*, JSObject*) {
    return !value_.isEmpty();
}

TextOf::TextOf(JSObject* value, JSContext* ctx, JSObject* receiver) : value_(Value::share(value)) {
    while (value_) {
        switch (value_->engineClass()) {
            case JSObject::EngineClass::string:
                text_ = &static_cast<JSTextInstance*>(value_.get())->value();
                return;
            case JSObject::EngineClass::property:
                value_ = Value::share(static_cast<JSProperty*>(value_.get())->value());
                if (!value_) text_ = &nameText(WellKnownName::undefined);
                break;
            case JSObject::EngineClass::memberReference:
            case JSObject::EngineClass::indexReference:
                value_ = static_cast<JSReference*>(value_.get())->read(ctx, receiver);
                if (!value_) text_ = &nameText(WellKnownName::empty);
                break;
            default:
                return;
        }
    }
}

const BString& TextOf::text(JSContext* ctx, JSObject* receiver) {
    if (text_ == nullptr) {
        value_->asString(converted_, ctx, receiver);
        text_ = &converted_;
    }
    return *text_;
}

void TextOf::own() {
    if (text_ == nullptr || text_ == &converted_) return;
    converted_ = *text_;
    text_ = &converted_;
}

}  // namespace quorvelin
