#include "stdlib/array_object.h"

#include <algorithm>

#include "evaluator/operators.h"
#include "foundation/heap_block.h"
#include "foundation/native_stack_guard.h"
#include "foundation/number_text.h"
#include "foundation/text_builder.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/member_request.h"

namespace quorvelin {

JSObject* JSArrayObject::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    // The constructor behind the array takes the names that it has, and the array takes the new ones.
    if (forwardsName(name, ctx, receiver) && inner()->hasMember(name, ctx, receiver)) {
        return inner()->setMember(name, value, ctx, receiver);
    }
    return JSObject::setMember(name, value, ctx, receiver);
}

namespace {

// How deep arrays may stand in one another for their text, and how deep the thread is in it.
constexpr int32_t kDeepestText = 4000;
thread_local int32_t textNesting = 0;

}  // namespace

void JSArrayObject::asString(BString& out, JSContext* ctx, JSObject* receiver) {
    out.clear();
    // An array may hold itself, and every level of it makes the text of all levels above longer.
    if (textNesting >= kDeepestText || nativeStackIsShort()) {
        ctx->reportError(u"stack overflow");
        return;
    }
    ++textNesting;
    const Value joined(callMember(nameText(WellKnownName::join), nullptr, ctx, receiver));
    if (joined) joined->asString(out, ctx, receiver);
    --textNesting;
}

// ---- join ----

void JSArrayObject::join(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString separator(u",");
    // Quirk: the separator is the text of the list of arguments as a whole; a script always passes one.
    if (args != nullptr) args->asString(separator, ctx, receiver);
    joinWith(out, separator, ctx, receiver);
}

void JSArrayObject::joinWith(BString& out, const BString& separator, JSContext* ctx, JSObject* receiver) {
    TextBuilder text;
    for (int32_t i = 0; i < getLength(receiver); ++i) {
        // Quirk: empty texts in front add no separators.
        if (text.length() > 0) text.append(separator);
        const Value item(getItem(i, ctx, receiver));
        if (ctx->isStopped()) break;
        if (!item) {
            text.append(nameText(WellKnownName::undefined));
            continue;
        }
        BString itemText;
        item->asString(itemText, ctx, receiver);
        text.append(itemText);
        if (ctx->isStopped()) break;
    }
    out = text.text();
}

// ---- reverse ----

JSObject* JSArrayObject::reverse(JSObject*, JSContext* ctx, JSObject* receiver) {
    reverseItems(ctx, receiver);
    return ctx->isStopped() ? nullptr : shared();
}

// Quirk: the first of two cells takes the second's value before the second takes the first's, so the first
// half of the array becomes a mirror of the second and the second half stays: 1,2,3,4 becomes 4,3,3,4.
void JSArrayObject::reverseItems(JSContext* ctx, JSObject* receiver) {
    for (int32_t i = 0, j = getLength(receiver) - 1; i < j; ++i, --j) {
        const Value first(getItem(i, ctx, receiver));
        const Value second(getItem(j, ctx, receiver));
        { const Value stored(setItem(i, second.get(), ctx, receiver)); }
        if (ctx->isStopped()) return;
        { const Value stored(setItem(j, first.get(), ctx, receiver)); }
        if (ctx->isStopped()) return;
    }
}

// ---- sort ----

namespace {

// How two elements compare: -1, 0, 1, or -2 when the comparison failed or a jump is pending.
int32_t sortCompare(JSObject* x, JSObject* y, JSObject* compare, JSContext* ctx, JSObject* receiver) {
    if (compare == nullptr) return compareOperands(x, y, ctx, receiver);
    Value arguments(ctx->makeArraySized(2, receiver));
    if (ctx->isStopped() || !arguments) return kComparisonStopped;
    { const Value stored(arguments->setItem(0, x, ctx, receiver)); }
    if (ctx->isStopped()) return kComparisonStopped;
    { const Value stored(arguments->setItem(1, y, ctx, receiver)); }
    if (ctx->isStopped()) return kComparisonStopped;
    Value result(compare->call(arguments.get(), ctx, receiver));
    arguments.reset();
    if (ctx->isStopped() || !result) return kComparisonStopped;
    JSNumberValue number;
    result->asNumber(number, ctx, receiver);
    result.reset();
    if (ctx->isStopped()) return kComparisonStopped;
    const JSNumberValue zero = JSNumberValue::of(0.0);
    if (number.less(zero)) return -1;
    if (!number.isFinite()) return 1;
    return JSNumberValue::compareValues(number.value, 0.0) != 0 ? 1 : 0;
}

}  // namespace

JSObject* JSArrayObject::sort(JSObject* args, JSContext* ctx, JSObject* receiver) {
    const Value compare(args != nullptr ? args->memberAt(0, ctx, receiver) : nullptr);
    if (ctx->isStopped()) return nullptr;
    sortWith(compare.get(), ctx, receiver);
    // Quirk: the result is nothing, not the array.
    return nullptr;
}

namespace {

// Sorts `count` values with room for as many in `scratch`: both halves are sorted and then merged. The later
// of two values goes first only when the comparison of the earlier with the later answers above 0.
template <typename Compare>
void mergeSort(JSObject** values, JSObject** scratch, int32_t count, const Compare& compare) {
    if (count < 2) return;
    const int32_t middle = count / 2;
    mergeSort(values, scratch, middle, compare);
    mergeSort(values + middle, scratch, count - middle, compare);
    int32_t left = 0;
    int32_t right = middle;
    for (int32_t place = 0; place < count; ++place) {
        const bool takeRight = left == middle || (right < count && compare(values[left], values[right]) > 0);
        scratch[place] = takeRight ? values[right++] : values[left++];
    }
    std::copy(scratch, scratch + count, values);
}

}  // namespace

// The sort is stable and by merging, so that a comparison that contradicts itself can do no harm. The values
// move; the cells and their names stay. Positions without a value go last and are not compared.
void JSArrayObject::sortWith(JSObject* compare, JSContext* ctx, JSObject* receiver) {
    const int32_t length = getLength(receiver);
    HeapBlock<JSObject*> values;
    HeapBlock<JSObject*> scratch;
    if (length < 1 || !values.resize(static_cast<size_t>(length)) ||
        !scratch.resize(static_cast<size_t>(length)))
        return;
    int32_t count = 0;
    for (int32_t i = 0; i < length; ++i) {
        const JSProperty* cell = members().at(i);
        if (cell != nullptr && cell->value() != nullptr)
            values[static_cast<size_t>(count++)] = cell->value()->shared();
    }
    mergeSort(values.data(), scratch.data(), count,
              [&](JSObject* x, JSObject* y) { return sortCompare(x, y, compare, ctx, receiver); });
    for (int32_t i = 0; i < length; ++i) {
        Value value(i < count ? values[static_cast<size_t>(i)] : nullptr);
        // The comparison may have run a script that shortened the array.
        if (!members().contains(i)) continue;
        if (JSProperty* cell = members().at(i)) {
            cell->replaceValue(std::move(value));
        } else if (value) {
            Value fresh(new JSProperty(Name(nameAtom(WellKnownName::empty)), value.get()));
            if (fresh) members().replace(i, static_cast<JSProperty*>(fresh.take()));
        }
    }
}

// ---- The members ----

namespace {

JSObject* callJoin(JSArrayObject& self, JSMemberRequest& request) {
    BString text;
    self.join(text, request.argument, request.ctx, request.receiver);
    return request.ctx->makeString(text, request.receiver);
}

JSObject* callReverse(JSArrayObject& self, JSMemberRequest& request) {
    return self.reverse(request.argument, request.ctx, request.receiver);
}

JSObject* callSort(JSArrayObject& self, JSMemberRequest& request) {
    return self.sort(request.argument, request.ctx, request.receiver);
}

constexpr NativeMember<JSArrayObject> kMembers[] = {
    {WellKnownName::join, JSValueType::function, nullptr, nullptr, callJoin},
    {WellKnownName::reverse, JSValueType::function, nullptr, nullptr, callReverse},
    {WellKnownName::sort, JSValueType::function, nullptr, nullptr, callSort},
};

}  // namespace

bool JSArrayObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSInstance::dispatchMember(request);
}

// ---- The constructor ----

JSObject* JSArrayConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    const int32_t count = args != nullptr ? args->memberCount(ctx, receiver) : 0;
    if (ctx->isStopped()) return nullptr;
    if (count == 1) {
        const Value only(args->memberAt(0, ctx, receiver));
        if (ctx->isStopped()) return nullptr;
        if (only && only->valueType(ctx, receiver) == JSValueType::number) {
            JSNumberValue length;
            only->asNumber(length, ctx, receiver);
            if (ctx->isStopped()) return nullptr;
            const int32_t entries = length.isFinite() ? truncateToInt32(length.value) : 0;
            return finishConstruction(ctx->makeArraySized(entries, receiver), ctx, receiver);
        }
    }
    Value array(ctx->makeArraySized(count, receiver));
    if (ctx->isStopped() || !array) return nullptr;
    for (int32_t i = 0; i < count; ++i) {
        const Value argument(args->memberAt(i, ctx, receiver));
        if (ctx->isStopped()) return nullptr;
        const Value stored(array->setItem(i, argument.get(), ctx, receiver));
        if (ctx->isStopped()) return nullptr;
    }
    return finishConstruction(array.take(), ctx, receiver);
}

}  // namespace quorvelin
