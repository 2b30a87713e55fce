// The operations of JSContext: state of the walk, calls, factories, running nodes.
#include "evaluator/contexts.h"
#include "evaluator/peek.h"
#include "foundation/native_stack_guard.h"
#include "foundation/stream.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "frontend/parser.h"
#include "frontend/tree_reader.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/references.h"
#include "objects/simple_objects.h"

namespace quorvelin {

JSContext::~JSContext() {
    complete(JSCompletion::normal);
}

// ---- The walk's state ----

void JSContext::complete(JSCompletion completion) {
    if (state_ != nullptr) {
        state_->stoppedContexts +=
            (completion != JSCompletion::normal) - (completion_ != JSCompletion::normal);
    }
    completion_ = completion;
}

void JSContext::reportError(const BString& message) {
    if (state_ != nullptr && state_->root != this) {
        state_->root->reportError(message);
    } else if (parent() != nullptr) {
        parent()->reportError(message);
    }
}

bool JSContext::isStopped() {
    if (completion_ != JSCompletion::normal) return true;
    return parent() != nullptr && parent()->stopped();
}

JSCompletion JSContext::getCompletion() {
    return completion_;
}

JSCompletion JSContext::setCompletion(JSCompletion completion) {
    complete(completion);
    return completion;
}

void JSContext::setPosition(int32_t line, int32_t column) {
    if (state_ != nullptr) {
        state_->line = line;
        state_->column = column;
    } else if (parent() != nullptr) {
        parent()->setPosition(line, column);
    }
}

void JSContext::getPosition(int32_t& line, int32_t& column) {
    if (state_ != nullptr) {
        line = state_->line;
        column = state_->column;
    } else if (parent() != nullptr) {
        parent()->getPosition(line, column);
    }
}

void JSContext::currentLabel(BString& out) {
    out = currentLabel_.text();
}

void JSContext::jumpLabel(BString& out) {
    out = jumpLabel_.text();
}

bool JSContext::jumpIsMine() const {
    return jumpLabel_.text().isEmpty() || jumpLabel_ == currentLabel_;
}

// ---- This objects and calls ----

JSContext* JSContext::rootOfChain() {
    JSContext* root = this;
    while (root->parent() != nullptr) root = root->parent();
    return root;
}

JSObject* JSContext::nearestThis() {
    return parent() != nullptr ? parent()->askThis() : nullptr;
}

// A context of a host's own says by `getThis` what its this object is. The root, with which the rule for
// contexts ends, is none.
JSObject* JSContext::askHostsThis() {
    Value object(getThis(this, nullptr));
    return object.get() != rootOfChain() ? object.take() : nullptr;
}

JSObject* JSContext::getThis(JSContext* ctx, JSObject* receiver) {
    if (receiver != nullptr) return receiver->shared();
    if (JSObject* object = nearestThis()) return object;
    if (ctx->stopped()) return nullptr;
    if (JSObject* object = ctx != this ? ctx->askThis() : nullptr) return object;
    return rootOfChain()->shared();
}

JSObject* JSContext::callWithThis(JSObject* object, JSObject* function, JSObject* args, JSContext*,
                                  JSObject* receiver) {
    // A native method that calls itself by a cell of the same name gets here without running a node.
    if (nativeStackIsShortForCall()) {
        reportError(u"stack overflow");
        return nullptr;
    }
    const Owned<JSContext> thisContext(makeThisContext(object, nullptr, receiver));
    if (!thisContext) return nullptr;
    return function->call(args, thisContext.get(), receiver);
}

JSContext* JSContext::makeThisContext(JSObject* object, JSObject*, JSObject*) {
    return new JSThisContext(this, object);
}

JSContext* JSContext::makeLocalContext(JSObject*, JSObject*) {
    return new JSLocalContext(this);
}

namespace {

// The value that a factory gives, which reports when there was no memory for it.
JSObject* made(JSContext* ctx, JSObject* object) {
    if (object == nullptr) ctx->reportError(nameText(WellKnownName::outOfMemory));
    return object;
}

}  // namespace

JSObject* JSContext::makeMethodRef(JSObject* owner, const BString& name, bool native, JSObject*) {
    return made(this, new JSMethodRef(owner, Name(name), native));
}

// ---- Factories that go up ----

// The context that serves what this one cannot: the root at once where nothing stands between that could have
// a say.
#define UP (state_ != nullptr && state_->root != this ? state_->root : parent())
#define GO_UP(call)              \
    JSContext* const above = UP; \
    return above != nullptr ? above->call : nullptr

JSObject* JSContext::makeString(const BString& text, JSObject* receiver) {
    GO_UP(makeString(text, receiver));
}

JSObject* JSContext::makeRegExp(const BString& source, JSObject* receiver) {
    GO_UP(makeRegExp(source, receiver));
}

JSObject* JSContext::makeBoolean(bool value, JSObject* receiver) {
    GO_UP(makeBoolean(value, receiver));
}

JSObject* JSContext::makeNumberText(const BString& text, int32_t radix, JSObject* receiver) {
    GO_UP(makeNumberText(text, radix, receiver));
}

JSObject* JSContext::makeNumber(const JSNumberValue& value, JSObject* receiver) {
    GO_UP(makeNumber(value, receiver));
}

JSObject* JSContext::makeArraySized(int32_t count, JSObject* receiver) {
    GO_UP(makeArraySized(count, receiver));
}

JSObject* JSContext::makeArray(JSObject* receiver) {
    GO_UP(makeArray(receiver));
}

JSObject* JSContext::makeDateNumber(const JSNumberValue& seconds, JSObject* receiver) {
    GO_UP(makeDateNumber(seconds, receiver));
}

JSObject* JSContext::makeDateFields4(int32_t year, int32_t month, int32_t day, int32_t hours,
                                     JSObject* receiver) {
    GO_UP(makeDateFields4(year, month, day, hours, receiver));
}

JSObject* JSContext::makeDateFields5(int32_t year, int32_t month, int32_t day, int32_t hours, int32_t minutes,
                                     JSObject* receiver) {
    GO_UP(makeDateFields5(year, month, day, hours, minutes, receiver));
}

JSObject* JSContext::makeDateFields6(int32_t year, int32_t month, int32_t day, int32_t hours, int32_t minutes,
                                     int32_t seconds, JSObject* receiver) {
    GO_UP(makeDateFields6(year, month, day, hours, minutes, seconds, receiver));
}

JSObject* JSContext::makeDateFields3(int32_t year, int32_t month, int32_t day, JSObject* receiver) {
    GO_UP(makeDateFields3(year, month, day, receiver));
}

JSObject* JSContext::makeDateValue(JSObject* value, JSObject* receiver) {
    GO_UP(makeDateValue(value, receiver));
}

JSObject* JSContext::makeDateNow(JSObject* receiver) {
    GO_UP(makeDateNow(receiver));
}

JSObject* JSContext::makeFunction(JSFunctionNode* node, JSObject* receiver) {
    GO_UP(makeFunction(node, receiver));
}

#undef GO_UP
#undef UP

// ---- Factories that every context serves ----

JSObject* JSContext::makeUndefined(JSObject*) {
    return nullptr;
}

JSObject* JSContext::makeNull(JSObject*) {
    return made(this, new JSNull());
}

JSObject* JSContext::makeObject(JSObject*) {
    const Value function(currentFunction());
    return made(this, new JSPlainObject(function.get()));
}

JSObject* JSContext::currentFunction() {
    return parent() != nullptr ? parent()->currentFunction() : nullptr;
}

// ---- Declarations ----

bool JSContext::declareFunction(const BString& name, JSFunctionNode* node) {
    if (parent() != nullptr) return parent()->declareFunction(name, node);
    reportError(u"local function");
    return false;
}

bool JSContext::declareVariable(const BString& name) {
    return parent() != nullptr && parent()->declareVariable(name);
}

bool JSContext::declareParameter(const BString& name) {
    return parent() != nullptr && parent()->declareParameter(name);
}

// ---- Running nodes ----

JSObject* JSContext::execute(JSNode* node, JSObject* receiver) {
    if (node == nullptr) return nullptr;
    if (nativeStackIsShort()) {
        reportError(u"stack overflow");
        return nullptr;
    }
    Name label;
    std::swap(label, currentLabel_);
    int32_t line = 0;
    int32_t column = 0;
    if (state_ != nullptr) {
        line = std::exchange(state_->line, node->line);
        column = std::exchange(state_->column, node->column);
    } else {
        getPosition(line, column);
        setPosition(node->line, node->column);
    }
    JSObject* result = node->run(this, receiver);
    // Quirk: when a jump is pending the label is not put back, so a break or continue with a label never
    // finds the loop that carries it, and the position stays on the statement that jumped.
    if (!stopped()) {
        setPosition(line, column);
        std::swap(label, currentLabel_);
    }
    return result;
}

JSObject* JSContext::executeLabelled(const BString& label, JSNode* node, JSObject* receiver) {
    const Name outer = std::exchange(currentLabel_, Name(label));
    int32_t line = 0;
    int32_t column = 0;
    getPosition(line, column);
    // Run directly, not through `execute`, so that the label survives into the statement.
    JSObject* result = nullptr;
    if (node != nullptr) {
        if (nativeStackIsShort()) {
            reportError(u"stack overflow");
        } else {
            result = node->run(this, receiver);
        }
    }
    setPosition(line, column);
    currentLabel_ = outer;
    return result;
}

JSObject* JSContext::executeWith(JSObject* object, JSNode* body, JSObject* receiver) {
    const Owned<JSContext> withContext(new JSWithContext(this, object));
    if (!withContext) {
        reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    if (nativeStackIsShort()) {
        reportError(u"stack overflow");
        return nullptr;
    }
    return body->run(withContext.get(), receiver);
}

JSObject* JSContext::executeNew(JSNode* node) {
    Value cell(new JSProperty(Name(), nullptr));
    if (!cell) {
        reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    // Quirk: what the constructor returns is dropped, even an object: the cell that it filled is the value.
    const Value returned(execute(node, cell.get()));
    return cell.take();
}

JSObject* JSContext::executeDelete(JSNode* node, JSObject* receiver) {
    const Value value(execute(node, receiver));
    if (value && !stopped()) value->clearMembers(this, receiver);
    return nullptr;
}

// Quirk: the jump stays in this context. In the body of a `with` that is the scope of the `with`, so the loop
// around it goes on.
int32_t JSContext::doBreak(const BString& label) {
    jumpLabel_ = Name(label);
    complete(JSCompletion::breakLoop);
    return 0;
}

int32_t JSContext::doContinue(const BString& label) {
    jumpLabel_ = Name(label);
    complete(JSCompletion::continueLoop);
    return 0;
}

void JSContext::doReturn(JSObject* value, JSObject* receiver) {
    if (parent() != nullptr) parent()->doReturn(value, receiver);
    complete(JSCompletion::returned);
}

// Evaluates a loop's condition. True when the loop has to end.
bool JSContext::conditionFails(JSNode* condition, JSObject* receiver) {
    bool truth = false;
    if (peekTruth(condition, this, truth)) return !truth || stopped();
    const Value value(execute(condition, receiver));
    if (stopped() || !value) return true;
    const bool holds = value->asBoolean(this, receiver);
    return stopped() || !holds;
}

JSObject* JSContext::executeLoop(JSNode* init, JSNode* preCondition, JSNode* body, JSNode* postCondition,
                                 JSNode* step, JSObject* receiver) {
    if (init != nullptr) {
        const Value value(execute(init, receiver));
        if (stopped()) return nullptr;
    }
    const bool hasParts =
        preCondition != nullptr || body != nullptr || postCondition != nullptr || step != nullptr;
    for (;;) {
        // `for (;;);` runs nothing that would ask, and a host must be able to end it.
        if (!hasParts && stopped()) return nullptr;
        if (preCondition != nullptr && conditionFails(preCondition, receiver)) return nullptr;
        if (body != nullptr) {
            { const Value value(execute(body, receiver)); }
            if (completion_ == JSCompletion::breakLoop) {
                if (jumpIsMine()) complete(JSCompletion::normal);
                return nullptr;
            }
            if (completion_ == JSCompletion::continueLoop) {
                if (!jumpIsMine()) return nullptr;
                complete(JSCompletion::normal);
            }
            if (stopped()) return nullptr;
        }
        if (postCondition != nullptr && conditionFails(postCondition, receiver)) return nullptr;
        if (step != nullptr) {
            const Value value(execute(step, receiver));
            if (stopped()) return nullptr;
        }
    }
}

// ---- Text to value ----

JSObject* JSContext::evaluateStream(IBStream* stream, JSObject* receiver) {
    Owned<JSNode> root;
    const char16_t first = stream->readChar();
    if (first == kSavedTreeMarker) {
        root = Owned<JSNode>(readNode(stream));
    } else {
        stream->unreadChar(first);
        JSParser parser(stream);
        root = Owned<JSNode>(parser.parseProgram());
        // Not even an error node could be made.
        if (!root) reportError(nameText(WellKnownName::outOfMemory));
    }
    if (!root || !root->check(this)) return nullptr;
    return execute(root.get(), receiver);
}

JSObject* JSContext::evaluateText(const BString& text, JSObject* receiver) {
    const BString copy(text);
    BStringInputStream stream(&copy);
    return evaluateStream(&stream, receiver);
}

}  // namespace quorvelin
