#include "objects/js_object.h"

#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/member_request.h"

namespace quorvelin {

JSObject::JSObject(JSObject* constructor) : constructor_(constructor) {
    if (constructor_ != nullptr) constructor_->addRef();
}

JSObject::~JSObject() {
    if (constructor_ != nullptr) constructor_->release();
    for (int32_t i = members_.count() - 1; i >= 0; --i) {
        if (JSProperty* cell = members_.at(i)) cell->release();
    }
}

JSValueType JSObject::valueType(JSContext*, JSObject*) {
    return JSValueType::object;
}

// ---- Members by name ----

int32_t JSObject::findMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (members_.count() == 0) return -1;
    const NameLookup lookup(name);
    return members_.find(lookup.atom(), name, ctx, receiver);
}

JSProperty* JSObject::ownCellOf(JSObject& object, const BString& name, JSContext* ctx, JSObject* receiver) {
    const int32_t index = object.findMember(name, ctx, receiver);
    return index >= 0 ? object.members_.at(index) : nullptr;
}

bool JSObject::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (findMember(name, ctx, receiver) >= 0) return true;
    JSMemberRequest request(name, JSRequestOp::exists, nullptr, ctx, receiver);
    return dispatchMember(request);
}

JSValueType JSObject::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    const int32_t index = findMember(name, ctx, receiver);
    if (index >= 0) {
        const Value cell = Value::share(members_.at(index));
        return cell ? cell->valueType(ctx, receiver) : JSValueType::undefined;
    }
    JSMemberRequest request(name, JSRequestOp::type, nullptr, ctx, receiver);
    return dispatchMember(request) ? request.type : JSValueType::undefined;
}

JSObject* JSObject::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const int32_t index = findMember(name, ctx, receiver);
    if (index >= 0) {
        JSProperty* cell = members_.at(index);
        return cell != nullptr ? cell->shared() : nullptr;
    }
    JSMemberRequest request(name, JSRequestOp::get, nullptr, ctx, receiver);
    return dispatchMember(request) ? request.result : nullptr;
}

JSObject* JSObject::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    // 1. An own property takes the value type by type.
    const int32_t index = findMember(name, ctx, receiver);
    if (index >= 0) {
        const Value cell = Value::share(members_.at(index));
        return cell ? cell->assign(value, ctx, receiver) : nullptr;
    }
    // 2. The class may have a member of that name.
    JSMemberRequest request(name, JSRequestOp::set, value, ctx, receiver);
    if (dispatchMember(request)) return request.result;
    // 3. A new property holds the object behind the value.
    Value held;
    if (value != nullptr) {
        held = Value(value->asObject(ctx, receiver));
        if (ctx->isStopped()) return nullptr;
    }
    const Name ownName(name);
    Value cell(ownName.atom() != nullptr ? new JSProperty(ownName, held.get()) : nullptr);
    // Without memory nothing is stored, and nothing is said.
    if (cell && members_.append(static_cast<JSProperty*>(cell.get()))) (void)cell.take();
    return value != nullptr ? value->shared() : nullptr;
}

bool JSObject::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const int32_t index = findMember(name, ctx, receiver);
    if (index < 0) return false;
    const Value cell(members_.erase(index));
    return true;
}

JSObject* JSObject::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    const int32_t index = findMember(name, ctx, receiver);
    if (index >= 0) {
        const Value cell = Value::share(members_.at(index));
        if (!cell) return nullptr;
        const Value thisObject(getThis(ctx, receiver));
        if (ctx->isStopped()) return nullptr;
        return ctx->callWithThis(thisObject.get(), cell.get(), args, ctx, receiver);
    }
    JSMemberRequest request(name, JSRequestOp::call, args, ctx, receiver);
    return dispatchMember(request) ? request.result : nullptr;
}

// ---- Members by position ----

JSObject* JSObject::getItem(int32_t index, JSContext*, JSObject*) {
    if (!members_.contains(index)) return nullptr;
    JSProperty* cell = members_.at(index);
    return cell != nullptr ? cell->shared() : nullptr;
}

JSObject* JSObject::setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) {
    if (index < 0) return value != nullptr ? value->shared() : nullptr;
    if (index >= members_.count() && !members_.appendEmpty(index - members_.count() + 1)) {
        ctx->reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    const Value present = Value::share(members_.at(index));
    if (present) return present->assign(value, ctx, receiver);
    Value held;
    if (value != nullptr) {
        held = Value(value->asObject(ctx, receiver));
        if (ctx->isStopped()) return value->shared();
    }
    Value cell(new JSProperty(Name(nameAtom(WellKnownName::empty)), held.get()));
    // The conversion may have run a script that shortened the array.
    if (cell && members_.contains(index)) {
        const Value replaced(members_.replace(index, static_cast<JSProperty*>(cell.take())));
    }
    return value != nullptr ? value->shared() : nullptr;
}

void JSObject::deleteItem(int32_t index, JSContext*, JSObject*) {
    if (members_.contains(index)) const Value cell(members_.erase(index));
}

// ---- Storing and calling ----

JSObject* JSObject::assign(JSObject*, JSContext*, JSObject*) {
    return nullptr;
}

JSObject* JSObject::call(JSObject*, JSContext*, JSObject*) {
    return nullptr;
}

// ---- The store as a whole ----

void JSObject::memberName(BString& out, JSContext*, JSObject*) {
    out.clear();
}

int32_t JSObject::memberCount(JSContext*, JSObject*) {
    return members_.count();
}

JSObject* JSObject::memberAt(int32_t index, JSContext* ctx, JSObject* receiver) {
    return JSObject::getItem(index, ctx, receiver);
}

void JSObject::releaseMembers() {
    // An entry's end may run a host's code that looks at this object again, so each one leaves the store
    // first.
    MemberStore gone;
    gone.swap(members_);
    for (int32_t i = 0; i < gone.count(); ++i) {
        if (JSProperty* cell = gone.at(i)) cell->release();
    }
    gone.forgetAll();
    if (members_.count() == 0) members_.swap(gone);  // the buffer stays
}

void JSObject::clearMembers(JSContext*, JSObject*) {
    releaseMembers();
}

int32_t JSObject::getLength(JSObject*) {
    return members_.count();
}

void JSObject::setLength(int32_t length, JSObject*) {
    if (length > members_.count()) members_.appendEmpty(length - members_.count());
    if (length < 0) return;
    while (members_.count() > length) const Value cell(members_.erase(members_.count() - 1));
}

JSObject* JSObject::getConstructor(JSContext*, JSObject*) {
    return constructor_ != nullptr ? constructor_->shared() : nullptr;
}

void JSObject::setConstructor(JSObject* value, JSContext* ctx, JSObject* receiver) {
    const Value old(std::exchange(constructor_, nullptr));
    if (value == nullptr) return;
    Value object(value->asObject(ctx, receiver));
    if (ctx->isStopped()) return;
    constructor_ = object.take();
}

JSObject* JSObject::getThis(JSContext*, JSObject*) {
    return shared();
}

void JSObject::setThis(JSObject*, JSContext*, JSObject*) {}

void JSObject::callToString(BString& out, JSObject*, JSContext* ctx, JSObject* receiver) {
    asString(out, ctx, receiver);
}

JSObject* JSObject::callValueOf(JSObject*, JSContext*, JSObject*) {
    return shared();
}

// ---- The members that every object has ----

namespace {

JSObject* shareArgument(const JSMemberRequest& request) {
    return request.argument != nullptr ? request.argument->shared() : nullptr;
}

JSObject* getLengthMember(JSObject& self, JSMemberRequest& request) {
    return request.ctx->makeNumber(JSNumberValue::of(self.getLength(request.receiver)), request.receiver);
}

JSObject* setLengthMember(JSObject& self, JSMemberRequest& request) {
    int32_t length = 0;
    if (request.argument != nullptr) {
        JSNumberValue number;
        request.argument->asNumber(number, request.ctx, request.receiver);
        if (request.ctx->isStopped()) return nullptr;
        length = truncateToInt32(number.value);
    }
    self.setLength(length, request.receiver);
    return shareArgument(request);
}

JSObject* getConstructorMember(JSObject& self, JSMemberRequest& request) {
    return self.getConstructor(request.ctx, request.receiver);
}

JSObject* setConstructorMember(JSObject& self, JSMemberRequest& request) {
    self.setConstructor(request.argument, request.ctx, request.receiver);
    return request.ctx->isStopped() ? nullptr : shareArgument(request);
}

JSObject* callToStringMember(JSObject& self, JSMemberRequest& request) {
    BString text;
    self.callToString(text, request.argument, request.ctx, request.receiver);
    return request.ctx->isStopped() ? nullptr : request.ctx->makeString(text, request.receiver);
}

JSObject* getThisMember(JSObject& self, JSMemberRequest& request) {
    return self.getThis(request.ctx, request.receiver);
}

JSObject* setThisMember(JSObject& self, JSMemberRequest& request) {
    self.setThis(request.argument, request.ctx, request.receiver);
    return request.ctx->isStopped() ? nullptr : shareArgument(request);
}

JSObject* callValueOfMember(JSObject& self, JSMemberRequest& request) {
    return self.callValueOf(request.argument, request.ctx, request.receiver);
}

constexpr NativeMember<JSObject> kMembers[] = {
    {WellKnownName::length, JSValueType::number, getLengthMember, setLengthMember, nullptr},
    {WellKnownName::constructor, JSValueType::object, getConstructorMember, setConstructorMember, nullptr},
    {WellKnownName::toString, JSValueType::function, nullptr, nullptr, callToStringMember},
    {WellKnownName::thisWord, JSValueType::object, getThisMember, setThisMember, nullptr},
    {WellKnownName::valueOf, JSValueType::function, nullptr, nullptr, callValueOfMember},
};

}  // namespace

bool JSObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request);
}

int32_t JSMemberRequest::searchWellKnown(const BString& text) {
    const NameLookup lookup(text);
    return lookup.atom() != nullptr ? lookup.atom()->wellKnown() : -1;
}

JSObject* makeNativeMethodRef(JSObject& self, JSMemberRequest& request) {
    return request.ctx->makeMethodRef(&self, *request.name, true, request.receiver);
}

// ---- Arguments ----

template <typename Convert>
bool JSObject::readArgument(JSObject* args, int32_t position, JSContext* ctx, JSObject* receiver,
                            Convert convert) {
    if (args == nullptr || position >= args->memberCount(ctx, receiver) || ctx->isStopped()) return false;
    Value argument(args->memberAt(position, ctx, receiver));
    if (ctx->isStopped() || !argument) return false;
    convert(*argument);
    argument.reset();
    return !ctx->isStopped();
}

bool JSObject::argString(JSObject* args, int32_t position, BString& out, JSContext* ctx, JSObject* receiver) {
    BString text;
    const bool present = readArgument(args, position, ctx, receiver,
                                      [&](JSObject& argument) { argument.asString(text, ctx, receiver); });
    if (present) out = std::move(text);
    return present;
}

bool JSObject::argExpression(JSObject* args, int32_t position, BString& out, JSContext* ctx,
                             JSObject* receiver) {
    BString text;
    const bool present = readArgument(args, position, ctx, receiver, [&](JSObject& argument) {
        argument.asExpression(text, ctx, receiver);
    });
    if (present) out = std::move(text);
    return present;
}

bool JSObject::argNumber(JSObject* args, int32_t position, double& out, JSContext* ctx, JSObject* receiver) {
    JSNumberValue number;
    const bool present = readArgument(args, position, ctx, receiver,
                                      [&](JSObject& argument) { argument.asNumber(number, ctx, receiver); });
    // Quirk: an infinity or NaN comes as whatever double its record holds.
    if (present) out = number.value;
    return present;
}

bool JSObject::argInteger(JSObject* args, int32_t position, int32_t& out, JSContext* ctx,
                          JSObject* receiver) {
    double number = 0.0;
    const bool present = argNumber(args, position, number, ctx, receiver);
    if (present) out = truncateToInt32(number);
    return present;
}

}  // namespace quorvelin
