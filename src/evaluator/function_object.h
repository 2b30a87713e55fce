// Script functions and their constructor.
//
// A function object holds its syntax tree and nothing of the place where it was made: names are looked up
// among the callers. The constructor compiles text into functions, and is the only way in which a script
// makes one.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"

namespace quorvelin {

class JSFunctionNode;

class JSFunction final : public JSInstance {
  public:
    // References all three; `inner` may be null.
    JSFunction(JSObject* constructor, JSObject* inner, JSFunctionNode* node);
    ~JSFunction() override;

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    // A new function object of the same tree each time.
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;

  private:
    JSFunctionNode* node_;
};

class JSFunctionConstructor final : public JSConstructorObject {
  public:
    JSFunctionConstructor() : JSConstructorObject(WellKnownName::FunctionClass) {}

    // Compiles the last argument as the body; the others are parameter names.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
};

}  // namespace quorvelin
