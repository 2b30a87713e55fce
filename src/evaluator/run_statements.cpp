// `run` of the statement nodes.
#include "evaluator/peek.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "objects/js_context.h"
#include "objects/number_object.h"
#include "objects/references.h"

namespace quorvelin {

JSObject* JSStatementListNode::run(JSContext* context, JSObject* receiver) {
    Value last;
    for (const ListRecord* record = entries.first; record != nullptr; record = record->next) {
        if (!record->value) continue;
        last.reset();
        last = Value(context->execute(record->value.get(), receiver));
        if (context->stopped()) return nullptr;
    }
    return last.take();
}

JSObject* JSVarNode::run(JSContext* context, JSObject* receiver) {
    for (const VariableRecord* record = variables.first; record != nullptr; record = record->next) {
        if (!record->initialiser) continue;
        const Value value(context->execute(record->initialiser.get(), receiver));
        if (context->stopped()) break;
        const Value stored(context->setMember(record->name.text(), value.get(), context, receiver));
        if (context->stopped()) break;
    }
    return nullptr;
}

// Parameters and functions are for `check`: the text of a function binds no name and gives no value.
JSObject* JSParametersNode::run(JSContext*, JSObject*) {
    return nullptr;
}

JSObject* JSFunctionNode::run(JSContext*, JSObject*) {
    return nullptr;
}

JSObject* JSIfNode::run(JSContext* context, JSObject* receiver) {
    if (!condition) return nullptr;
    bool truth = false;
    if (!peekTruth(condition.get(), context, truth)) {
        const Value value(context->execute(condition.get(), receiver));
        if (context->stopped()) return nullptr;
        truth = value && value->asBoolean(context, receiver);
        if (context->stopped()) return nullptr;
    }
    return context->execute((truth ? thenPart : elsePart).get(), receiver);
}

// ---- Loops ----

JSObject* JSForNode::run(JSContext* context, JSObject* receiver) {
    return context->executeLoop(init.get(), condition.get(), body.get(), nullptr, update.get(), receiver);
}

JSObject* JSWhileNode::run(JSContext* context, JSObject* receiver) {
    return context->executeLoop(nullptr, condition.get(), body.get(), nullptr, nullptr, receiver);
}

JSObject* JSDoNode::run(JSContext* context, JSObject* receiver) {
    return context->executeLoop(nullptr, nullptr, body.get(), condition.get(), nullptr, receiver);
}

JSObject* JSForInNode::run(JSContext* context, JSObject* receiver) {
    const Value variable(new JSMemberRef(context, name));
    if (!variable) {
        context->reportError(nameText(WellKnownName::wrongObject));
        return nullptr;
    }
    const Value collection(context->execute(object.get(), receiver));
    if (context->stopped() || !collection) return nullptr;
    for (int32_t i = 0; i < collection->memberCount(context, receiver); ++i) {
        {
            // Quirk: the variable gets the member itself, not its name or position.
            const Value member(collection->memberAt(i, context, receiver));
            const Value stored(variable->assign(member.get(), context, receiver));
        }
        if (context->stopped()) break;
        { const Value value(context->execute(body.get(), receiver)); }
        if (context->getCompletion() == JSCompletion::breakLoop) {
            if (context->jumpIsMine()) context->setCompletion(JSCompletion::normal);
            break;
        }
        if (context->getCompletion() == JSCompletion::continueLoop) {
            if (!context->jumpIsMine()) break;
            context->setCompletion(JSCompletion::normal);
        }
        if (context->stopped()) break;
    }
    return nullptr;
}

// ---- Jumps and labels ----

JSObject* JSBreakNode::run(JSContext* context, JSObject*) {
    context->doBreak(label.text());
    return nullptr;
}

JSObject* JSContinueNode::run(JSContext* context, JSObject*) {
    context->doContinue(label.text());
    return nullptr;
}

JSObject* JSReturnNode::run(JSContext* context, JSObject* receiver) {
    Value result;
    if (value) {
        result = Value(context->execute(value.get(), receiver));
        if (context->stopped()) return nullptr;
    }
    context->doReturn(result.get(), receiver);
    return nullptr;
}

JSObject* JSLabelNode::run(JSContext* context, JSObject* receiver) {
    return context->executeLabelled(label.text(), statement.get(), receiver);
}

JSObject* JSWithNode::run(JSContext* context, JSObject* receiver) {
    const Value scope(context->execute(object.get(), receiver));
    if (context->stopped() || !scope || !body) return nullptr;
    return context->executeWith(scope.get(), body.get(), receiver);
}

// ---- Switch ----

namespace {

enum class Match { no, yes, failed };

// Does a case label match the subject? The label's type decides how they are compared.
Match matchLabel(JSObject* label, JSObject* subject, JSContext* context, JSObject* receiver) {
    const auto answer = [](bool matches) { return matches ? Match::yes : Match::no; };
    switch (label->valueType(context, receiver)) {
        case JSValueType::undefined:
            return Match::no;
        case JSValueType::string: {
            BString labelText;
            label->asString(labelText, context, receiver);
            BString subjectText;
            subject->asString(subjectText, context, receiver);
            return answer(labelText == subjectText);
        }
        case JSValueType::number: {
            JSNumberValue labelNumber;
            comparisonNumber(label, labelNumber, context, receiver);
            JSNumberValue subjectNumber;
            comparisonNumber(subject, subjectNumber, context, receiver);
            // Quirk: a number that is not finite, on either side, matches.
            return answer(!labelNumber.isFinite() || !subjectNumber.isFinite() ||
                          JSNumberValue::compareValues(labelNumber.value, subjectNumber.value) == 0);
        }
        case JSValueType::boolean: {
            const bool labelTruth = label->asBoolean(context, receiver);
            return answer(labelTruth == subject->asBoolean(context, receiver));
        }
        case JSValueType::object:
        case JSValueType::function:
            context->reportError(nameText(WellKnownName::wrongObject));
            return Match::failed;
        default:
            return Match::yes;  // Quirk: a regular expression as a label always matches.
    }
}

}  // namespace

JSObject* JSSwitchNode::run(JSContext* context, JSObject* receiver) {
    if (!discriminant) return nullptr;
    Value subject(context->execute(discriminant.get(), receiver));
    if (context->stopped() || !subject) return nullptr;
    const CaseRecord* start = nullptr;
    const CaseRecord* defaultCase = nullptr;
    for (const CaseRecord* record = cases.first; record != nullptr && start == nullptr;
         record = record->next) {
        context->setPosition(record->line, record->column);
        if (!record->test) {
            if (defaultCase != nullptr) {
                context->reportError(u"double default");
                return nullptr;
            }
            defaultCase = record;
            continue;
        }
        const Value label(context->execute(record->test.get(), receiver));
        if (context->stopped()) return nullptr;
        if (!label) continue;
        const Match match = matchLabel(label.get(), subject.get(), context, receiver);
        if (match == Match::failed) return nullptr;
        if (match == Match::yes) start = record;
    }
    subject.reset();
    if (start == nullptr) start = defaultCase;
    // The labels behind the first match are not looked at: execution falls through.
    for (const CaseRecord* record = start; record != nullptr; record = record->next) {
        { const Value value(context->execute(record->statements.get(), receiver)); }
        if (context->stopped()) break;
    }
    if (context->getCompletion() == JSCompletion::breakLoop && context->jumpIsMine())
        context->setCompletion(JSCompletion::normal);
    return nullptr;
}

JSObject* JSErrorNode::run(JSContext* context, JSObject*) {
    context->reportError(message);
    return nullptr;
}

}  // namespace quorvelin
