// Strings: the value objects, which `new String` gives as well, and their constructor.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"

namespace quorvelin {

class JSStringObject final : public JSInstance {
  public:
    JSStringObject(JSObject* constructor, JSObject* inner, const BString& value)
        : JSInstance(constructor, inner), value_(value) {
        setEngineClass(EngineClass::string);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    JSObject* setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    // A new string value of the same text.
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    int32_t getLength(JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    const BString& value() const { return value_; }

  private:
    BString value_;
};

class JSStringConstructor final : public JSConstructorObject {
  public:
    JSStringConstructor() : JSConstructorObject(WellKnownName::StringClass) {}

    // The text of the list of arguments as a whole.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
};

}  // namespace quorvelin
