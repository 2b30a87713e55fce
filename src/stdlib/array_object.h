// Arrays: objects whose elements are simply the entries of their store, so that elements, named members and
// `length` are one and the same.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"

namespace quorvelin {

class JSArrayObject final : public JSInstance {
  public:
    JSArrayObject(JSObject* constructor, JSObject* inner) : JSInstance(constructor, inner) {
        setEngineClass(EngineClass::array);
    }

    // A new named member takes its place at the end of this array.
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    // What the member `join`, which a script may have replaced, gives without arguments.
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // The first of each pair takes the script's arguments, the second the converted values.
    virtual void join(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void joinWith(BString& out, const BString& separator, JSContext* ctx, JSObject* receiver);
    virtual JSObject* reverse(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void reverseItems(JSContext* ctx, JSObject* receiver);
    virtual JSObject* sort(JSObject* args, JSContext* ctx, JSObject* receiver);
    // `compare` is the comparison function, null for the operator's.
    virtual void sortWith(JSObject* compare, JSContext* ctx, JSObject* receiver);
};

class JSArrayConstructor final : public JSConstructorObject {
  public:
    JSArrayConstructor() : JSConstructorObject(WellKnownName::ArrayClass) {}

    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
};

}  // namespace quorvelin
