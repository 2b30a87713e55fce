// Inheritance: objects with an inner object behind them, to which goes what their own store cannot answer.
//
// JSParentedObject is the rule by itself, which contexts use for the chain of scopes; JSInstance is a script
// object with a prototype chain. One consequence shapes everything: a write to a name that the object does
// not own goes to the inner object. An instance of a standard class has the constructor object itself as its
// inner object, so the members of the constructor are the members that all instances share.
#pragma once

#include "objects/js_object.h"

namespace quorvelin {

class JSParentedObject : public JSObject {
  public:
    // References both; either may be null.
    JSParentedObject(JSObject* inner, JSObject* constructor);
    ~JSParentedObject() override;

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;
    int32_t memberCount(JSContext* ctx, JSObject* receiver) override;
    JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver) override;
    void clearMembers(JSContext* ctx, JSObject* receiver) override;
    JSObject* getConstructor(JSContext* ctx, JSObject* receiver) override;
    JSObject* getThis(JSContext* ctx, JSObject* receiver) override;
    void setThis(JSObject* value, JSContext* ctx, JSObject* receiver) override;

  protected:
    // The inner object; borrowed, may be null.
    JSObject* inner() const { return inner_; }
    // Lets the inner object go for good.
    void detachInner();

    // There is an inner object, and this object does not answer the name itself.
    bool forwardsName(const BString& name, JSContext* ctx, JSObject* receiver) {
        return inner_ != nullptr && !hasOwnMember(name, ctx, receiver);
    }

  private:
    JSObject* inner_;
};

class JSInstance : public JSParentedObject {
  public:
    JSInstance(JSObject* constructor, JSObject* inner) : JSParentedObject(inner, constructor) {}

    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    void clearMembers(JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // The inner object, with a reference.
    virtual JSObject* getPrototype(JSContext* ctx, JSObject* receiver);
};

}  // namespace quorvelin
