#include "objects/parented_object.h"

#include "foundation/native_stack_guard.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/member_request.h"

namespace quorvelin {

JSParentedObject::JSParentedObject(JSObject* inner, JSObject* constructor)
    : JSObject(constructor), inner_(inner) {
    if (inner_ != nullptr) inner_->addRef();
}

JSParentedObject::~JSParentedObject() {
    if (inner_ != nullptr) inner_->release();
}

void JSParentedObject::detachInner() {
    const Value old(std::exchange(inner_, nullptr));
}

JSValueType JSParentedObject::valueType(JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->valueType(ctx, receiver) : JSValueType::object;
}

bool JSParentedObject::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return hasOwnMember(name, ctx, receiver) || (inner_ != nullptr && inner_->hasMember(name, ctx, receiver));
}

JSValueType JSParentedObject::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (forwardsName(name, ctx, receiver)) return inner_->memberType(name, ctx, receiver);
    return JSObject::memberType(name, ctx, receiver);
}

JSObject* JSParentedObject::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (forwardsName(name, ctx, receiver)) return inner_->getMember(name, ctx, receiver);
    return JSObject::getMember(name, ctx, receiver);
}

// Quirk: a new name lands on the inner object: what is written to one instance, all of its class have.
JSObject* JSParentedObject::setMember(const BString& name, JSObject* value, JSContext* ctx,
                                      JSObject* receiver) {
    if (forwardsName(name, ctx, receiver)) return inner_->setMember(name, value, ctx, receiver);
    return JSObject::setMember(name, value, ctx, receiver);
}

bool JSParentedObject::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (forwardsName(name, ctx, receiver)) return inner_->deleteMember(name, ctx, receiver);
    return JSObject::deleteMember(name, ctx, receiver);
}

JSObject* JSParentedObject::callMember(const BString& name, JSObject* args, JSContext* ctx,
                                       JSObject* receiver) {
    if (forwardsName(name, ctx, receiver)) return inner_->callMember(name, args, ctx, receiver);
    return JSObject::callMember(name, args, ctx, receiver);
}

JSObject* JSParentedObject::assign(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->assign(value, ctx, receiver) : nullptr;
}

JSObject* JSParentedObject::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->call(args, ctx, receiver) : nullptr;
}

void JSParentedObject::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) {
        inner_->asString(out, ctx, receiver);
    } else {
        JSObject::asString(out, ctx, receiver);
    }
}

void JSParentedObject::asExpression(BString& out, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) {
        inner_->asExpression(out, ctx, receiver);
    } else {
        JSObject::asExpression(out, ctx, receiver);
    }
}

void JSParentedObject::asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) {
        inner_->asNumber(out, ctx, receiver);
    } else {
        JSObject::asNumber(out, ctx, receiver);
    }
}

bool JSParentedObject::asBoolean(JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->asBoolean(ctx, receiver) : JSObject::asBoolean(ctx, receiver);
}

JSObject* JSParentedObject::asObject(JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->asObject(ctx, receiver) : JSObject::asObject(ctx, receiver);
}

void JSParentedObject::className(BString& out, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) {
        inner_->className(out, ctx, receiver);
    } else {
        JSObject::className(out, ctx, receiver);
    }
}

void JSParentedObject::memberName(BString& out, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) {
        inner_->memberName(out, ctx, receiver);
    } else {
        JSObject::memberName(out, ctx, receiver);
    }
}

int32_t JSParentedObject::memberCount(JSContext* ctx, JSObject* receiver) {
    const int32_t own = members().count();
    if (inner_ == nullptr) return own;
    const int32_t forwarded = inner_->memberCount(ctx, receiver);
    return ctx->isStopped() ? 0 : own + forwarded;
}

JSObject* JSParentedObject::memberAt(int32_t index, JSContext* ctx, JSObject* receiver) {
    const int32_t own = members().count();
    if (inner_ == nullptr || index < own) return JSObject::memberAt(index, ctx, receiver);
    return inner_->memberAt(index - own, ctx, receiver);
}

void JSParentedObject::clearMembers(JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) inner_->clearMembers(ctx, receiver);
    releaseMembers();
}

JSObject* JSParentedObject::getConstructor(JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->getConstructor(ctx, receiver)
                             : JSObject::getConstructor(ctx, receiver);
}

JSObject* JSParentedObject::getThis(JSContext* ctx, JSObject* receiver) {
    return inner_ != nullptr ? inner_->getThis(ctx, receiver) : shared();
}

void JSParentedObject::setThis(JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (inner_ != nullptr) inner_->setThis(value, ctx, receiver);
}

// ---- JSInstance ----

JSObject* JSInstance::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    const Value base = Value::share(inner());
    // 1. A constructor calls the one that it builds on by `this.prototype(...)`.
    if (name == nameText(WellKnownName::prototype)) return base ? base->call(args, ctx, receiver) : nullptr;
    // 2. A method found up the chain runs with this instance as its this object.
    if (base && !hasOwnMember(name, ctx, receiver) && base->hasMember(name, ctx, receiver)) {
        if (nativeStackIsShort()) {
            ctx->reportError(u"stack overflow");
            return nullptr;
        }
        const Owned<JSContext> thisContext(ctx->makeThisContext(this, nullptr, receiver));
        if (!thisContext) return nullptr;
        // A cell of the inner object is called as it is, or that object would put itself in as the this
        // object.
        const Value cell = Value::share(ownCellOf(*base, name, ctx, receiver));
        if (cell) return cell->call(args, thisContext.get(), receiver);
        return base->callMember(name, args, thisContext.get(), receiver);
    }
    // 3. A cell of its own is called with this instance as the this object as well.
    const Value cell = Value::share(ownCellOf(*this, name, ctx, receiver));
    if (cell) return ctx->callWithThis(this, cell.get(), args, ctx, receiver);
    return JSParentedObject::callMember(name, args, ctx, receiver);
}

JSObject* JSInstance::assign(JSObject*, JSContext*, JSObject*) {
    return nullptr;
}

JSObject* JSInstance::call(JSObject*, JSContext*, JSObject*) {
    return nullptr;
}

void JSInstance::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    JSObject::asString(out, ctx, receiver);
}

void JSInstance::asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    JSObject::asNumber(out, ctx, receiver);
}

bool JSInstance::asBoolean(JSContext* ctx, JSObject* receiver) {
    return JSObject::asBoolean(ctx, receiver);
}

JSObject* JSInstance::asObject(JSContext* ctx, JSObject* receiver) {
    return JSObject::asObject(ctx, receiver);
}

void JSInstance::className(BString& out, JSContext* ctx, JSObject* receiver) {
    if (inner() != nullptr) {
        inner()->memberName(out, ctx, receiver);
    } else {
        JSObject::className(out, ctx, receiver);
    }
}

// Quirk: `delete` of an instance cuts it off from its class for good.
void JSInstance::clearMembers(JSContext*, JSObject*) {
    detachInner();
    releaseMembers();
}

JSObject* JSInstance::getPrototype(JSContext*, JSObject*) {
    return inner() != nullptr ? inner()->shared() : nullptr;
}

namespace {

JSObject* getPrototypeMember(JSInstance& self, JSMemberRequest& request) {
    return self.getPrototype(request.ctx, request.receiver);
}

// Quirk: a script's write to `prototype` is ignored without a word.
JSObject* ignorePrototype(JSInstance&, JSMemberRequest&) {
    return nullptr;
}

constexpr NativeMember<JSInstance> kInstanceMembers[] = {
    {WellKnownName::prototype, JSValueType::object, getPrototypeMember, ignorePrototype, nullptr},
};

}  // namespace

bool JSInstance::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kInstanceMembers, *this, request) || JSObject::dispatchMember(request);
}

}  // namespace quorvelin
