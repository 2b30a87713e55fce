// JSContext, the context of evaluation: an object that carries the state of the walk, whose members are the
// names of a script, and whose inner object is the next context of the chain of scopes.
//
// Every object is handed a context and uses it for three things: to ask whether the walk has stopped, to
// report a message, and to have values made. So the whole interface stands here, beside the objects; what the
// operations do is the evaluator's. Most of them work by one rule, called "up" below: what a context cannot
// serve itself it asks of its parent, and without a parent the answer is null or nothing.
//
// `receiver` is the cell of a running `new`, null otherwise. Object results carry a reference for the caller.
#pragma once

#include <cstdint>

#include "foundation/name.h"
#include "foundation/well_known_names.h"
#include "objects/parented_object.h"

namespace quorvelin {

class IBStream;
class JSFunctionNode;
class JSNode;

// What a pending jump is; it travels in a field of the context, not by exceptions.
enum class JSCompletion : int32_t { normal = 0, breakLoop = 1, continueLoop = 2, returned = 3 };

class JSContext;

// What all contexts of one chain share, kept by the root: the position, and how many contexts have a jump
// pending. It spares every step of the walk the climb up the chain, which is as long as the chain of calls.
struct JSWalkState {
    JSContext* root;
    int32_t line = 0;
    int32_t column = 0;
    int32_t stoppedContexts = 0;
    // Scopes of `with` statements.
    int32_t objectScopes = 0;
};

// A question about a name of the chain of scopes.
struct NameQuery {
    enum class Purpose : uint8_t { exists, type, get, set, remove, call };

    const BString& name;
    Purpose purpose;
    JSContext* ctx;
    JSObject* receiver;
    // The stored name, null when no cell anywhere has it.
    const Atom* atom;

    bool isNamed(WellKnownName which) const {
        return atom != nullptr && atom->wellKnown() == static_cast<int32_t>(which);
    }
    bool isWellKnown() const { return atom != nullptr && atom->wellKnown() >= 0; }
};

class JSContext : public JSParentedObject {
  public:
    // For contexts of a host's own. References `parent`, the next context of the chain, which may be null.
    // Such a context, and every context below it, asks its parent operation by operation, so each of them may
    // be overridden.
    explicit JSContext(JSContext* parent) : JSParentedObject(parent, nullptr) {}
    ~JSContext() override;

    // ---- names: each is asked of the nearest context of the chain that has it, of the root when none has
    // ----
    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;
    // The receiver, else the nearest this object up the chain from this context, else up from `ctx`, else the
    // root.
    JSObject* getThis(JSContext* ctx, JSObject* receiver) override;

    // ---- the walk's state ----

    // Up. The root drops the message; a machine class of a host's own can show it. Changes no state.
    virtual void reportError(const BString& message);
    // Is a jump pending here or in a context above?
    virtual bool isStopped();
    virtual JSCompletion getCompletion();
    virtual JSCompletion setCompletion(JSCompletion completion);

    // ---- calls and contexts ----

    // Calls `function` with `object` as this object. `ctx` is not used.
    virtual JSObject* callWithThis(JSObject* object, JSObject* function, JSObject* args, JSContext* ctx,
                                   JSObject* receiver);
    // A new context under this one in which `object` is the this object. Null without memory.
    virtual JSContext* makeThisContext(JSObject* object, JSObject* inner, JSObject* receiver);
    virtual JSContext* makeLocalContext(JSObject* inner, JSObject* receiver);
    // A value that stands for the member `name` of `owner`. `native` says that a dispatch answers it.
    virtual JSObject* makeMethodRef(JSObject* owner, const BString& name, bool native, JSObject* receiver);
    // The position in the script text; up.
    virtual void setPosition(int32_t line, int32_t column);
    virtual void getPosition(int32_t& line, int32_t& column);

    // ---- making values; up, apart from the three that say otherwise ----

    virtual JSObject* makeString(const BString& text, JSObject* receiver);
    virtual JSObject* makeRegExp(const BString& source, JSObject* receiver);
    virtual JSObject* makeBoolean(bool value, JSObject* receiver);
    virtual JSObject* makeNumberText(const BString& text, int32_t radix, JSObject* receiver);
    virtual JSObject* makeNumber(const JSNumberValue& value, JSObject* receiver);
    // An array of `count` empty entries.
    virtual JSObject* makeArraySized(int32_t count, JSObject* receiver);
    virtual JSObject* makeArray(JSObject* receiver);
    // Always null: the undefined value.
    virtual JSObject* makeUndefined(JSObject* receiver);
    // A new null object, in every class.
    virtual JSObject* makeNull(JSObject* receiver);
    // A new plain object that belongs to the running function, in every class.
    virtual JSObject* makeObject(JSObject* receiver);
    virtual JSObject* makeDateNumber(const JSNumberValue& seconds, JSObject* receiver);
    virtual JSObject* makeDateFields4(int32_t year, int32_t month, int32_t day, int32_t hours,
                                      JSObject* receiver);
    virtual JSObject* makeDateFields5(int32_t year, int32_t month, int32_t day, int32_t hours,
                                      int32_t minutes, JSObject* receiver);
    virtual JSObject* makeDateFields6(int32_t year, int32_t month, int32_t day, int32_t hours,
                                      int32_t minutes, int32_t seconds, JSObject* receiver);
    virtual JSObject* makeDateFields3(int32_t year, int32_t month, int32_t day, JSObject* receiver);
    virtual JSObject* makeDateValue(JSObject* value, JSObject* receiver);
    virtual JSObject* makeDateNow(JSObject* receiver);
    virtual JSObject* makeFunction(JSFunctionNode* node, JSObject* receiver);

    // ---- running nodes ----

    virtual JSObject* executeWith(JSObject* object, JSNode* body, JSObject* receiver);
    // Runs a node, which may be null: the only caller of a node's `run`.
    virtual JSObject* execute(JSNode* node, JSObject* receiver);
    virtual JSObject* executeLabelled(const BString& label, JSNode* node, JSObject* receiver);
    virtual JSObject* executeNew(JSNode* node);
    virtual JSObject* executeDelete(JSNode* node, JSObject* receiver);
    virtual bool declareFunction(const BString& name, JSFunctionNode* node);
    virtual int32_t doBreak(const BString& label);
    virtual int32_t doContinue(const BString& label);
    virtual void doReturn(JSObject* value, JSObject* receiver);
    virtual bool declareVariable(const BString& name);
    virtual bool declareParameter(const BString& name);
    // Any of the nodes may be null.
    virtual JSObject* executeLoop(JSNode* init, JSNode* preCondition, JSNode* body, JSNode* postCondition,
                                  JSNode* step, JSObject* receiver);
    // A new function object of the function that runs here, null at top level.
    virtual JSObject* currentFunction();
    virtual void currentLabel(BString& out);
    virtual void jumpLabel(BString& out);

    // ---- text to value, and the functions that every context answers ----

    // Compiles or loads what the stream holds, and runs it. The stream is borrowed.
    virtual JSObject* evaluateStream(IBStream* stream, JSObject* receiver);
    virtual JSObject* evalArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    // Compiles the text and runs it in this context.
    virtual JSObject* evaluateText(const BString& text, JSObject* receiver);
    virtual int32_t parseIntArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t parseIntText(const BString& text, int32_t radix);
    virtual double parseFloatArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double parseFloatText(const BString& text);
    virtual void escapeArguments(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    // `text` is zero-terminated.
    virtual void escapeText(BString& out, const char16_t* text);
    virtual void unescapeArguments(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void unescapeText(BString& out, const BString& text);

    // Reports a message that stands in the source.
    void reportError(const char16_t* message) { reportError(BString(message)); }

    // As `makeString`, of a text that is handed over instead of copied.
    JSObject* makeStringOf(BString&& text, JSObject* receiver) {
        return state_ != nullptr ? state_->root->adoptString(std::move(text), receiver)
                                 : makeString(text, receiver);
    }

    // The next context of the chain; borrowed, null at the root.
    JSContext* parent() const { return static_cast<JSContext*>(inner()); }

    // The cell that the name stands for, where that can be told by looking at the stores of the engine's own
    // contexts; borrowed, null when it takes asking. `hint` as in MemberStore.
    JSProperty* peekCell(const Atom* atom, int32_t& hint);

    // Do the engine's own contexts alone stand between this one and the root, so that making a value can be
    // asked of none that would notice?
    bool isEnginesAlone() const { return state_ != nullptr; }

    // The function that runs in this context or in the nearest call above; borrowed, null outside functions.
    virtual JSFunctionNode* nearestFunction() {
        return parent() != nullptr ? parent()->nearestFunction() : nullptr;
    }

    // As `isStopped`, at no cost while no jump is pending anywhere.
    bool stopped() {
        if (state_ != nullptr && state_->stoppedContexts == 0) [[likely]]
            return false;
        return isStopped();
    }

  protected:
    // For the engine's own contexts: shares the walk's state with the parent, unless a context of a host's
    // own stands between. A class derived from one of them that overrides more than `reportError` and
    // `dispatchMember` of the root calls `askEveryContext` when it is built.
    struct EngineContext {};
    JSContext(EngineContext, JSContext* parent)
        : JSParentedObject(parent, nullptr),
          state_(parent != nullptr ? parent->state_ : nullptr),
          isEngines_(true) {}

    // Who answers a name in one context of the engine's: nobody, the context's own members, another object,
    // or the context by the `special...` operations.
    struct Holder {
        enum Kind : uint8_t { nobody, self, object, special };
        Kind kind;
        JSObject* who = nullptr;
    };
    virtual Holder holderOf(const NameQuery& query);
    // The object that is asked when no context of the chain above has the name; borrowed, null for none.
    virtual JSObject* lateObject() { return nullptr; }
    virtual JSValueType specialType(const NameQuery& query);
    virtual JSObject* specialGet(const NameQuery& query);
    virtual JSObject* specialSet(const NameQuery& query, JSObject* value);
    virtual void specialDelete(const NameQuery& query);
    virtual JSObject* specialCall(const NameQuery& query, JSObject* args);

    // A cell or a member of the dispatch of this very context.
    bool ownsName(const NameQuery& query);

    // From here on the contexts below this one climb the chain for every question, and ask this one by its
    // virtual operations. To be called when the context is built, before another one stands below it.
    void askEveryContext() {
        state_ = nullptr;
        isEngines_ = false;
    }
    void shareState(JSWalkState* state) { state_ = state; }
    JSWalkState* state() const { return state_; }

    // What `makeStringOf` asks of the root.
    virtual JSObject* adoptString(BString&& text, JSObject* receiver) { return makeString(text, receiver); }

    // The this object of this context or of the nearest one above that has one, with a reference; null when
    // there is none.
    virtual JSObject* nearestThis();

    void complete(JSCompletion completion);

    // The label of the statement that runs, empty outside a labelled one.
    Name currentLabel_;
    // The label that the pending break or continue names; may be empty.
    Name jumpLabel_;

  public:
    // ---- for the statements that take jumps ----

    // Does the pending break or continue name no label, or the label of the statement that runs?
    bool jumpIsMine() const;

  private:
    bool conditionFails(JSNode* condition, JSObject* receiver);

    // Where a name was found: a context, and who answers there. `up` says that the context itself is to be
    // asked by its virtual operation: the root, or a context of a host's own.
    struct Place {
        JSContext* context;
        Holder holder;
        bool up;
    };
    Place findPlace(const NameQuery& query);
    bool isRootsAlone(const Atom* atom) const;
    JSObject* findLateObject(const NameQuery& query, JSContext* end);
    JSObject* askThis() { return isEngines_ ? nearestThis() : askHostsThis(); }
    JSObject* askHostsThis();
    JSContext* rootOfChain();

    JSCompletion completion_ = JSCompletion::normal;
    JSWalkState* state_ = nullptr;
    bool isEngines_ = false;

  protected:
    // For `peekCell`: the store that comes before this context's own, and whether the context asks an object
    // first.
    const MemberStore* firstStore_ = nullptr;
    bool asksObjectFirst_ = false;
};

}  // namespace quorvelin
