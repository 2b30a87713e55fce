// JSTextInstance, the part of string objects that the rest of the engine knows: the text. With it a text can
// be looked at where it lies, without a copy.
#pragma once

#include "objects/parented_object.h"

namespace quorvelin {

class JSTextInstance : public JSInstance {
  public:
    // Copies the text.
    JSTextInstance(JSObject* constructor, JSObject* inner, const BString& value)
        : JSInstance(constructor, inner), value_(value) {}
    // Takes the text over.
    JSTextInstance(JSObject* constructor, JSObject* inner, BString&& value)
        : JSInstance(constructor, inner), value_(std::move(value)) {}

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;

    const BString& value() const { return value_; }

  protected:
    BString value_;
};

// The text of a value: that of a string of the engine where it lies, also behind cells and references, and a
// converted one otherwise. What is borrowed holds only while nothing runs that could change the string.
class TextOf {
  public:
    // Looks behind cells and references, as a conversion to text would; converts nothing yet.
    TextOf(JSObject* value, JSContext* ctx, JSObject* receiver);

    // Converting cannot run anything: the value is a string, or nothing.
    bool isReady() const { return text_ != nullptr; }

    // The text; converts now if that has not happened.
    const BString& text(JSContext* ctx, JSObject* receiver);

    // Makes the text independent of the value.
    void own();

  private:
    Value value_;
    const BString* text_ = nullptr;
    BString converted_;
};

}  // namespace quorvelin
