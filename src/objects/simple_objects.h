// The two smallest classes: the null object and the plain object.
#pragma once

#include "objects/js_object.h"

namespace quorvelin {

// What the null literal gives: a value of type object that is false and 0.
class JSNull final : public JSObject {
  public:
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
};

// An object with a store of its own that takes new names. It belongs to the function that ran when it was
// made, which is its constructor: names that the object does not answer itself are asked of that function,
// but new names are stored here.
class JSPlainObject final : public JSObject {
  public:
    // References `function`, which is null for objects made at top level.
    explicit JSPlainObject(JSObject* function);
    ~JSPlainObject() override;

    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;

  private:
    bool asksFunction(const BString& name, JSContext* ctx, JSObject* receiver) {
        return function_ != nullptr && !hasOwnMember(name, ctx, receiver);
    }

    JSObject* function_;
};

}  // namespace quorvelin
