// The contexts of evaluation: scopes, calls, `with`, `this`, and the base of the root.
#pragma once

#include "objects/js_context.h"

namespace quorvelin {

class JSFunctionNode;

// A scope that variables can be declared in.
class JSLocalContext : public JSContext {
  public:
    explicit JSLocalContext(JSContext* parent) : JSContext(EngineContext{}, parent) {}
    ~JSLocalContext() override;

    // Makes an empty cell of the name unless there is one; true in any case.
    bool declareVariable(const BString& name) override;
};

// The parameters of a running call, by name, and behind them the extra arguments, by position only.
class JSArgumentsObject final : public JSObject {
  public:
    // A new cell at the end, whether or not the name is there already. False without memory.
    bool append(const Name& name, JSObject* value);

    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
};

// One running call of a script function. Its parent is the context of the caller, so a name that is not local
// is looked for among the caller's.
class JSActivation : public JSLocalContext {
  public:
    // The root of a chain when `parent`, the context that calls, is null.
    explicit JSActivation(JSContext* parent);
    ~JSActivation() override;

    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;

    bool declareParameter(const BString& name) override;
    void doReturn(JSObject* value, JSObject* receiver) override;
    JSObject* currentFunction() override;
    JSFunctionNode* nearestFunction() override { return running_; }

    // Runs a function in this activation. `receiver` is the object under construction, null without a `new`;
    // it is not referenced. The result is what `return` gave, with a reference for the caller.
    JSObject* runFunction(JSFunctionNode* node, JSObject* args, JSObject* receiver);

    // True when the engine could not make all parts of the activation.
    bool isIncomplete() const { return argumentsObject_ == nullptr; }

  protected:
    Holder holderOf(const NameQuery& query) override;
    JSValueType specialType(const NameQuery& query) override;
    JSObject* specialGet(const NameQuery& query) override;
    JSObject* specialSet(const NameQuery& query, JSObject* value) override;
    void specialDelete(const NameQuery& query) override;

  private:
    bool bindArguments(JSFunctionNode* node, JSObject* args);
    JSObject* callerFunction();

    JSFunctionNode* running_ = nullptr;
    // The function whose parameters were declared here; referenced.
    JSFunctionNode* declared_ = nullptr;
    JSArgumentsObject* argumentsObject_;
    // The function that called. Its object is made when a script asks for it, which few do, unless a context
    // of a host's own is to be asked.
    JSFunctionNode* callerNode_ = nullptr;
    JSObject* callerFunction_ = nullptr;
    JSObject* returnValue_ = nullptr;
    JSObject* thisObject_ = nullptr;
};

// What every root of a chain has: the position in the script text, and an end to what goes up.
class JSGlobalBase : public JSActivation {
  public:
    JSGlobalBase();

    // Drops the message. A host that wants to show messages overrides this in a machine class of its own.
    void reportError(const BString& message) override;
    void setPosition(int32_t line, int32_t column) override;
    void getPosition(int32_t& line, int32_t& column) override;
    // True, and nothing else: the text of a function binds no name.
    bool declareFunction(const BString& name, JSFunctionNode* node) override;

  private:
    JSWalkState walkState_;
};

// The scope of a `with` statement: the object is asked before the chain. A call by bare name does not see the
// object.
class JSWithContext final : public JSContext {
  public:
    // References both; `object` may be null, which leaves the chain alone.
    JSWithContext(JSContext* parent, JSObject* object);
    ~JSWithContext() override;

  protected:
    Holder holderOf(const NameQuery& query) override;

  private:
    JSObject* object_;
};

// The scope of a method call: the chain is asked before the this object.
class JSThisContext final : public JSContext {
  public:
    // References both; `object` may be null.
    JSThisContext(JSContext* parent, JSObject* object);
    ~JSThisContext() override;

    JSObject* getThis(JSContext* ctx, JSObject* receiver) override;
    void setThis(JSObject* value, JSContext* ctx, JSObject* receiver) override;

  protected:
    JSObject* nearestThis() override;
    Holder holderOf(const NameQuery& query) override;
    JSObject* lateObject() override { return object_; }
    JSValueType specialType(const NameQuery& query) override;
    JSObject* specialGet(const NameQuery& query) override;
    JSObject* specialSet(const NameQuery& query, JSObject* value) override;
    void specialDelete(const NameQuery& query) override;
    JSObject* specialCall(const NameQuery& query, JSObject* args) override;

  private:
    JSObject* object_;
};

}  // namespace quorvelin
