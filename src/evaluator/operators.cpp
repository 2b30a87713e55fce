#include "evaluator/operators.h"

#include <algorithm>

#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/number_object.h"
#include "objects/text_instance.h"

namespace quorvelin {

namespace {

using Type = JSValueType;

// ---- Comparing ----

enum class Way { truth, numbers, text };

// Quirk: an object compares by its text with everything, so two empty objects are equal.
Way wayOfComparison(Type left, Type right) {
    switch (left) {
        case Type::number:
            if (right == Type::boolean) return Way::truth;
            return right == Type::object ? Way::text : Way::numbers;
        case Type::boolean:
            return right == Type::number || right == Type::boolean ? Way::truth : Way::text;
        case Type::object:
            return Way::text;
        default:
            return right == Type::number ? Way::numbers : Way::text;
    }
}

// The numbers of both sides as comparisons see them. False when a jump became pending.
bool comparedNumbers(JSObject* left, JSObject* right, JSNumberValue& a, JSNumberValue& b, JSContext* ctx,
                     JSObject* receiver) {
    comparisonNumber(left, a, ctx, receiver);
    if (ctx->isStopped()) return false;
    comparisonNumber(right, b, ctx, receiver);
    return !ctx->isStopped();
}

int32_t compareTruth(JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver) {
    JSNumberValue a;
    JSNumberValue b;
    if (!comparedNumbers(left, right, a, b, ctx, receiver)) return kComparisonStopped;
    return static_cast<int32_t>(!a.isZero()) - static_cast<int32_t>(!b.isZero());
}

int32_t compareNumbers(JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver) {
    JSNumberValue a;
    JSNumberValue b;
    if (!comparedNumbers(left, right, a, b, ctx, receiver)) return kComparisonStopped;
    if (a.isFinite() && b.isFinite()) return JSNumberValue::compareValues(a.value, b.value);
    // Quirk: whatever is not finite and not less is greater, so NaN is greater than anything, itself
    // included.
    return a.less(b) ? -1 : 1;
}

int32_t compareUnits(const BString& a, const BString& b) {
    const int32_t shorter = a.length() < b.length() ? a.length() : b.length();
    for (int32_t i = 0; i < shorter; ++i) {
        if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    }
    return a.length() == b.length() ? 0 : a.length() < b.length() ? -1 : 1;
}

int32_t compareText(JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver) {
    TextOf a(left, ctx, receiver);
    if (!a.isReady()) a.text(ctx, receiver);
    if (ctx->isStopped()) return kComparisonStopped;
    TextOf b(right, ctx, receiver);
    if (!b.isReady()) a.own();
    const BString& second = b.text(ctx, receiver);
    if (ctx->isStopped()) return kComparisonStopped;
    return compareUnits(a.text(ctx, receiver), second);
}

// ---- Operators ----

using NumericOperation = JSNumberValue (JSNumberValue::*)(const JSNumberValue&) const;

JSObject* applyNumeric(NumericOperation operation, JSObject* left, JSObject* right, JSContext* ctx,
                       JSObject* receiver) {
    JSNumberValue a;
    left->asNumber(a, ctx, receiver);
    if (ctx->isStopped()) return nullptr;
    JSNumberValue b;
    right->asNumber(b, ctx, receiver);
    if (ctx->isStopped()) return nullptr;
    return ctx->makeNumber((a.*operation)(b), receiver);
}

bool isNumeric(Type type) {
    return type == Type::number || type == Type::boolean;
}

// Puts two texts together with one allocation and one copy of each.
bool joinTexts(const BString& front, const BString& behind, BString& text) {
    if (front.length() > BString::kMaximumLength - behind.length()) return false;
    if (!text.reserve(front.length() + behind.length())) return false;
    std::copy(front.data(), front.data() + front.length(), text.buffer());
    std::copy(behind.data(), behind.data() + behind.length() + 1, text.buffer() + front.length());
    return true;
}

// Quirk: the right side is converted first.
JSObject* applyAdd(JSObject* left, JSObject* right, Type leftType, Type rightType, JSContext* ctx,
                   JSObject* receiver) {
    if (isNumeric(leftType) && isNumeric(rightType)) {
        JSNumberValue b;
        right->asNumber(b, ctx, receiver);
        JSNumberValue a;
        left->asNumber(a, ctx, receiver);
        return ctx->makeNumber(a.add(b), receiver);
    }
    TextOf rightText(right, ctx, receiver);
    if (!rightText.isReady()) rightText.text(ctx, receiver);
    TextOf leftText(left, ctx, receiver);
    // Converting the left side may run a script that changes the string on the right.
    if (!leftText.isReady()) rightText.own();
    const BString& front = leftText.text(ctx, receiver);
    const BString& behind = rightText.text(ctx, receiver);
    BString text;
    if (!joinTexts(front, behind, text)) {
        ctx->reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    return ctx->makeStringOf(std::move(text), receiver);
}

JSObject* applyIdentical(JSObject* left, JSObject* right, Type leftType, Type rightType, JSContext* ctx,
                         JSObject* receiver) {
    const auto isSimple = [](Type type) {
        return type == Type::string || type == Type::number || type == Type::boolean;
    };
    if (!isSimple(leftType) || !isSimple(rightType)) {
        // Quirk: objects cannot be compared by identity, not even one with itself.
        ctx->reportError(nameText(WellKnownName::wrongObject));
        return nullptr;
    }
    bool identical = false;
    if (leftType == rightType) {
        if (leftType == Type::string) {
            TextOf b(right, ctx, receiver);
            if (!b.isReady()) b.text(ctx, receiver);
            TextOf a(left, ctx, receiver);
            if (!a.isReady()) b.own();
            const BString& first = a.text(ctx, receiver);
            identical = first == b.text(ctx, receiver);
        } else if (leftType == Type::number) {
            JSNumberValue a;
            comparisonNumber(left, a, ctx, receiver);
            JSNumberValue b;
            comparisonNumber(right, b, ctx, receiver);
            identical = a.isFinite() && b.isFinite() && JSNumberValue::compareValues(a.value, b.value) == 0;
        } else {
            identical = left->asBoolean(ctx, receiver) == right->asBoolean(ctx, receiver);
        }
    }
    return ctx->makeBoolean(identical, receiver);
}

enum class Action { add, numeric, compare, identical };

struct BinaryOperator {
    WellKnownName name;
    Action action;
    NumericOperation operation = nullptr;
    // For comparisons: whether the answers -1, 0 and 1 make the operator true.
    bool holds[3] = {false, false, false};
};

// Quirk: "!==" and ">>>" are not in the table, so they give undefined.
constexpr BinaryOperator kOperators[] = {
    {WellKnownName::addOperator, Action::add},
    {WellKnownName::subtractOperator, Action::numeric, &JSNumberValue::subtract},
    {WellKnownName::multiplyOperator, Action::numeric, &JSNumberValue::multiply},
    {WellKnownName::divideOperator, Action::numeric, &JSNumberValue::divide},
    {WellKnownName::remainderOperator, Action::numeric, &JSNumberValue::modulo},
    {WellKnownName::lessOperator, Action::compare, nullptr, {true, false, false}},
    {WellKnownName::greaterOperator, Action::compare, nullptr, {false, false, true}},
    {WellKnownName::lessOrEqualOperator, Action::compare, nullptr, {true, true, false}},
    {WellKnownName::greaterOrEqualOperator, Action::compare, nullptr, {false, true, true}},
    {WellKnownName::equalOperator, Action::compare, nullptr, {false, true, false}},
    {WellKnownName::notEqualOperator, Action::compare, nullptr, {true, false, true}},
    {WellKnownName::identicalOperator, Action::identical},
    {WellKnownName::bitOrOperator, Action::numeric, &JSNumberValue::bitOr},
    {WellKnownName::bitAndOperator, Action::numeric, &JSNumberValue::bitAnd},
    {WellKnownName::bitXorOperator, Action::numeric, &JSNumberValue::bitXor},
    {WellKnownName::shiftLeftOperator, Action::numeric, &JSNumberValue::shiftLeft},
    {WellKnownName::shiftRightOperator, Action::numeric, &JSNumberValue::shiftRight},
};

const BinaryOperator* findOperator(const Name& op) {
    const int32_t wellKnown = op.atom() != nullptr ? op.atom()->wellKnown() : -1;
    for (const BinaryOperator& candidate : kOperators) {
        if (static_cast<int32_t>(candidate.name) == wellKnown) return &candidate;
    }
    return nullptr;
}

// The name with which an object takes the operator over. Only a loaded tree can hold an operator that the
// engine does not know; then the name is put together.
Name overloadOf(const Name& op) {
    const int32_t wellKnown = op.atom() != nullptr ? op.atom()->wellKnown() : -1;
    if (wellKnown >= static_cast<int32_t>(WellKnownName::assignOperator) &&
        wellKnown < static_cast<int32_t>(WellKnownName::assignOperatorOverload)) {
        return Name(nameAtom(overloadName(static_cast<WellKnownName>(wellKnown))));
    }
    BString text(nameText(WellKnownName::operatorPrefix));
    text.append(op.text());
    return Name(text);
}

}  // namespace

int32_t compareOperands(JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver) {
    const Type leftType = left->valueType(ctx, receiver);
    if (ctx->isStopped()) return kComparisonStopped;
    const Type rightType = right->valueType(ctx, receiver);
    if (ctx->isStopped()) return kComparisonStopped;
    switch (wayOfComparison(leftType, rightType)) {
        case Way::truth:
            return compareTruth(left, right, ctx, receiver);
        case Way::numbers:
            return compareNumbers(left, right, ctx, receiver);
        default:
            return compareText(left, right, ctx, receiver);
    }
}

Name operatorOfAssignment(const Name& op) {
    struct Compound {
        WellKnownName assignment;
        WellKnownName op;
    };
    static constexpr Compound kCompounds[] = {
        {WellKnownName::addAssignOperator, WellKnownName::addOperator},
        {WellKnownName::subtractAssignOperator, WellKnownName::subtractOperator},
        {WellKnownName::multiplyAssignOperator, WellKnownName::multiplyOperator},
        {WellKnownName::divideAssignOperator, WellKnownName::divideOperator},
        {WellKnownName::remainderAssignOperator, WellKnownName::remainderOperator},
    };
    const int32_t wellKnown = op.atom() != nullptr ? op.atom()->wellKnown() : -1;
    for (const Compound& compound : kCompounds) {
        if (static_cast<int32_t>(compound.assignment) == wellKnown) return Name(nameAtom(compound.op));
    }
    const BString& text = op.text();
    return Name(text.substr(0, text.length() > 0 ? text.length() - 1 : 0));
}

JSObject* applyBinary(const Name& op, JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver) {
    if (left == nullptr || right == nullptr) return nullptr;
    // Quirk: the right value itself stands where the list of arguments would.
    const Name overload = overloadOf(op);
    if (left->hasMember(overload.text(), ctx, receiver))
        return left->callMember(overload.text(), right, ctx, receiver);
    const Type leftType = left->valueType(ctx, receiver);
    const Type rightType = right->valueType(ctx, receiver);
    // Quirk: an undefined operand makes every operator undefined, so `undefined != 1` is not true either.
    if (leftType == Type::undefined || rightType == Type::undefined) return ctx->makeUndefined(receiver);
    const BinaryOperator* found = findOperator(op);
    if (found == nullptr) return nullptr;
    switch (found->action) {
        case Action::add:
            return applyAdd(left, right, leftType, rightType, ctx, receiver);
        case Action::numeric:
            return applyNumeric(found->operation, left, right, ctx, receiver);
        case Action::identical:
            return applyIdentical(left, right, leftType, rightType, ctx, receiver);
        default: {
            const int32_t order = compareOperands(left, right, ctx, receiver);
            if (order == kComparisonStopped) return nullptr;
            return ctx->makeBoolean(found->holds[order + 1], receiver);
        }
    }
}

}  // namespace quorvelin
