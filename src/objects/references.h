// References: what `a.b` and `a[i]` evaluate to.
//
// A reference remembers the target and the key and acts as the value: every operation on it reads the member
// afresh and goes on with what it finds, and operations that store go to the target. Storing through two
// levels makes the object in between when it is missing: `a.b.c = 1` makes `a.b`.
#pragma once

#include "foundation/name.h"
#include "objects/js_object.h"

namespace quorvelin {

// What the references by name and by position have in common: everything but how the target is asked.
class JSReference : public JSObject {
  public:
    ~JSReference() override;

    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    JSObject* setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    int32_t memberCount(JSContext* ctx, JSObject* receiver) override;
    JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver) override;

    // Borrowed, never null.
    JSObject* target() const { return target_; }

    // What the reference stands for now, null when the target does not have it or a jump is pending.
    virtual Value read(JSContext* ctx, JSObject* receiver) = 0;

  protected:
    // References `target`.
    explicit JSReference(JSObject* target);

    // Stores into the place that the reference stands for.
    virtual Value store(JSObject* value, JSContext* ctx, JSObject* receiver) = 0;

  private:
    Value readOrMake(JSContext* ctx, JSObject* receiver);

    JSObject* target_;
};

class JSMemberRef : public JSReference {
  public:
    JSMemberRef(JSObject* target, const Name& name) : JSReference(target), name_(name) {
        setEngineClass(EngineClass::memberReference);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;
    void clearMembers(JSContext* ctx, JSObject* receiver) override;

    const Name& name() const { return name_; }
    Value read(JSContext* ctx, JSObject* receiver) override;

  protected:
    Value store(JSObject* value, JSContext* ctx, JSObject* receiver) override;

  private:
    Name name_;
};

class JSIndexRef final : public JSReference {
  public:
    JSIndexRef(JSObject* target, uint32_t index) : JSReference(target), index_(index) {
        setEngineClass(EngineClass::indexReference);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;
    void clearMembers(JSContext* ctx, JSObject* receiver) override;

    int32_t index() const { return static_cast<int32_t>(index_); }
    Value read(JSContext* ctx, JSObject* receiver) override;

  protected:
    Value store(JSObject* value, JSContext* ctx, JSObject* receiver) override;

  private:
    uint32_t index_;
};

// A method as a value. With `native` set it stands for a method that a dispatch answers: it can be called,
// and every other operation on it is inert.
class JSMethodRef final : public JSMemberRef {
  public:
    JSMethodRef(JSObject* target, const Name& name, bool native)
        : JSMemberRef(target, name), native_(native) {
        setEngineClass(EngineClass::other);
    }

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    JSObject* setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool asBoolean(JSContext* ctx, JSObject* receiver) override;
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    int32_t memberCount(JSContext* ctx, JSObject* receiver) override;
    JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver) override;
    void clearMembers(JSContext* ctx, JSObject* receiver) override;

  private:
    bool native_;
};

}  // namespace quorvelin
