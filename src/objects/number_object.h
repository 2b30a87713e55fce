// Numbers: the value objects and their constructor.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"

namespace quorvelin {

class JSNumberInstance final : public JSInstance {
  public:
    JSNumberInstance(JSObject* constructor, JSObject* inner, const JSNumberValue& value)
        : JSInstance(constructor, inner), value_(value) {
        setEngineClass(EngineClass::number);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    // These five look at this object alone and never at the constructor behind it.
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    // The stored double as a finite number. Quirk: a NaN, and an infinity from the tables of arithmetic,
    // reads as 0.
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;

    // The record as it was stored, kind included.
    const JSNumberValue& storedValue() const { return value_; }
    // Puts another finite number in. Only for an object that one cell alone holds, of which nobody else can
    // know.
    void replaceStored(double number) { value_ = {number, JSNumberKind::finite}; }

  private:
    JSNumberValue value_;
};

class JSNumberConstructor final : public JSConstructorObject {
  public:
    JSNumberConstructor() : JSConstructorObject(WellKnownName::NumberClass) {}

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
};

// The number that comparisons, case labels and the operators "-" and "~" see in a value: the stored record,
// kind included, where the value is a number object of the engine, itself or behind cells and references;
// `asNumber` otherwise.
void comparisonNumber(JSObject* value, JSNumberValue& out, JSContext* ctx, JSObject* receiver);

}  // namespace quorvelin
