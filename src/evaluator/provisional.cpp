// Provisional: the bodies of `run` and `check` stand here until the tree walk exists.
#include "frontend/nodes.h"

namespace quorvelin {

JSObject* JSMemberCallNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSMemberCallNode::check(JSContext*) { return false; }
JSObject* JSMemberNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSMemberNode::check(JSContext*) { return false; }
JSObject* JSIdentifierNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSIdentifierNode::check(JSContext*) { return false; }
JSObject* JSCallNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSCallNode::check(JSContext*) { return false; }
JSObject* JSIndexNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSIndexNode::check(JSContext*) { return false; }
JSObject* JSCommaNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSCommaNode::check(JSContext*) { return false; }
JSObject* JSBinaryNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSBinaryNode::check(JSContext*) { return false; }
JSObject* JSAssignNode::run(JSContext*, JSObject*) { return nullptr; }
JSObject* JSLogicalOrNode::run(JSContext*, JSObject*) { return nullptr; }
JSObject* JSLogicalAndNode::run(JSContext*, JSObject*) { return nullptr; }
JSObject* JSConditionalNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSConditionalNode::check(JSContext*) { return false; }
JSObject* JSUnaryNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSUnaryNode::check(JSContext*) { return false; }
JSObject* JSPostfixNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSPostfixNode::check(JSContext*) { return false; }
JSObject* JSLiteralNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSLiteralNode::check(JSContext*) { return false; }
JSObject* JSRegExpNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSRegExpNode::check(JSContext*) { return false; }
JSObject* JSArgumentsNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSArgumentsNode::check(JSContext*) { return false; }
JSObject* JSArrayNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSArrayNode::check(JSContext*) { return false; }
JSObject* JSStatementListNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSStatementListNode::check(JSContext*) { return false; }
JSObject* JSVarNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSVarNode::check(JSContext*) { return false; }
JSObject* JSParametersNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSParametersNode::check(JSContext*) { return false; }
JSObject* JSFunctionNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSFunctionNode::check(JSContext*) { return false; }
JSObject* JSForInNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSForInNode::check(JSContext*) { return false; }
JSObject* JSForNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSForNode::check(JSContext*) { return false; }
JSObject* JSIfNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSIfNode::check(JSContext*) { return false; }
JSObject* JSBreakNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSBreakNode::check(JSContext*) { return false; }
JSObject* JSContinueNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSContinueNode::check(JSContext*) { return false; }
JSObject* JSDoNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSDoNode::check(JSContext*) { return false; }
JSObject* JSReturnNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSReturnNode::check(JSContext*) { return false; }
JSObject* JSSwitchNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSSwitchNode::check(JSContext*) { return false; }
JSObject* JSWithNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSWithNode::check(JSContext*) { return false; }
JSObject* JSWhileNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSWhileNode::check(JSContext*) { return false; }
JSObject* JSLabelNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSLabelNode::check(JSContext*) { return false; }
JSObject* JSErrorNode::run(JSContext*, JSObject*) { return nullptr; }
bool JSErrorNode::check(JSContext*) { return false; }

}  // namespace quorvelin
