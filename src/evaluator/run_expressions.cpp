// `run` of the expression nodes.
//
// Every child runs through the context's `execute`, and after each one the node asks whether the walk has
// stopped; if so it lets go of what it holds and gives null.
#include "evaluator/operators.h"
#include "evaluator/peek.h"
#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "frontend/token.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/number_object.h"
#include "objects/references.h"

namespace quorvelin {

namespace {

JSObject* wrongObject(JSContext* context) {
    context->reportError(nameText(WellKnownName::wrongObject));
    return nullptr;
}

JSObject* wrongLvalue(JSContext* context) {
    context->reportError(nameText(WellKnownName::wrongLvalue));
    return nullptr;
}

JSObject* noIndex(JSContext* context) {
    context->reportError(u"empty array's coordinate");
    return nullptr;
}

JSObject* orOutOfMemory(JSContext* context, JSObject* made) {
    if (made == nullptr) context->reportError(nameText(WellKnownName::outOfMemory));
    return made;
}

}  // namespace

// ---- Names, members, calls ----

// Nothing is looked up yet, so reading a name never fails.
JSObject* JSIdentifierNode::run(JSContext* context, JSObject*) {
    return orOutOfMemory(context, new JSMemberRef(context, name));
}

JSObject* JSMemberNode::run(JSContext* context, JSObject* receiver) {
    const Value value(context->execute(object.get(), receiver));
    if (context->stopped()) return nullptr;
    if (!value) return wrongObject(context);
    return orOutOfMemory(context, new JSMemberRef(value.get(), name));
}

JSObject* JSIndexNode::run(JSContext* context, JSObject* receiver) {
    const Value value(context->execute(object.get(), receiver));
    if (context->stopped()) return nullptr;
    if (!value) return wrongObject(context);
    const Value position(context->execute(index.get(), receiver));
    if (context->stopped()) return nullptr;
    if (!position) return noIndex(context);
    switch (position->valueType(context, receiver)) {
        case JSValueType::string: {
            BString key;
            position->asString(key, context, receiver);
            return orOutOfMemory(context, new JSMemberRef(value.get(), Name(key)));
        }
        case JSValueType::number:
        case JSValueType::boolean: {
            JSNumberValue key;
            position->asNumber(key, context, receiver);
            const uint32_t place = static_cast<uint32_t>(truncateToInt32(key.value));
            return orOutOfMemory(context, new JSIndexRef(value.get(), place));
        }
        default:
            return noIndex(context);
    }
}

JSObject* JSMemberCallNode::run(JSContext* context, JSObject* receiver) {
    const Value value(context->execute(object.get(), receiver));
    if (context->stopped()) return nullptr;
    if (!value) return wrongObject(context);
    const Value list(context->execute(arguments.get(), receiver));
    if (context->stopped()) return nullptr;
    return value->callMember(name.text(), list.get(), context, receiver);
}

JSObject* JSCallNode::run(JSContext* context, JSObject* receiver) {
    if (callee && callee->kind == kIdentifierKind && context->isEnginesAlone()) {
        // What the reference would do that running the name makes.
        const Value list(context->execute(arguments.get(), nullptr));
        if (context->stopped()) return nullptr;
        const Name& name = static_cast<const JSIdentifierNode&>(*callee).name;
        return context->callMember(name.text(), list.get(), context, receiver);
    }
    const Value function(context->execute(callee.get(), nullptr));
    if (context->stopped()) return nullptr;
    const Value list(context->execute(arguments.get(), nullptr));
    if (context->stopped()) return nullptr;
    if (!function) return wrongObject(context);
    // The one place where the cell of a `new` reaches what it constructs.
    return function->call(list.get(), context, receiver);
}

// ---- Operators ----

JSObject* JSCommaNode::run(JSContext* context, JSObject* receiver) {
    { const Value dropped(context->execute(left.get(), receiver)); }
    if (context->stopped()) return nullptr;
    Value value(context->execute(right.get(), receiver));
    return context->stopped() ? nullptr : value.take();
}

JSObject* JSBinaryNode::run(JSContext* context, JSObject* receiver) {
    PeekedValue peeked;
    if (peek(context, peeked)) {
        return peeked.isNumber ? context->makeNumber(JSNumberValue::of(peeked.number), receiver)
                               : context->makeBoolean(peeked.truth, receiver);
    }
    const Value first(context->execute(left.get(), receiver));
    if (context->stopped()) return nullptr;
    const Value second(context->execute(right.get(), receiver));
    if (context->stopped()) return nullptr;
    return applyBinary(op, first.get(), second.get(), context, receiver);
}

namespace {

// The cell to store a number into and the number, where both can be had by peeking.
JSProperty* peekAssignment(const JSAssignNode& node, JSContext* context, double& number) {
    if (!node.right || !node.left) return nullptr;
    JSProperty* target = node.left->peekCell(context);
    PeekedValue value;
    if (target == nullptr || !node.right->peek(context, value) || !value.isNumber) return nullptr;
    number = value.number;
    if (node.op.atom() == nameAtom(WellKnownName::assignOperator)) {
        // Quirk: assigning clears the cell before it reads the value, so a cell assigned to itself becomes
        // undefined. A right side that is a reference is left to the steps that do so; what computes a number
        // has read it before.
        return node.right->kind == kBinaryKind || node.right->kind == kLiteralKind ? target : nullptr;
    }
    double before = 0.0;
    if (!peekNumber(target, before) ||
        !applyToNumbers(operatorOfAssignment(node.op), before, number, value)) {
        return nullptr;
    }
    number = value.number;
    return value.isNumber ? target : nullptr;
}

}  // namespace

JSObject* JSAssignNode::run(JSContext* context, JSObject* receiver) {
    double number = 0.0;
    if (JSProperty* cell = peekAssignment(*this, context, number))
        return storeNumber(cell, number, context, receiver);
    const Value target(context->execute(left.get(), receiver));
    if (context->stopped()) return nullptr;
    if (!target) return wrongLvalue(context);
    Value value(context->execute(right.get(), receiver));
    if (context->stopped()) return nullptr;
    if (op.atom() != nameAtom(WellKnownName::assignOperator)) {
        value = Value(applyBinary(operatorOfAssignment(op), target.get(), value.get(), context, receiver));
    }
    if (left->kind == kIdentifierKind && isFreshValue(value.get())) {
        // What was computed just now stands for the copy that a variable takes of it.
        if (JSProperty* cell = left->peekCell(context)) return storeFreshValue(cell, std::move(value));
    }
    return target->assign(value.get(), context, receiver);
}

namespace {

// The truth of an operand; that of an absent value is false.
bool truthOf(const Value& value, JSContext* context, JSObject* receiver) {
    return value && value->asBoolean(context, receiver);
}

// Both logical operators: the left side decides if it has the deciding truth value, else the right side is
// the answer. Quirk: the operands themselves are never the result, only a new boolean.
JSObject* runLogical(JSBinaryNode& node, bool deciding, JSContext* context, JSObject* receiver) {
    bool peeked = false;
    if (peekTruth(&node, context, peeked)) return context->makeBoolean(peeked, receiver);
    {
        const Value first(context->execute(node.left.get(), receiver));
        if (context->stopped()) return nullptr;
        if (truthOf(first, context, receiver) == deciding) return context->makeBoolean(deciding, receiver);
    }
    const Value second(context->execute(node.right.get(), receiver));
    if (context->stopped()) return nullptr;
    return context->makeBoolean(truthOf(second, context, receiver), receiver);
}

}  // namespace

JSObject* JSLogicalOrNode::run(JSContext* context, JSObject* receiver) {
    return runLogical(*this, true, context, receiver);
}

JSObject* JSLogicalAndNode::run(JSContext* context, JSObject* receiver) {
    return runLogical(*this, false, context, receiver);
}

JSObject* JSConditionalNode::run(JSContext* context, JSObject* receiver) {
    bool truth = false;
    if (!peekTruth(condition.get(), context, truth)) {
        const Value decision(context->execute(condition.get(), receiver));
        if (context->stopped()) return nullptr;
        truth = truthOf(decision, context, receiver);
    }
    Value value(context->execute((truth ? thenValue : elseValue).get(), receiver));
    return context->stopped() ? nullptr : value.take();
}

namespace {

// Quirk: the word for no value at all is "null"; that of the null object is "object", and "undefined" is the
// word for a name or member that does not exist.
JSObject* typeWord(const Value& value, JSContext* context, JSObject* receiver) {
    WellKnownName word = WellKnownName::nullWord;
    if (value) {
        switch (value->valueType(context, receiver)) {
            case JSValueType::string:
                word = WellKnownName::stringWord;
                break;
            case JSValueType::number:
                word = WellKnownName::numberWord;
                break;
            case JSValueType::boolean:
                word = WellKnownName::booleanWord;
                break;
            case JSValueType::object:
                word = WellKnownName::objectWord;
                break;
            case JSValueType::function:
                word = WellKnownName::functionWord;
                break;
            case JSValueType::expression:
                word = WellKnownName::expressionWord;
                break;
            default:
                word = WellKnownName::undefined;
                break;
        }
    }
    return context->makeString(nameText(word), receiver);
}

// The operand of "-" and "~". Quirk: it must be a number; anything else, a text of digits included, is
// undefined without a word.
bool numberOperand(const Value& value, JSNumberValue& number, JSContext* context, JSObject* receiver) {
    if (!value || value->valueType(context, receiver) != JSValueType::number) return false;
    comparisonNumber(value.get(), number, context, receiver);
    return true;
}

// Steps the number in the cell of the operand, where that can be had by peeking.
bool peekStep(JSNode* operand, const Name& op, JSContext* context, JSProperty*& cell, double& before,
              double& after) {
    cell = operand != nullptr ? operand->peekCell(context) : nullptr;
    PeekedValue stepped;
    if (!peekNumber(cell, before)) return false;
    const bool up = op.atom() == nameAtom(WellKnownName::incrementOperator);
    const WellKnownName step = up ? WellKnownName::addOperator : WellKnownName::subtractOperator;
    if (!applyToNumbers(Name(nameAtom(step)), before, 1.0, stepped)) return false;
    after = stepped.number;
    return true;
}

// The old and the new number of an operand of "++" or "--". False, with a message, when it is none.
bool stepOperand(const Name& op, const Value& operand, JSNumberValue& before, JSNumberValue& after,
                 JSContext* context, JSObject* receiver) {
    if (!operand) {
        wrongLvalue(context);
        return false;
    }
    if (operand->valueType(context, receiver) != JSValueType::number) {
        wrongObject(context);
        return false;
    }
    operand->asNumber(before, context, receiver);
    const JSNumberValue one = JSNumberValue::of(1.0);
    after = op.atom() == nameAtom(WellKnownName::incrementOperator) ? before.add(one) : before.subtract(one);
    return true;
}

}  // namespace

JSObject* JSUnaryNode::run(JSContext* context, JSObject* receiver) {
    const int32_t wellKnown = op.atom() != nullptr ? op.atom()->wellKnown() : -1;
    switch (static_cast<WellKnownName>(wellKnown)) {
        case WellKnownName::newWordOperator:
            return context->executeNew(operand.get());
        case WellKnownName::deleteWordOperator:
            return context->executeDelete(operand.get(), receiver);
        case WellKnownName::voidWordOperator:
            return nullptr;  // Quirk: the operand is not evaluated at all.
        case WellKnownName::incrementOperator:
        case WellKnownName::decrementOperator: {
            JSProperty* cell = nullptr;
            double before = 0.0;
            double after = 0.0;
            if (peekStep(operand.get(), op, context, cell, before, after)) {
                return storeNumber(cell, after, context, receiver);
            }
            break;
        }
        default: {
            PeekedValue peeked;
            if (peek(context, peeked)) {
                return peeked.isNumber ? context->makeNumber(JSNumberValue::of(peeked.number), receiver)
                                       : context->makeBoolean(peeked.truth, receiver);
            }
            break;
        }
    }
    const Value value(context->execute(operand.get(), receiver));
    if (context->stopped()) return nullptr;
    switch (static_cast<WellKnownName>(wellKnown)) {
        case WellKnownName::typeofWordOperator:
            return typeWord(value, context, receiver);
        case WellKnownName::incrementOperator:
        case WellKnownName::decrementOperator: {
            JSNumberValue before;
            JSNumberValue after;
            if (!stepOperand(op, value, before, after, context, receiver)) return nullptr;
            const Value number(context->makeNumber(after, receiver));
            return value->assign(number.get(), context, receiver);
        }
        case WellKnownName::logicalNotOperator: {
            return context->makeBoolean(!truthOf(value, context, receiver), receiver);
        }
        case WellKnownName::complementOperator: {
            JSNumberValue number;
            if (!numberOperand(value, number, context, receiver)) return nullptr;
            return context->makeNumber(number.complement(), receiver);
        }
        case WellKnownName::subtractOperator: {
            JSNumberValue number;
            if (!numberOperand(value, number, context, receiver)) return nullptr;
            return context->makeNumber(number.negate(), receiver);
        }
        default:
            // Quirk: any other operator, unary "+" among them, evaluates its operand and gives undefined.
            return nullptr;
    }
}

JSObject* JSPostfixNode::run(JSContext* context, JSObject* receiver) {
    JSProperty* cell = nullptr;
    double numberBefore = 0.0;
    double numberAfter = 0.0;
    if (peekStep(operand.get(), op, context, cell, numberBefore, numberAfter)) {
        const Value stored(storeNumber(cell, numberAfter, context, receiver));
        return context->makeNumber(JSNumberValue::of(numberBefore), receiver);
    }
    const Value value(context->execute(operand.get(), receiver));
    if (context->stopped()) return nullptr;
    JSNumberValue before;
    JSNumberValue after;
    if (!stepOperand(op, value, before, after, context, receiver)) return nullptr;
    {
        const Value number(context->makeNumber(after, receiver));
        const Value stored(value->assign(number.get(), context, receiver));
    }
    return context->makeNumber(before, receiver);
}

// ---- Literals ----

JSObject* JSLiteralNode::run(JSContext* context, JSObject* receiver) {
    switch (tokenKind) {
        case JSTT_CHAR:
        case JSTT_STRING:
            return context->makeString(text, receiver);
        case JSTT_INT:
        case JSTT_FLOAT:
        case JSTT_HEXINT:
        case JSTT_OCTALINT:
            // Quirk: the radix is 10 whatever the base of the literal, so 017 is 17.
            if (!context->isEnginesAlone()) return context->makeNumberText(text, 10, receiver);
            // The digits are read once.
            readNumber();
            return context->makeNumber({number, static_cast<JSNumberKind>(numberKind)}, receiver);
        case JSTT_ZERO:
            return context->makeNumber(JSNumberValue::of(0.0), receiver);
        case JSTT_BOOL:
            return context->makeBoolean(text == nameText(WellKnownName::trueWord), receiver);
        case JSTT_NULL:
            return context->makeNull(receiver);
        default:
            return nullptr;
    }
}

JSObject* JSRegExpNode::run(JSContext* context, JSObject* receiver) {
    return context->makeRegExp(pattern, receiver);
}

// ---- Lists ----

namespace {

Value runEntry(JSNode* node, JSContext* context, JSObject* receiver) {
    PeekedValue peeked;
    if (context->isEnginesAlone() && node->peek(context, peeked) && peeked.isNumber)
        return Value(context->makeNumber(JSNumberValue::of(peeked.number), receiver));
    return Value(context->execute(node, receiver));
}

// Puts a value into the new array. One that nobody else holds goes in as it is instead of being copied.
void storeEntry(JSObject& array, int32_t position, Value value, JSContext* context, JSObject* receiver) {
    if (array.engineClass() == JSObject::EngineClass::array && isFreshValue(value.get())) {
        const Value emptyCell(array.setItem(position, nullptr, context, receiver));
        const MemberStore& cells = array.ownMembers();
        JSProperty* const cell = cells.contains(position) ? cells.at(position) : nullptr;
        if (cell != nullptr) cell->replaceValue(std::move(value));
        return;
    }
    const Value stored(array.setItem(position, value.get(), context, receiver));
}

// The values of a list as a new array. An entry without a node leaves a hole.
JSObject* runEntries(const JSEntryListNode& node, JSContext* context, JSObject* receiver) {
    Value array(context->makeArray(receiver));
    if (!array) return nullptr;
    int32_t position = 0;
    for (const ListRecord* record = node.entries.first; record != nullptr;
         record = record->next, ++position) {
        if (!record->value) continue;
        Value value = runEntry(record->value.get(), context, receiver);
        if (context->stopped()) return nullptr;
        storeEntry(*array, position, std::move(value), context, receiver);
    }
    return array.take();
}

}  // namespace

JSObject* JSArgumentsNode::run(JSContext* context, JSObject* receiver) {
    return runEntries(*this, context, receiver);
}

JSObject* JSArrayNode::run(JSContext* context, JSObject* receiver) {
    return runEntries(*this, context, receiver);
}

}  // namespace quorvelin
