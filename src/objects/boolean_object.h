// Booleans: the value objects and their constructor.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"

namespace quorvelin {

class JSBooleanInstance final : public JSInstance {
  public:
    JSBooleanInstance(JSObject* constructor, JSObject* inner, bool value)
        : JSInstance(constructor, inner), value_(value) {
        setEngineClass(EngineClass::boolean);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    // A new boolean object of the same value; this one is not handed out.
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;

    bool storedValue() const { return value_; }

  private:
    bool value_;
};

class JSBooleanConstructor final : public JSConstructorObject {
  public:
    JSBooleanConstructor() : JSConstructorObject(WellKnownName::BooleanClass) {}

    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
};

}  // namespace quorvelin
