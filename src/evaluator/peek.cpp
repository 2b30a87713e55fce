#include "evaluator/peek.h"

#include "foundation/native_stack_guard.h"
#include "foundation/number_text.h"
#include "frontend/nodes.h"
#include "frontend/token.h"
#include "objects/boolean_object.h"
#include "objects/js_property.h"
#include "objects/number_object.h"
#include "objects/text_instance.h"

namespace quorvelin {

namespace {

// After so many peeks in vain a node stops trying: its operands are of another kind.
constexpr uint8_t kEnoughFailedPeeks = 8;

using EngineClass = JSObject::EngineClass;

// A finite number that the tolerance of comparisons does not take for 0.
bool isTrue(double number) {
    return JSNumberValue::compareValues(number, 0.0) != 0;
}

bool foundNumber(double number, PeekedValue& out) {
    out = {true, number, isTrue(number)};
    return true;
}

bool foundTruth(bool truth, PeekedValue& out) {
    out = {false, 0.0, truth};
    return true;
}

bool peekHeldValue(const JSProperty* cell, PeekedValue& out) {
    double number = 0.0;
    if (peekNumber(cell, number)) return foundNumber(number, out);
    if (cell == nullptr || cell->value() == nullptr || cell->value()->engineClass() != EngineClass::boolean)
        return false;
    return foundTruth(static_cast<const JSBooleanInstance*>(cell->value())->storedValue(), out);
}

bool peekFiniteNumber(JSNode* node, JSContext* context, double& number) {
    PeekedValue value;
    if (node == nullptr || !node->peek(context, value) || !value.isNumber) return false;
    number = value.number;
    return true;
}

// The engine's own object of the class that the node refers to.
JSObject* peekHeldObject(JSNode* node, JSContext* context) {
    const JSProperty* cell = node != nullptr ? node->peekCell(context) : nullptr;
    return cell != nullptr ? cell->value() : nullptr;
}

}  // namespace

bool peekNumber(const JSProperty* cell, double& number) {
    const JSObject* value = cell != nullptr ? cell->value() : nullptr;
    if (value == nullptr || value->engineClass() != EngineClass::number || value->ownMembers().count() != 0)
        return false;
    const JSNumberValue& stored = static_cast<const JSNumberInstance*>(value)->storedValue();
    if (!stored.isFinite()) return false;
    number = stored.value;
    return true;
}

JSObject* storeNumber(JSProperty* cell, double number, JSContext* context, JSObject* receiver) {
    JSObject* held = cell->value();
    // Somebody may be listening for the end of the number that is replaced.
    if (held != nullptr && held->engineClass() == EngineClass::number && held->refCount() == 0 &&
        held->ownMembers().count() == 0 && !held->hasList()) {
        static_cast<JSNumberInstance*>(held)->replaceStored(number);
        return held->shared();
    }
    // The end of the old value, which comes first, may take the cell along.
    const Value keeper = Value::share(static_cast<JSObject*>(cell));
    cell->replaceValue(Value());
    cell->replaceValue(Value(context->makeNumber(JSNumberValue::of(number), receiver)));
    return cell->value() != nullptr ? cell->value()->shared() : nullptr;
}

JSObject* storeFreshValue(JSProperty* cell, Value value) {
    const Value keeper = Value::share(static_cast<JSObject*>(cell));
    cell->replaceValue(Value());
    cell->replaceValue(Value(value->shared()));
    return value.take();
}

bool isFreshValue(const JSObject* value) {
    if (value == nullptr || value->refCount() != 0 || value->ownMembers().count() != 0 || value->hasList())
        return false;
    if (value->engineClass() == EngineClass::string) return true;
    // Quirk: what is not finite becomes another number by being copied.
    return value->engineClass() == EngineClass::number &&
           static_cast<const JSNumberInstance*>(value)->storedValue().isFinite();
}

bool applyToNumbers(const Name& op, double left, double right, PeekedValue& out) {
    const JSNumberValue a = JSNumberValue::of(left);
    const JSNumberValue b = JSNumberValue::of(right);
    JSNumberValue result;
    switch (static_cast<WellKnownName>(op.atom()->wellKnown())) {
        case WellKnownName::addOperator:
            result = a.add(b);
            break;
        case WellKnownName::subtractOperator:
            result = a.subtract(b);
            break;
        case WellKnownName::multiplyOperator:
            result = a.multiply(b);
            break;
        case WellKnownName::divideOperator:
            result = a.divide(b);
            break;
        case WellKnownName::remainderOperator:
            result = a.modulo(b);
            break;
        case WellKnownName::bitOrOperator:
            result = a.bitOr(b);
            break;
        case WellKnownName::bitAndOperator:
            result = a.bitAnd(b);
            break;
        case WellKnownName::bitXorOperator:
            result = a.bitXor(b);
            break;
        case WellKnownName::shiftLeftOperator:
            result = a.shiftLeft(b);
            break;
        case WellKnownName::shiftRightOperator:
            result = a.shiftRight(b);
            break;
        case WellKnownName::lessOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) < 0, out);
        case WellKnownName::greaterOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) > 0, out);
        case WellKnownName::lessOrEqualOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) <= 0, out);
        case WellKnownName::greaterOrEqualOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) >= 0, out);
        case WellKnownName::equalOperator:
        case WellKnownName::identicalOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) == 0, out);
        case WellKnownName::notEqualOperator:
            return foundTruth(JSNumberValue::compareValues(left, right) != 0, out);
        default:
            return false;
    }
    return result.isFinite() && foundNumber(result.value, out);
}

bool peekTruth(JSNode* node, JSContext* context, bool& truth) {
    PeekedValue value;
    if (node == nullptr || !node->peek(context, value)) return false;
    truth = value.truth;
    return true;
}

// ---- Nodes ----

bool JSNode::peek(JSContext*, PeekedValue&) {
    return false;
}

JSProperty* JSNode::peekCell(JSContext*) {
    return nullptr;
}

JSProperty* JSIdentifierNode::peekCell(JSContext* context) {
    return context->peekCell(name.atom(), placeHint);
}

bool JSIdentifierNode::peek(JSContext* context, PeekedValue& out) {
    return peekHeldValue(peekCell(context), out);
}

JSProperty* JSMemberNode::peekCell(JSContext* context) {
    const JSObject* owner = peekHeldObject(object.get(), context);
    if (owner == nullptr) return nullptr;
    const EngineClass owners = owner->engineClass();
    if (owners != EngineClass::plainObject && owners != EngineClass::array) return nullptr;
    return owner->ownMembers().peek(name.atom(), placeHint);
}

bool JSMemberNode::peek(JSContext* context, PeekedValue& out) {
    if (name.atom() == nameAtom(WellKnownName::length)) {
        const JSObject* owner = peekHeldObject(object.get(), context);
        if (owner == nullptr || owner->ownMembers().hasNames()) return false;
        if (owner->engineClass() == EngineClass::array) return foundNumber(owner->ownMembers().count(), out);
        if (owner->engineClass() != EngineClass::string) return false;
        return foundNumber(static_cast<const JSTextInstance*>(owner)->value().length(), out);
    }
    return peekHeldValue(peekCell(context), out);
}

JSProperty* JSIndexNode::peekCell(JSContext* context) {
    const JSObject* owner = peekHeldObject(object.get(), context);
    if (owner == nullptr) return nullptr;
    const EngineClass owners = owner->engineClass();
    if (owners != EngineClass::plainObject && owners != EngineClass::array) return nullptr;
    double position = 0.0;
    if (!peekFiniteNumber(index.get(), context, position)) return nullptr;
    const int32_t place = truncateToInt32(position);
    return owner->ownMembers().contains(place) ? owner->ownMembers().at(place) : nullptr;
}

bool JSIndexNode::peek(JSContext* context, PeekedValue& out) {
    return peekHeldValue(peekCell(context), out);
}

void JSLiteralNode::readNumber() {
    if (numberKind >= 0) return;
    const JSNumberValue read = JSNumberValue::fromText(text, 10);
    number = read.value;
    numberKind = static_cast<int32_t>(read.kind);
}

bool JSLiteralNode::peek(JSContext* context, PeekedValue& out) {
    // A context of a host's own is asked to make every value.
    if (!context->isEnginesAlone()) return false;
    switch (tokenKind) {
        case JSTT_ZERO:
            return foundNumber(0.0, out);
        case JSTT_INT:
        case JSTT_FLOAT:
        case JSTT_HEXINT:
        case JSTT_OCTALINT:
            readNumber();
            return numberKind == static_cast<int32_t>(JSNumberKind::finite) && foundNumber(number, out);
        case JSTT_BOOL:
            return foundTruth(text == nameText(WellKnownName::trueWord), out);
        default:
            return false;
    }
}

bool JSBinaryNode::peek(JSContext* context, PeekedValue& out) {
    if (failedPeeks >= kEnoughFailedPeeks || nativeStackIsShort()) return false;
    double a = 0.0;
    double b = 0.0;
    if (peekFiniteNumber(left.get(), context, a) && peekFiniteNumber(right.get(), context, b) &&
        applyToNumbers(op, a, b, out)) {
        failedPeeks = 0;
        return true;
    }
    ++failedPeeks;
    return false;
}

// An assignment changes something.
bool JSAssignNode::peek(JSContext*, PeekedValue&) {
    return false;
}

bool JSLogicalOrNode::peek(JSContext* context, PeekedValue& out) {
    bool truth = false;
    if (nativeStackIsShort() || !peekTruth(left.get(), context, truth)) return false;
    if (!truth && !peekTruth(right.get(), context, truth)) return false;
    return foundTruth(truth, out);
}

bool JSLogicalAndNode::peek(JSContext* context, PeekedValue& out) {
    bool truth = false;
    if (nativeStackIsShort() || !peekTruth(left.get(), context, truth)) return false;
    if (truth && !peekTruth(right.get(), context, truth)) return false;
    return foundTruth(truth, out);
}

bool JSConditionalNode::peek(JSContext* context, PeekedValue& out) {
    bool truth = false;
    if (nativeStackIsShort() || !peekTruth(condition.get(), context, truth)) return false;
    JSNode* chosen = (truth ? thenValue : elseValue).get();
    return chosen != nullptr && chosen->peek(context, out);
}

bool JSUnaryNode::peek(JSContext* context, PeekedValue& out) {
    const Atom* which = op.atom();
    if (which == nameAtom(WellKnownName::logicalNotOperator)) {
        bool truth = false;
        return !nativeStackIsShort() && peekTruth(operand.get(), context, truth) && foundTruth(!truth, out);
    }
    double number = 0.0;
    if (which == nameAtom(WellKnownName::subtractOperator)) {
        return !nativeStackIsShort() && peekFiniteNumber(operand.get(), context, number) &&
               foundNumber(-number, out);
    }
    if (which == nameAtom(WellKnownName::complementOperator)) {
        return !nativeStackIsShort() && peekFiniteNumber(operand.get(), context, number) &&
               foundNumber(~truncateToInt32(number), out);
    }
    return false;
}

}  // namespace quorvelin
