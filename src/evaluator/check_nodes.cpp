// The walk over a tree before it runs: it declares variables and parameters, in the order in which it meets
// them, and reports the syntax error that stands in place of a tree. False refuses the run.
#include "foundation/native_stack_guard.h"
#include "frontend/nodes.h"
#include "objects/js_context.h"

namespace quorvelin {

namespace {

// A child that the parser found no operand for passes; running it gives null.
bool checkChild(const Owned<JSNode>& child, JSContext* context) {
    if (!child) return true;
    if (nativeStackIsShort()) {
        context->reportError(u"stack overflow");
        return false;
    }
    return child->check(context);
}

template <typename... Children>
bool checkAll(JSContext* context, const Children&... children) {
    return (checkChild(children, context) && ...);
}

}  // namespace

bool JSErrorNode::check(JSContext* context) {
    context->setPosition(line, column);
    context->reportError(message);
    return false;
}

bool JSIdentifierNode::check(JSContext*) {
    return true;
}
bool JSLiteralNode::check(JSContext*) {
    return true;
}
bool JSBreakNode::check(JSContext*) {
    return true;
}
bool JSContinueNode::check(JSContext*) {
    return true;
}
bool JSRegExpNode::check(JSContext*) {
    return true;
}

// Quirk: the statement behind a label is not walked, so a `var` in it is not declared.
bool JSLabelNode::check(JSContext*) {
    return true;
}

bool JSFunctionNode::check(JSContext* context) {
    return context->declareFunction(name.text(), this);
}

bool JSVarNode::check(JSContext* context) {
    for (const VariableRecord* record = variables.first; record != nullptr; record = record->next) {
        if (!context->declareVariable(record->name.text()) || context->stopped()) return false;
        if (record->initialiser && (!checkChild(record->initialiser, context) || context->stopped()))
            return false;
    }
    return true;
}

bool JSParametersNode::check(JSContext* context) {
    for (const ParameterRecord* record = parameters.first; record != nullptr; record = record->next) {
        if (!context->declareParameter(record->name.text()) || context->stopped()) return false;
    }
    return true;
}

bool JSStatementListNode::check(JSContext* context) {
    for (const ListRecord* record = entries.first; record != nullptr; record = record->next) {
        if (record->value && (!checkChild(record->value, context) || context->stopped())) return false;
    }
    return true;
}

namespace {

// Quirk: an entry without a node, which only a loaded tree can hold, refuses the whole run without a word.
bool checkEntries(const RecordList<ListRecord>& entries, JSContext* context) {
    for (const ListRecord* record = entries.first; record != nullptr; record = record->next) {
        if (!record->value || !checkChild(record->value, context) || context->stopped()) return false;
    }
    return true;
}

}  // namespace

bool JSArgumentsNode::check(JSContext* context) {
    return checkEntries(entries, context);
}
bool JSArrayNode::check(JSContext* context) {
    return checkEntries(entries, context);
}

bool JSMemberNode::check(JSContext* context) {
    return checkChild(object, context);
}
bool JSUnaryNode::check(JSContext* context) {
    return checkChild(operand, context);
}
bool JSPostfixNode::check(JSContext* context) {
    return checkChild(operand, context);
}
bool JSMemberCallNode::check(JSContext* context) {
    return checkAll(context, object, arguments);
}
bool JSCallNode::check(JSContext* context) {
    return checkAll(context, callee, arguments);
}
bool JSIndexNode::check(JSContext* context) {
    return checkAll(context, object, index);
}
bool JSCommaNode::check(JSContext* context) {
    return checkAll(context, left, right);
}
bool JSForInNode::check(JSContext* context) {
    return checkAll(context, object, body);
}
bool JSBinaryNode::check(JSContext* context) {
    return checkAll(context, left, right);
}
bool JSConditionalNode::check(JSContext* context) {
    return checkAll(context, condition, thenValue, elseValue);
}

// The order in which the parts are walked is the order in which their names are declared.
bool JSForNode::check(JSContext* context) {
    return checkAll(context, condition, update, init, body);
}
bool JSIfNode::check(JSContext* context) {
    return checkAll(context, condition, thenPart, elsePart);
}
bool JSDoNode::check(JSContext* context) {
    return checkAll(context, body, condition);
}
bool JSWhileNode::check(JSContext* context) {
    return checkAll(context, condition, body);
}
bool JSReturnNode::check(JSContext* context) {
    return checkChild(value, context);
}

// Quirk: the subject of a switch and the object of a with are not walked.
bool JSSwitchNode::check(JSContext* context) {
    if (!discriminant) return false;
    for (const CaseRecord* record = cases.first; record != nullptr; record = record->next) {
        if (!checkAll(context, record->test, record->statements)) return false;
    }
    return true;
}

bool JSWithNode::check(JSContext* context) {
    return object && checkChild(body, context);
}

}  // namespace quorvelin
