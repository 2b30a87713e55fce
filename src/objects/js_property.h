// JSProperty, a member cell: a name and one held value, to which nearly every operation is forwarded.
//
// That is how reading a member can hand back the cell and still act as the value, and how the receiver of a
// `new` can be an empty cell that a constructor fills.
#pragma once

#include "foundation/name.h"
#include "objects/js_object.h"

namespace quorvelin {

class JSProperty : public JSObject {
  public:
    // References `value`, which may be null.
    JSProperty(const Name& name, JSObject* value);
    ~JSProperty() override;

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

    const Name& name() const { return name_; }
    // What the cell holds; borrowed, may be null.
    JSObject* value() const { return value_; }
    // Puts another value in, as it is.
    void replaceValue(Owned<JSObject> value) {
        JSObject* old = std::exchange(value_, value.take());
        if (old != nullptr) old->release();
    }

    // A variable that the scope which holds it has counted with its name (Atom::enterScope).
    bool isCountedInScope() const { return isCountedInScope_; }
    void setCountedInScope() { isCountedInScope_ = true; }

    // True for cells whose `memberName` must be asked instead of comparing names.
    bool computesName() const { return computesName_; }

  protected:
    // For a derived class that answers a name of its own making through `memberName`.
    struct ComputedName {};
    JSProperty(ComputedName, JSObject* value);

  private:
    bool fillWithObject(JSContext* ctx, JSObject* receiver);

    Name name_;
    JSObject* value_;
    bool computesName_ = false;
    bool isCountedInScope_ = false;
};

}  // namespace quorvelin
