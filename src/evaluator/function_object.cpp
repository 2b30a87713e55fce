#include "evaluator/function_object.h"

#include "evaluator/contexts.h"
#include "foundation/native_stack_guard.h"
#include "foundation/stream.h"
#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "frontend/parser.h"

namespace quorvelin {

JSFunction::JSFunction(JSObject* constructor, JSObject* inner, JSFunctionNode* node)
    : JSInstance(constructor, inner), node_(node) {
    node_->addRef();
}

JSFunction::~JSFunction() {
    node_->release();
}

JSValueType JSFunction::valueType(JSContext*, JSObject*) {
    return JSValueType::function;
}

namespace {

bool isDecompile(const BString& name) {
    return name == nameText(WellKnownName::decompile);
}

}  // namespace

bool JSFunction::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return isDecompile(name) || JSInstance::hasMember(name, ctx, receiver);
}

JSValueType JSFunction::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    return isDecompile(name) ? JSValueType::function : JSInstance::memberType(name, ctx, receiver);
}

JSObject* JSFunction::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isDecompile(name)) return ctx->makeMethodRef(this, name, true, receiver);
    return JSInstance::getMember(name, ctx, receiver);
}

JSObject* JSFunction::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (isDecompile(name)) {
        ctx->reportError(u"property is read only");
        return nullptr;
    }
    return JSInstance::setMember(name, value, ctx, receiver);
}

bool JSFunction::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (isDecompile(name)) {
        ctx->reportError(u"property is read only");
        return false;
    }
    return JSInstance::deleteMember(name, ctx, receiver);
}

JSObject* JSFunction::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (isDecompile(name)) return ctx->makeString(node_->regenerate(), receiver);
    return JSInstance::callMember(name, args, ctx, receiver);
}

// Quirk: a function has no object of its own to hand out, so members that were stored on it do not travel.
JSObject* JSFunction::asObject(JSContext* ctx, JSObject* receiver) {
    return ctx->makeFunction(node_, receiver);
}

void JSFunction::memberName(BString& out, JSContext*, JSObject*) {
    out = node_->name.text();
}

JSObject* JSFunction::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (nativeStackIsShortForCall()) {
        ctx->reportError(u"stack overflow");
        return nullptr;
    }
    // The function object may be replaced while it runs; its tree must not go away.
    const Owned<JSFunctionNode> node = Owned<JSFunctionNode>::share(node_);
    const Owned<JSActivation> activation(new JSActivation(ctx));
    if (!activation || activation->isIncomplete()) {
        ctx->reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    if (ctx->stopped()) return nullptr;
    return activation->runFunction(node.get(), args, receiver);
}

// ---- The constructor ----

namespace {

// The text of the argument at `position`; false when there is none or a jump is pending.
bool argumentText(JSObject* args, int32_t position, BString& text, JSContext* ctx, JSObject* receiver) {
    const Value argument(args->memberAt(position, ctx, receiver));
    if (ctx->stopped() || !argument) return false;
    argument->asString(text, ctx, receiver);
    return !ctx->stopped();
}

Owned<JSNode> parseBody(const BString& text) {
    BStringInputStream stream(&text);
    JSParser parser(&stream);
    return Owned<JSNode>(parser.parseProgram());
}

}  // namespace

JSObject* JSFunctionConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    // 1. The function stands where it is made.
    int32_t line = 0;
    int32_t column = 0;
    ctx->getPosition(line, column);
    // 2. The parameters.
    Owned<JSParametersNode> parameters(new JSParametersNode(line, column));
    if (!parameters) {
        ctx->setPosition(line, column);
        ctx->reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    // 3. Quirk: each argument but the last is one name, whatever it holds: "a,b" is not split.
    const int32_t count = args != nullptr ? args->memberCount(ctx, receiver) : 0;
    for (int32_t i = 0; i < count - 1; ++i) {
        BString name;
        if (!argumentText(args, i, name, ctx, receiver) || !parameters->append(Name(name))) return nullptr;
    }
    // 4. The last is the body.
    Owned<JSNode> body;
    if (count > 0) {
        BString text;
        if (!argumentText(args, count - 1, text, ctx, receiver)) return nullptr;
        body = parseBody(text);
        if (!body || body->kind == kErrorKind) {
            TextBuilder message;
            message.append(u"Error compile:");
            if (body) message.append(body->regenerate());
            ctx->setPosition(line, column);
            ctx->reportError(message.text());
            return nullptr;
        }
    }
    // 6. The function object.
    Owned<JSFunctionNode> node(new JSFunctionNode(line, column, Name(), parameters.take(), body.take()));
    if (!node) {
        ctx->reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    Value function(ctx->makeFunction(node.get(), receiver));
    // 7. Into the cell of a running `new`, if there is one.
    if (ctx->stopped()) return nullptr;
    return finishConstruction(function.take(), ctx, receiver);
}

}  // namespace quorvelin
