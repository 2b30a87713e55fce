#include "stdlib/string_object.h"

#include "objects/js_context.h"
#include "objects/member_request.h"

namespace quorvelin {

JSValueType JSStringObject::valueType(JSContext*, JSObject*) { return JSValueType::string; }

JSObject* JSStringObject::getItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    const bool inside = index >= 0 && index < value_.length();
    return ctx->makeString(inside ? value_.substr(index, 1) : BString(), receiver);
}

// Quirk: the character at index 0 stays and the text goes in front of it; elsewhere the text takes the character's place.
JSObject* JSStringObject::setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (value != nullptr) value->asString(text, ctx, receiver);
    if (ctx->isStopped()) return nullptr;
    deleteItem(index, ctx, receiver);
    if (index >= 0 && index <= value_.length()) {
        BString changed = value_.substr(0, index);
        changed.append(text);
        changed.append(value_.data() + index, value_.length() - index);
        value_ = std::move(changed);
    }
    return ctx->makeString(value_, receiver);
}

// Quirk: the first character cannot be deleted.
void JSStringObject::deleteItem(int32_t index, JSContext*, JSObject*) {
    if (index < 1 || index >= value_.length()) return;
    BString shortened = value_.substr(0, index);
    shortened.append(value_.data() + index + 1, value_.length() - index - 1);
    value_ = std::move(shortened);
}

void JSStringObject::asString(BString& out, JSContext*, JSObject*) { out = value_; }

JSObject* JSStringObject::asObject(JSContext* ctx, JSObject* receiver) { return ctx->makeString(value_, receiver); }

void JSStringObject::className(BString& out, JSContext*, JSObject*) { out = nameText(WellKnownName::StringClass); }

int32_t JSStringObject::getLength(JSObject*) { return value_.length(); }

namespace {

JSObject* getLengthMember(JSStringObject& self, JSMemberRequest& request) {
    return request.ctx->makeNumber(JSNumberValue::of(self.getLength(request.receiver)), request.receiver);
}

// Writing the length of a string changes nothing.
JSObject* ignoreLength(JSStringObject&, JSMemberRequest&) { return nullptr; }

constexpr NativeMember<JSStringObject> kMembers[] = {
    {WellKnownName::length, JSValueType::number, getLengthMember, ignoreLength, nullptr},
};

}  // namespace

bool JSStringObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSInstance::dispatchMember(request);
}

JSObject* JSStringConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (args != nullptr) args->asString(text, ctx, receiver);
    return finishConstruction(ctx->makeString(text, receiver), ctx, receiver);
}

}  // namespace quorvelin
