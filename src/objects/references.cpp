#include "objects/references.h"

#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"

namespace quorvelin {

JSReference::JSReference(JSObject* target) : target_(target) {
    target_->addRef();
}

JSReference::~JSReference() {
    target_->release();
}

bool JSReference::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member && member->hasMember(name, ctx, receiver);
}

JSValueType JSReference::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->memberType(name, ctx, receiver) : JSValueType::undefined;
}

JSObject* JSReference::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->getMember(name, ctx, receiver) : nullptr;
}

// What the reference stands for; a plain object is put there first when there is nothing.
Value JSReference::readOrMake(JSContext* ctx, JSObject* receiver) {
    Value member = read(ctx, receiver);
    if (member || ctx->isStopped()) return member;
    {
        const Value object(ctx->makeObject(receiver));
        if (ctx->isStopped()) return Value();
        const Value stored = store(object.get(), ctx, receiver);
    }
    // What the store kept is what the second read finds.
    return read(ctx, receiver);
}

JSObject* JSReference::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    const Value member = readOrMake(ctx, receiver);
    return member ? member->setMember(name, value, ctx, receiver) : nullptr;
}

bool JSReference::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member && member->deleteMember(name, ctx, receiver);
}

JSObject* JSReference::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->callMember(name, args, ctx, receiver) : nullptr;
}

JSObject* JSReference::getItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->getItem(index, ctx, receiver) : nullptr;
}

JSObject* JSReference::setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) {
    const Value member = readOrMake(ctx, receiver);
    return member ? member->setItem(index, value, ctx, receiver) : nullptr;
}

void JSReference::deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) member->deleteItem(index, ctx, receiver);
}

void JSReference::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) {
        member->asString(out, ctx, receiver);
    } else {
        out.clear();
    }
}

void JSReference::asExpression(BString& out, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) {
        member->asExpression(out, ctx, receiver);
    } else {
        out.clear();
    }
}

void JSReference::asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) {
        member->asNumber(out, ctx, receiver);
    } else {
        out = JSNumberValue();
    }
}

bool JSReference::asBoolean(JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member && member->asBoolean(ctx, receiver);
}

JSObject* JSReference::asObject(JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->asObject(ctx, receiver) : nullptr;
}

void JSReference::className(BString& out, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) {
        member->className(out, ctx, receiver);
    } else {
        out = nameText(WellKnownName::undefined);
    }
}

int32_t JSReference::memberCount(JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->memberCount(ctx, receiver) : 0;
}

JSObject* JSReference::memberAt(int32_t index, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->memberAt(index, ctx, receiver) : nullptr;
}

// ---- By name ----

Value JSMemberRef::read(JSContext* ctx, JSObject* receiver) {
    Value member(target()->getMember(name_.text(), ctx, receiver));
    if (ctx->isStopped()) return Value();
    return member;
}

Value JSMemberRef::store(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return Value(target()->setMember(name_.text(), value, ctx, receiver));
}

JSValueType JSMemberRef::valueType(JSContext* ctx, JSObject* receiver) {
    return target()->memberType(name_.text(), ctx, receiver);
}

JSObject* JSMemberRef::assign(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return target()->setMember(name_.text(), value, ctx, receiver);
}

JSObject* JSMemberRef::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return target()->callMember(name_.text(), args, ctx, receiver);
}

void JSMemberRef::memberName(BString& out, JSContext*, JSObject*) {
    out = name_.text();
}

void JSMemberRef::clearMembers(JSContext* ctx, JSObject* receiver) {
    target()->deleteMember(name_.text(), ctx, receiver);
}

// ---- By position ----

Value JSIndexRef::read(JSContext* ctx, JSObject* receiver) {
    Value member(target()->getItem(index(), ctx, receiver));
    if (ctx->isStopped()) return Value();
    return member;
}

Value JSIndexRef::store(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return Value(target()->setItem(index(), value, ctx, receiver));
}

JSValueType JSIndexRef::valueType(JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->valueType(ctx, receiver) : JSValueType::undefined;
}

JSObject* JSIndexRef::assign(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return target()->setItem(index(), value, ctx, receiver);
}

JSObject* JSIndexRef::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    return member ? member->call(args, ctx, receiver) : nullptr;
}

void JSIndexRef::memberName(BString& out, JSContext* ctx, JSObject* receiver) {
    const Value member = read(ctx, receiver);
    if (member) {
        member->memberName(out, ctx, receiver);
    } else {
        out.clear();
    }
}

void JSIndexRef::clearMembers(JSContext* ctx, JSObject* receiver) {
    target()->deleteItem(index(), ctx, receiver);
}

// ---- Methods ----

JSValueType JSMethodRef::valueType(JSContext*, JSObject*) {
    return JSValueType::function;
}

bool JSMethodRef::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return !native_ && JSMemberRef::hasMember(name, ctx, receiver);
}

JSValueType JSMethodRef::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    return native_ ? JSValueType::undefined : JSMemberRef::memberType(name, ctx, receiver);
}

JSObject* JSMethodRef::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::getMember(name, ctx, receiver);
}

JSObject* JSMethodRef::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::setMember(name, value, ctx, receiver);
}

bool JSMethodRef::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return !native_ && JSMemberRef::deleteMember(name, ctx, receiver);
}

JSObject* JSMethodRef::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::callMember(name, args, ctx, receiver);
}

JSObject* JSMethodRef::getItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::getItem(index, ctx, receiver);
}

JSObject* JSMethodRef::setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::setItem(index, value, ctx, receiver);
}

// What a native method's name gives is such a reference again, so these two must not read and go on either.
void JSMethodRef::deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    if (!native_) JSMemberRef::deleteItem(index, ctx, receiver);
}

void JSMethodRef::asExpression(BString& out, JSContext* ctx, JSObject* receiver) {
    if (native_) {
        out.clear();
    } else {
        JSMemberRef::asExpression(out, ctx, receiver);
    }
}

JSObject* JSMethodRef::assign(JSObject* value, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::assign(value, ctx, receiver);
}

void JSMethodRef::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    if (!native_) {
        JSMemberRef::asString(out, ctx, receiver);
        return;
    }
    // Quirk: without the blanks that the text of other native functions has.
    TextBuilder text;
    text.append(u"function ");
    text.append(name().text());
    text.append(u"(){[native code]}");
    out = text.text();
}

void JSMethodRef::asNumber(JSNumberValue& out, JSContext*, JSObject*) {
    out = JSNumberValue::of(0.0);
}

// Quirk: a method that is read but not called is false.
bool JSMethodRef::asBoolean(JSContext*, JSObject*) {
    return false;
}

// A native method is its own object, so that it can be kept in a variable and called.
JSObject* JSMethodRef::asObject(JSContext* ctx, JSObject* receiver) {
    return native_ ? shared() : JSMemberRef::asObject(ctx, receiver);
}

void JSMethodRef::className(BString& out, JSContext* ctx, JSObject* receiver) {
    if (native_) {
        out = nameText(WellKnownName::FunctionClass);
    } else {
        JSMemberRef::className(out, ctx, receiver);
    }
}

int32_t JSMethodRef::memberCount(JSContext* ctx, JSObject* receiver) {
    return native_ ? 0 : JSMemberRef::memberCount(ctx, receiver);
}

JSObject* JSMethodRef::memberAt(int32_t index, JSContext* ctx, JSObject* receiver) {
    return native_ ? nullptr : JSMemberRef::memberAt(index, ctx, receiver);
}

void JSMethodRef::clearMembers(JSContext* ctx, JSObject* receiver) {
    if (!native_) JSMemberRef::clearMembers(ctx, receiver);
}

}  // namespace quorvelin
