// JSActivation, one running call, and JSGlobalBase, the root of a chain.
#include "evaluator/contexts.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "objects/js_property.h"
#include "objects/number_object.h"

namespace quorvelin {

namespace {

template <typename Visit>
void forEachParameter(const JSFunctionNode& node, Visit visit) {
    // A damaged tree may hold something else in the place of the parameters.
    const JSNode* list = node.parameters.get();
    if (list == nullptr || list->shape().tag != JSParametersNode::kTag) return;
    const auto& parameters = static_cast<const JSParametersNode&>(*list);
    for (const ParameterRecord* record = parameters.parameters.first; record != nullptr;
         record = record->next) {
        if (record->name.atom() != nullptr) visit(record->name);
    }
}

// Quirk: a number that is 0 is handed back as undefined.
bool isZero(JSObject* object, JSContext* context, JSObject* receiver) {
    if (object == nullptr || object->valueType(context, receiver) != JSValueType::number) return false;
    JSNumberValue number;
    comparisonNumber(object, number, context, receiver);
    return number.isZero();
}

}  // namespace

bool JSArgumentsObject::append(const Name& name, JSObject* value) {
    Value cell(name.atom() != nullptr ? new JSProperty(name, value) : nullptr);
    if (!cell || !members().appendRepeatable(static_cast<JSProperty*>(cell.get()))) return false;
    (void)cell.take();
    return true;
}

JSObject* JSArgumentsObject::setMember(const BString& name, JSObject* value, JSContext* ctx,
                                       JSObject* receiver) {
    // A script's own member of `arguments` is found by its bare name like a parameter.
    const int32_t before = members().count();
    JSObject* result = JSObject::setMember(name, value, ctx, receiver);
    for (int32_t i = before; i < members().count(); ++i) {
        if (const JSProperty* cell = members().at(i)) cell->name().atom()->enterScope();
    }
    return result;
}

JSActivation::JSActivation(JSContext* parent)
    : JSLocalContext(parent), argumentsObject_(new JSArgumentsObject()) {
    if (argumentsObject_ != nullptr) firstStore_ = &argumentsObject_->ownMembers();
    if (parent == nullptr) return;
    if (!isEnginesAlone()) {
        callerFunction_ = parent->currentFunction();
        return;
    }
    callerNode_ = Owned<JSFunctionNode>::share(parent->nearestFunction()).take();
}

JSActivation::~JSActivation() {
    if (declared_ != nullptr) {
        forEachParameter(*declared_, [](const Name& name) { name.atom()->leaveScope(); });
        declared_->release();
    }
    if (callerNode_ != nullptr) callerNode_->release();
    for (JSObject* part : {static_cast<JSObject*>(argumentsObject_), callerFunction_, returnValue_}) {
        if (part != nullptr) part->release();
    }
}

JSObject* JSActivation::callerFunction() {
    if (callerFunction_ == nullptr && callerNode_ != nullptr)
        callerFunction_ = makeFunction(callerNode_, nullptr);
    return callerFunction_;
}

JSContext::Holder JSActivation::holderOf(const NameQuery& query) {
    using Purpose = NameQuery::Purpose;
    const bool isCall = query.purpose == Purpose::call;
    if (query.isWellKnown()) {
        if (query.isNamed(WellKnownName::arguments) || query.isNamed(WellKnownName::caller)) {
            if (!isCall) return {Holder::special};
        } else if (query.isNamed(WellKnownName::thisWord)) {
            // The nearest method call up the chain says what `this` is, and at the root the root does.
            // Quirk: under `new` too, when it is called: `this()` calls the object whose method is under
            // `new`.
            if (thisObject_ == nullptr || query.purpose == Purpose::remove || isCall)
                return {parent() != nullptr ? Holder::nobody : Holder::self};
            return {Holder::special};
        }
    }
    // Quirk: parameters come before everything else, but a parameter cannot be called by its name. What every
    // object answers is found here too, so a bare `length` is the number of arguments.
    if (!isCall && argumentsObject_ != nullptr &&
        argumentsObject_->hasMember(query.name, query.ctx, query.receiver)) {
        return {Holder::object, argumentsObject_};
    }
    return JSContext::holderOf(query);
}

JSValueType JSActivation::specialType(const NameQuery& query) {
    if (query.isNamed(WellKnownName::arguments)) return JSValueType::object;
    JSObject* const object = query.isNamed(WellKnownName::caller) ? callerFunction() : thisObject_;
    return object != nullptr ? object->valueType(query.ctx, query.receiver) : JSValueType::undefined;
}

JSObject* JSActivation::specialGet(const NameQuery& query) {
    if (query.isNamed(WellKnownName::arguments)) return argumentsObject_->shared();
    return Value::share(query.isNamed(WellKnownName::caller) ? callerFunction() : thisObject_).take();
}

JSObject* JSActivation::specialSet(const NameQuery& query, JSObject* value) {
    if (query.isNamed(WellKnownName::thisWord)) {
        const Value object = Value::share(thisObject_);
        return object->assign(value, query.ctx, query.receiver);
    }
    specialDelete(query);
    return nullptr;
}

void JSActivation::specialDelete(const NameQuery& query) {
    query.ctx->reportError(query.isNamed(WellKnownName::arguments) ? u"property arguments is readonly"
                                                                   : u"property caller is readonly");
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
        Value object(value->asObject(this, receiver));
        if (!stopped() && !isZero(object.get(), this, receiver)) returnValue_ = object.take();
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
    if (declared_ == nullptr && parent() != nullptr) {
        node->addRef();
        declared_ = node;
        forEachParameter(*node, [](const Name& name) { name.atom()->enterScope(); });
    }
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

JSGlobalBase::JSGlobalBase() : JSActivation(nullptr), walkState_{this} {
    shareState(&walkState_);
}

void JSGlobalBase::reportError(const BString&) {}

void JSGlobalBase::setPosition(int32_t line, int32_t column) {
    walkState_.line = line;
    walkState_.column = column;
}

void JSGlobalBase::getPosition(int32_t& line, int32_t& column) {
    line = walkState_.line;
    column = walkState_.column;
}

// Quirk: a function statement binds no name.
bool JSGlobalBase::declareFunction(const BString&, JSFunctionNode*) {
    return true;
}

}  // namespace quorvelin
