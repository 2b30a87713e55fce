// JSActivation, one running call, and JSGlobalBase, the root of a chain.
#include "evaluator/contexts.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "objects/js_property.h"
#include "objects/number_object.h"

namespace quorvelin {

bool JSArgumentsObject::append(const Name& name, JSObject* value) {
    Value cell(new JSProperty(name, value));
    if (!cell || !members().append(static_cast<JSProperty*>(cell.get()))) return false;
    (void)cell.take();
    return true;
}

JSActivation::JSActivation(JSContext* parent, JSObject* callerFunction)
    : JSLocalContext(parent),
      argumentsObject_(new JSArgumentsObject()),
      callerFunction_(Value::share(callerFunction).take()) {}

JSActivation::~JSActivation() {
    for (JSObject* part : {static_cast<JSObject*>(argumentsObject_), callerFunction_, returnValue_}) {
        if (part != nullptr) part->release();
    }
}

JSActivation::SpecialName JSActivation::specialName(const BString& name) const {
    if (name == nameText(WellKnownName::arguments)) return SpecialName::arguments;
    if (name == nameText(WellKnownName::caller)) return SpecialName::caller;
    if (name == nameText(WellKnownName::thisWord)) {
        return thisObject_ != nullptr ? SpecialName::thisObject : SpecialName::thisOfChain;
    }
    return SpecialName::none;
}

bool JSActivation::argumentsHold(const BString& name, JSContext* ctx, JSObject* receiver) {
    return argumentsObject_ != nullptr && argumentsObject_->hasMember(name, ctx, receiver);
}

bool JSActivation::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    switch (specialName(name)) {
        case SpecialName::arguments:
        case SpecialName::caller:
        case SpecialName::thisObject:
            return true;
        case SpecialName::thisOfChain:
            if (parent() != nullptr) return parent()->hasMember(name, ctx, receiver);
            break;
        case SpecialName::none:
            break;
    }
    return JSContext::hasMember(name, ctx, receiver) || argumentsHold(name, ctx, receiver);
}

JSValueType JSActivation::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    switch (specialName(name)) {
        case SpecialName::arguments:
            return JSValueType::object;
        case SpecialName::caller:
            return callerFunction_ != nullptr ? callerFunction_->valueType(ctx, receiver) : JSValueType::undefined;
        case SpecialName::thisObject:
            return thisObject_->valueType(ctx, receiver);
        case SpecialName::thisOfChain:
            if (parent() != nullptr) return parent()->memberType(name, ctx, receiver);
            break;
        case SpecialName::none:
            if (argumentsHold(name, ctx, receiver)) return argumentsObject_->memberType(name, ctx, receiver);
            break;
    }
    return JSContext::memberType(name, ctx, receiver);
}

JSObject* JSActivation::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    switch (specialName(name)) {
        case SpecialName::arguments:
            return Value::share(static_cast<JSObject*>(argumentsObject_)).take();
        case SpecialName::caller:
            return Value::share(callerFunction_).take();
        case SpecialName::thisObject:
            return thisObject_->shared();
        case SpecialName::thisOfChain:
            if (parent() != nullptr) return parent()->getMember(name, ctx, receiver);
            break;
        case SpecialName::none:
            if (argumentsHold(name, ctx, receiver)) return argumentsObject_->getMember(name, ctx, receiver);
            break;
    }
    return JSContext::getMember(name, ctx, receiver);
}

JSObject* JSActivation::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    switch (specialName(name)) {
        case SpecialName::arguments:
            ctx->reportError(u"property arguments is readonly");
            return nullptr;
        case SpecialName::caller:
            ctx->reportError(u"property caller is readonly");
            return nullptr;
        case SpecialName::thisObject: {
            const Value object = Value::share(thisObject_);
            return object->assign(value, ctx, receiver);
        }
        case SpecialName::thisOfChain:
            if (parent() != nullptr) return parent()->setMember(name, value, ctx, receiver);
            break;
        case SpecialName::none:
            if (argumentsHold(name, ctx, receiver)) return argumentsObject_->setMember(name, value, ctx, receiver);
            break;
    }
    return JSContext::setMember(name, value, ctx, receiver);
}

bool JSActivation::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    switch (specialName(name)) {
        case SpecialName::arguments:
            ctx->reportError(u"property arguments is readonly");
            return false;
        case SpecialName::caller:
            ctx->reportError(u"property caller is readonly");
            return false;
        case SpecialName::thisOfChain:
            if (parent() != nullptr) return parent()->deleteMember(name, ctx, receiver);
            break;
        case SpecialName::thisObject:
        case SpecialName::none:
            if (argumentsHold(name, ctx, receiver)) return argumentsObject_->deleteMember(name, ctx, receiver);
            break;
    }
    return JSContext::deleteMember(name, ctx, receiver);
}

// Quirk: parameters are not looked at, so a parameter cannot be called by its name.
JSObject* JSActivation::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (parent() != nullptr && specialName(name) == SpecialName::thisOfChain) {
        return parent()->callMember(name, args, ctx, receiver);
    }
    return JSContext::callMember(name, args, ctx, receiver);
}

void JSActivation::memberName(BString& out, JSContext*, JSObject*) {
    if (running_ != nullptr) {
        out = running_->name.text();
    } else {
        out.clear();
    }
}

bool JSActivation::declareParameter(const BString& name) {
    return argumentsObject_ != nullptr && argumentsObject_->append(Name(name), nullptr);
}

void JSActivation::doReturn(JSObject* value, JSObject* receiver) {
    { const Value old(std::exchange(returnValue_, nullptr)); }
    if (value != nullptr) {
        // Quirk: a number that is 0 is handed back as undefined.
        bool isZero = false;
        if (value->valueType(this, receiver) == JSValueType::number) {
            JSNumberValue number;
            comparisonNumber(value, number, this, receiver);
            isZero = number.isZero();
        }
        Value object(isZero ? nullptr : value->asObject(this, receiver));
        if (!stopped()) returnValue_ = object.take();
    }
    complete(JSCompletion::returned);
}

JSObject* JSActivation::currentFunction() {
    return running_ != nullptr ? makeFunction(running_, nullptr) : nullptr;
}

JSObject* JSActivation::runFunction(JSFunctionNode* node, JSObject* args, JSObject* receiver) {
    JSFunctionNode* const outerNode = std::exchange(running_, node);
    thisObject_ = receiver;
    currentLabel_ = Name();
    setPosition(node->line, node->column);
    JSObject* result = nullptr;
    if (bindArguments(node, args)) {
        // The value of the last statement is not the function's result.
        const Value value(execute(node->body.get(), nullptr));
        result = std::exchange(returnValue_, nullptr);
    }
    running_ = outerNode;
    // A method that a script read in here keeps the activation alive, but not the object under construction.
    thisObject_ = nullptr;
    return result;
}

// Declares parameters and variables and hands the arguments to the parameters.
bool JSActivation::bindArguments(JSFunctionNode* node, JSObject* args) {
    if ((node->parameters && !node->parameters->check(this)) || (node->body && !node->body->check(this))) {
        reportError(u"can't init context");
        return false;
    }
    const int32_t count = args != nullptr ? args->memberCount(this, nullptr) : 0;
    if (stopped()) return false;
    // The parameters stand in the cells that `check` has just made, in their order.
    const int32_t parameterCount = argumentsObject_->memberCount(this, nullptr);
    for (int32_t i = 0; i < count; ++i) {
        const Value argument(args->memberAt(i, this, nullptr));
        if (stopped()) return false;
        if (i < parameterCount) {
            const Value cell(argumentsObject_->memberAt(i, this, nullptr));
            const Value stored(cell->assign(argument.get(), this, nullptr));
        } else {
            argumentsObject_->append(Name(nameAtom(WellKnownName::empty)), argument.get());
        }
    }
    return true;
}

// ---- The root ----

JSGlobalBase::JSGlobalBase() : JSActivation(nullptr, nullptr), walkState_{this} { shareState(&walkState_); }

void JSGlobalBase::reportError(const BString&) {}

bool JSGlobalBase::declareFunction(const BString&, JSFunctionNode*) { return true; }

}  // namespace quorvelin
