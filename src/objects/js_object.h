// JSObject, the one interface of everything that a script can touch, the contexts of evaluation included.
//
// A value is a pointer to a JSObject, and the null pointer is the undefined value; numbers, texts and
// booleans are small objects. A class is written by overriding a few of the operations below, most often one:
// `dispatchMember`, which answers a member request that no own property took.
//
// Two arguments go through every operation: `ctx`, the context under which it runs, which reports messages,
// knows whether a jump is pending and makes values; and `receiver`, the cell of a running `new`, null
// otherwise, which is handed on unchanged.
//
// Ownership: object results carry a reference for the caller and may be null; arguments are borrowed. Text
// results go into `out`, which the operation assigns. Nothing throws: a failure reports through the context
// and gives null, false or an empty text.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/owned.h"
#include "foundation/smart_object.h"
#include "objects/member_store.h"
#include "objects/number_value.h"
#include "objects/value_type.h"

namespace quorvelin {

class JSContext;
struct JSMemberRequest;

using Value = Owned<class JSObject>;

class JSObject : public BSmartObject {
  public:
    // References `constructor`, which may be null: the object that made this one.
    explicit JSObject(JSObject* constructor = nullptr);
    ~JSObject() override;

    virtual JSValueType valueType(JSContext* ctx, JSObject* receiver);

    // ---- members by name: own properties first, then the dispatch ----
    virtual bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver);
    // 0, undefined, for a name that is not answered and for an empty own entry.
    virtual JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver);
    // An own property comes as its cell, which forwards to what it holds.
    virtual JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver);
    // Assigns to an own property, else asks the dispatch, else makes a property. Gives the value.
    virtual JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver);
    // Removes an own property; true when there was one. Names of the dispatch are not touched.
    virtual bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver);
    // Calls a member with this object as `this`. `args` is an object whose elements are the arguments; null
    // means none.
    virtual JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver);

    // ---- members by position: the same entries, in the order in which they were made ----
    virtual JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver);
    // Makes nameless entries up to the index as needed. A negative index stores nothing.
    virtual JSObject* setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver);
    // Takes the entry out and closes the gap.
    virtual void deleteItem(int32_t index, JSContext* ctx, JSObject* receiver);

    // Stores a value into this object, where the class can be stored into; gives what then stands there.
    virtual JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver);
    virtual JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver);

    // ---- conversions ----
    virtual void asString(BString& out, JSContext* ctx, JSObject* receiver);
    virtual void asExpression(BString& out, JSContext* ctx, JSObject* receiver);
    virtual void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver);
    virtual bool asBoolean(JSContext* ctx, JSObject* receiver);
    virtual JSObject* asObject(JSContext* ctx, JSObject* receiver);
    virtual void className(BString& out, JSContext* ctx, JSObject* receiver);
    // The name that this object itself goes by: a cell's name, the class word of a constructor.
    virtual void memberName(BString& out, JSContext* ctx, JSObject* receiver);

    virtual int32_t memberCount(JSContext* ctx, JSObject* receiver);
    virtual JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver);
    // What the `delete` operator does to a value: lets go of all entries.
    virtual void clearMembers(JSContext* ctx, JSObject* receiver);
    virtual int32_t getLength(JSObject* receiver);
    // Appends empty entries or lets go of entries from the end until there are `length`. A negative length
    // only ever appends, that is, does nothing.
    virtual void setLength(int32_t length, JSObject* receiver);
    virtual JSObject* getConstructor(JSContext* ctx, JSObject* receiver);
    virtual void setConstructor(JSObject* value, JSContext* ctx, JSObject* receiver);
    virtual JSObject* getThis(JSContext* ctx, JSObject* receiver);
    virtual void setThis(JSObject* value, JSContext* ctx, JSObject* receiver);
    virtual void callToString(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual JSObject* callValueOf(JSObject* args, JSContext* ctx, JSObject* receiver);

    // Answers a request for a member that is no own property. True commits the caller to the request's
    // results. A class compares the name with its own names, and hands what it does not serve to its base
    // class.
    virtual bool dispatchMember(JSMemberRequest& request);

    // ---- reading arguments: called on the argument list, which may be null ----
    // Each converts the argument at `position` into `out` and gives true; an argument that is missing or
    // empty, or a pending jump, gives false and leaves `out` as it was.
    static bool argString(JSObject* args, int32_t position, BString& out, JSContext* ctx, JSObject* receiver);
    static bool argExpression(JSObject* args, int32_t position, BString& out, JSContext* ctx,
                              JSObject* receiver);
    static bool argInteger(JSObject* args, int32_t position, int32_t& out, JSContext* ctx,
                           JSObject* receiver);
    static bool argNumber(JSObject* args, int32_t position, double& out, JSContext* ctx, JSObject* receiver);

    // ---- the operations of this class, for classes that choose between them and others by a rule of their
    // own ----
    bool hasOwnMember(const BString& name, JSContext* ctx, JSObject* receiver) {
        return JSObject::hasMember(name, ctx, receiver);
    }

    // The own entries, without asking any operation that a class could override.
    const MemberStore& ownMembers() const { return members_; }

    // This object with a reference of its own.
    JSObject* shared() {
        addRef();
        return this;
    }

    // What the engine itself made this object as. Objects of classes that a host derives never say so: their
    // overrides must be asked.
    enum class EngineClass : uint8_t {
        other,
        property,
        memberReference,
        indexReference,
        number,
        boolean,
        string,
        plainObject,
        array
    };
    EngineClass engineClass() const { return engineClass_; }
    void setEngineClass(EngineClass engineClass) { engineClass_ = engineClass; }

  protected:
    JSObject* constructorObject() const { return constructor_; }
    MemberStore& members() { return members_; }
    const MemberStore& members() const { return members_; }

    // Lets go of every entry, from the first to the last.
    void releaseMembers();

    // The cell of an object's own property; borrowed, null when there is none.
    static JSProperty* ownCellOf(JSObject& object, const BString& name, JSContext* ctx, JSObject* receiver);

    // The position of the own property, or -1.
    int32_t findMember(const BString& name, JSContext* ctx, JSObject* receiver);

  private:
    template <typename Convert>
    static bool readArgument(JSObject* args, int32_t position, JSContext* ctx, JSObject* receiver,
                             Convert convert);

    void objectAsString(BString& out, JSContext* ctx, JSObject* receiver);

    EngineClass engineClass_ = EngineClass::other;
    JSObject* constructor_;
    MemberStore members_;
};

}  // namespace quorvelin
