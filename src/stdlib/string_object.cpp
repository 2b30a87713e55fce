#include "stdlib/string_object.h"

#include <algorithm>

#include "foundation/character.h"
#include "objects/js_context.h"
#include "objects/member_request.h"
#include "stdlib/split_text.h"

namespace quorvelin {

JSObject* JSStringObject::getItem(int32_t index, JSContext* ctx, JSObject* receiver) {
    const bool inside = index >= 0 && index < value_.length();
    return ctx->makeString(inside ? value_.substr(index, 1) : BString(), receiver);
}

// Quirk: the character at index 0 stays and the text goes in front of it; elsewhere the text takes the
// character's place.
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

JSObject* JSStringObject::asObject(JSContext* ctx, JSObject* receiver) {
    return ctx->makeString(value_, receiver);
}

void JSStringObject::className(BString& out, JSContext*, JSObject*) {
    out = nameText(WellKnownName::StringClass);
}

int32_t JSStringObject::getLength(JSObject*) {
    return value_.length();
}

// ---- The methods ----

namespace {

bool contains(int32_t length, int32_t index) {
    return index >= 0 && index < length;
}

template <char16_t (*convert)(char16_t)>
void convertUnits(const BString& text, BString& out) {
    if (!out.assign(text.data(), text.length())) return;
    for (char16_t *unit = out.buffer(), *const end = unit + out.length(); unit != end; ++unit)
        *unit = convert(*unit);
}

}  // namespace

void JSStringObject::charAt(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t index = 0;
    if (argInteger(args, 0, index, ctx, receiver)) {
        charAtIndex(out, index);
    } else {
        out.clear();
    }
}

void JSStringObject::charAtIndex(BString& out, int32_t index) {
    out = contains(value_.length(), index) ? value_.substr(index, 1) : BString();
}

int32_t JSStringObject::charCodeAt(JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t index = 0;
    argInteger(args, 0, index, ctx, receiver);
    return charCodeAtIndex(index);
}

// Quirk: outside the text it is 0, a code like any other.
int32_t JSStringObject::charCodeAtIndex(int32_t index) {
    return contains(value_.length(), index) ? value_[index] : 0;
}

void JSStringObject::concat(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    out = value_;
    const int32_t count = args != nullptr ? args->memberCount(ctx, receiver) : 0;
    for (int32_t i = 0; i < count && !ctx->isStopped(); ++i) {
        BString text;
        if (argString(args, i, text, ctx, receiver)) out.append(text);
    }
}

int32_t JSStringObject::indexOf(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    int32_t from = -1;
    if (!argString(args, 0, text, ctx, receiver)) return -1;
    argInteger(args, 1, from, ctx, receiver);
    return ctx->isStopped() ? -1 : indexOfText(text, from);
}

int32_t JSStringObject::indexOfText(const BString& text, int32_t from) {
    // Quirk: the empty text is found nowhere.
    if (text.isEmpty()) return -1;
    // Quirk: the start is limited by the length of the text that is looked for, not by that of this text.
    const int32_t start = std::max(0, from < text.length() ? from : text.length() - 1);
    return findUnits(value_, text, start);
}

int32_t JSStringObject::lastIndexOf(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    int32_t from = -1;
    if (!argString(args, 0, text, ctx, receiver)) return -1;
    argInteger(args, 1, from, ctx, receiver);
    return lastIndexOfText(text, from);
}

// Quirk: nothing is ever found.
int32_t JSStringObject::lastIndexOfText(const BString&, int32_t) {
    return -1;
}

void JSStringObject::match(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    argExpression(args, 0, text, ctx, receiver);
    matchText(out, text);
}

// Quirk: this and the next four methods give the empty text, whatever they are asked.
void JSStringObject::matchText(BString& out, const BString&) {
    out.clear();
}

void JSStringObject::replace(BString& out, JSObject*, JSContext*, JSObject*) {
    out.clear();
}

void JSStringObject::search(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    argExpression(args, 0, text, ctx, receiver);
    searchText(out, text);
}

void JSStringObject::searchText(BString& out, const BString&) {
    out.clear();
}

void JSStringObject::slice(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t start = 0;
    int32_t end = -1;
    if (argInteger(args, 0, start, ctx, receiver)) argInteger(args, 1, end, ctx, receiver);
    sliceRange(out, start, end);
}

void JSStringObject::sliceRange(BString& out, int32_t, int32_t) {
    out.clear();
}

void JSStringObject::substr(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t start = 0;
    int32_t length = -1;
    if (argInteger(args, 0, start, ctx, receiver)) argInteger(args, 1, length, ctx, receiver);
    substrRange(out, start, length);
}

void JSStringObject::substrRange(BString& out, int32_t, int32_t) {
    out.clear();
}

void JSStringObject::substring(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    out.clear();
    int32_t start = 0;
    int32_t end = -1;
    if (!argInteger(args, 0, start, ctx, receiver)) return;
    argInteger(args, 1, end, ctx, receiver);
    if (!ctx->isStopped()) substringRange(out, start, end);
}

// Quirk: start and end are not swapped, and an end outside the text is the end of the text.
void JSStringObject::substringRange(BString& out, int32_t start, int32_t end) {
    if (start < 0) start = 0;
    if (end < 0 || end > value_.length()) end = value_.length();
    out = start < end ? value_.substr(start, end - start) : BString();
}

void JSStringObject::toLowerCase(BString& out, JSObject*, JSContext*, JSObject*) {
    lowerCased(out);
}

void JSStringObject::lowerCased(BString& out) {
    convertUnits<quorvelin::toLowerCase>(value_, out);
}

void JSStringObject::toUpperCase(BString& out, JSObject*, JSContext*, JSObject*) {
    upperCased(out);
}

void JSStringObject::upperCased(BString& out) {
    convertUnits<quorvelin::toUpperCase>(value_, out);
}

// ---- The members ----

namespace {

JSObject* getLengthMember(JSStringObject& self, JSMemberRequest& request) {
    return request.ctx->makeNumber(JSNumberValue::of(self.getLength(request.receiver)), request.receiver);
}

// Writing the length of a string changes nothing.
JSObject* ignoreLength(JSStringObject&, JSMemberRequest&) {
    return nullptr;
}

template <void (JSStringObject::*method)(BString&, JSObject*, JSContext*, JSObject*)>
JSObject* callForText(JSStringObject& self, JSMemberRequest& request) {
    BString text;
    (self.*method)(text, request.argument, request.ctx, request.receiver);
    return request.ctx->makeString(text, request.receiver);
}

template <int32_t (JSStringObject::*method)(JSObject*, JSContext*, JSObject*)>
JSObject* callForNumber(JSStringObject& self, JSMemberRequest& request) {
    const int32_t number = (self.*method)(request.argument, request.ctx, request.receiver);
    return request.ctx->makeNumber(JSNumberValue::of(number), request.receiver);
}

JSObject* callSplit(JSStringObject& self, JSMemberRequest& request) {
    return splitText(self.value(), request.argument, request.ctx, request.receiver);
}

using S = JSStringObject;
constexpr JSValueType kFunction = JSValueType::function;

constexpr NativeMember<JSStringObject> kMembers[] = {
    {WellKnownName::length, JSValueType::number, getLengthMember, ignoreLength, nullptr},
    {WellKnownName::charAt, kFunction, nullptr, nullptr, callForText<&S::charAt>},
    {WellKnownName::charCodeAt, kFunction, nullptr, nullptr, callForNumber<&S::charCodeAt>},
    {WellKnownName::concat, kFunction, nullptr, nullptr, callForText<&S::concat>},
    {WellKnownName::indexOf, kFunction, nullptr, nullptr, callForNumber<&S::indexOf>},
    {WellKnownName::lastIndexOf, kFunction, nullptr, nullptr, callForNumber<&S::lastIndexOf>},
    {WellKnownName::match, kFunction, nullptr, nullptr, callForText<&S::match>},
    {WellKnownName::replace, kFunction, nullptr, nullptr, callForText<&S::replace>},
    {WellKnownName::search, kFunction, nullptr, nullptr, callForText<&S::search>},
    {WellKnownName::slice, kFunction, nullptr, nullptr, callForText<&S::slice>},
    {WellKnownName::split, kFunction, nullptr, nullptr, callSplit},
    {WellKnownName::substr, kFunction, nullptr, nullptr, callForText<&S::substr>},
    {WellKnownName::substring, kFunction, nullptr, nullptr, callForText<&S::substring>},
    {WellKnownName::toLowerCase, kFunction, nullptr, nullptr, callForText<&S::toLowerCase>},
    {WellKnownName::toUpperCase, kFunction, nullptr, nullptr, callForText<&S::toUpperCase>},
};

}  // namespace

bool JSStringObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSInstance::dispatchMember(request);
}

// ---- The constructor ----

JSObject* JSStringConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (args != nullptr) args->asString(text, ctx, receiver);
    return finishConstruction(ctx->makeString(text, receiver), ctx, receiver);
}

void JSStringConstructor::fromCharCode(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    // Quirk: the characters go through blocks of this size, each taken up to its first NUL, so a code 0 takes
    // what is left of its block with it.
    constexpr int32_t kBlockSize = 256;
    char16_t block[kBlockSize + 1];
    int32_t used = 0;
    const auto appendBlock = [&] {
        block[used] = 0;
        out.append(block);
        used = 0;
    };
    out.clear();
    const int32_t count = args != nullptr ? args->memberCount(ctx, receiver) : 0;
    for (int32_t i = 0; i < count && !ctx->isStopped(); ++i) {
        int32_t code = 0;
        if (!argInteger(args, i, code, ctx, receiver)) continue;
        block[used++] = static_cast<char16_t>(code);
        if (used == kBlockSize) appendBlock();
    }
    appendBlock();
}

namespace {

JSObject* callFromCharCode(JSStringConstructor& self, JSMemberRequest& request) {
    BString text;
    self.fromCharCode(text, request.argument, request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    return request.ctx->makeString(text, request.receiver);
}

constexpr NativeMember<JSStringConstructor> kConstructorMembers[] = {
    {WellKnownName::fromCharCode, kFunction, nullptr, nullptr, callFromCharCode},
};

}  // namespace

bool JSStringConstructor::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kConstructorMembers, *this, request) ||
           JSConstructorObject::dispatchMember(request);
}

}  // namespace quorvelin
