// The node classes. Every class has two constructors: the parser's, with position and fields, and an empty
// one for the reader of saved trees, which then calls `load`. A question mark behind a field in the comments
// means that it may be absent in a tree that the parser built; in a loaded tree any child may be absent.
//
// `run` and `check` are the evaluator's; the other operations work over the table in node_shapes.cpp.
#pragma once

#include "frontend/node.h"

namespace quorvelin {

// The operations that every class declares.
#define QUORVELIN_NODE_OPERATIONS                                   \
    JSObject* run(JSContext* context, JSObject* receiver) override; \
    bool check(JSContext* context) override;                        \
    const NodeShape& shape() const override

// ---- Expressions ----

// object.name(arguments)
class JSMemberCallNode final : public JSNode {
  public:
    JSMemberCallNode() : JSNode(kMemberCallKind) {}
    JSMemberCallNode(int32_t nodeLine, int32_t nodeColumn, JSNode* owner, JSNode* argumentList,
                     const Name& member)
        : JSNode(kMemberCallKind, nodeLine, nodeColumn),
          object(owner),
          arguments(argumentList),
          name(member) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> object;
    Owned<JSNode> arguments;
    Name name;
};

// object.name
class JSMemberNode final : public JSNode {
  public:
    JSMemberNode() : JSNode(kMemberKind) {}
    JSMemberNode(int32_t nodeLine, int32_t nodeColumn, JSNode* owner, const Name& member)
        : JSNode(kMemberKind, nodeLine, nodeColumn), object(owner), name(member) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSProperty* peekCell(JSContext* context) override;

    Owned<JSNode> object;
    Name name;

    // Where in its store the cell of this name was found last.
    int32_t placeHint = 0;
};

class JSIdentifierNode final : public JSNode {
  public:
    JSIdentifierNode() : JSNode(kIdentifierKind) {}
    JSIdentifierNode(int32_t nodeLine, int32_t nodeColumn, const Name& identifier)
        : JSNode(kIdentifierKind, nodeLine, nodeColumn), name(identifier) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSProperty* peekCell(JSContext* context) override;

    Name name;

    // Where in its store the cell of this name was found last: the place to look at first.
    int32_t placeHint = 0;
};

// callee(arguments)
class JSCallNode final : public JSNode {
  public:
    JSCallNode() : JSNode(kCallKind) {}
    JSCallNode(int32_t nodeLine, int32_t nodeColumn, JSNode* function, JSNode* argumentList)
        : JSNode(kCallKind, nodeLine, nodeColumn), callee(function), arguments(argumentList) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> callee;
    Owned<JSNode> arguments;
};

// object[index]
class JSIndexNode final : public JSNode {
  public:
    JSIndexNode() : JSNode(kIndexKind) {}
    JSIndexNode(int32_t nodeLine, int32_t nodeColumn, JSNode* owner, JSNode* position)
        : JSNode(kIndexKind, nodeLine, nodeColumn), object(owner), index(position) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSProperty* peekCell(JSContext* context) override;

    Owned<JSNode> object;
    Owned<JSNode> index;
};

// left, right
class JSCommaNode final : public JSNode {
  public:
    JSCommaNode() : JSNode(kCommaKind) {}
    JSCommaNode(int32_t nodeLine, int32_t nodeColumn, JSNode* first, JSNode* second)
        : JSNode(kCommaKind, nodeLine, nodeColumn), left(first), right(second) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> left;
    Owned<JSNode> right;  // ?
};

// Any binary operator; the classes behind it differ in `run` and their tag.
class JSBinaryNode : public JSNode {
  public:
    JSBinaryNode() : JSNode(kBinaryKind) {}
    JSBinaryNode(int32_t nodeLine, int32_t nodeColumn, const Name& operatorText, JSNode* first,
                 JSNode* second)
        : JSNode(kBinaryKind, nodeLine, nodeColumn), op(operatorText), left(first), right(second) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;

    Name op;
    Owned<JSNode> left;   // ?
    Owned<JSNode> right;  // ?

    // How often in a row a peek failed here; after a few, no more are tried.
    uint8_t failedPeeks = 0;
};

// Assignment and compound assignment; `op` is the whole operator, such as "+=".
class JSAssignNode final : public JSBinaryNode {
  public:
    using JSBinaryNode::JSBinaryNode;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSObject* run(JSContext* context, JSObject* receiver) override;
    const NodeShape& shape() const override;
};

class JSLogicalOrNode final : public JSBinaryNode {
  public:
    using JSBinaryNode::JSBinaryNode;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSObject* run(JSContext* context, JSObject* receiver) override;
    const NodeShape& shape() const override;
};

class JSLogicalAndNode final : public JSBinaryNode {
  public:
    using JSBinaryNode::JSBinaryNode;
    bool peek(JSContext* context, PeekedValue& out) override;
    JSObject* run(JSContext* context, JSObject* receiver) override;
    const NodeShape& shape() const override;
};

// condition ? thenValue : elseValue
class JSConditionalNode final : public JSNode {
  public:
    JSConditionalNode() : JSNode(kConditionalKind) {}
    JSConditionalNode(int32_t nodeLine, int32_t nodeColumn, JSNode* test, JSNode* first, JSNode* second)
        : JSNode(kConditionalKind, nodeLine, nodeColumn),
          condition(test),
          thenValue(first),
          elseValue(second) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;

    Owned<JSNode> condition;  // ?
    Owned<JSNode> thenValue;  // ?
    Owned<JSNode> elseValue;  // ?
};

// A prefix operator, words among them.
class JSUnaryNode final : public JSNode {
  public:
    JSUnaryNode() : JSNode(kUnaryKind) {}
    JSUnaryNode(int32_t nodeLine, int32_t nodeColumn, const Name& operatorText, JSNode* value)
        : JSNode(kUnaryKind, nodeLine, nodeColumn), op(operatorText), operand(value) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;

    Name op;
    Owned<JSNode> operand;  // ?
};

// operand++ or operand--
class JSPostfixNode final : public JSNode {
  public:
    JSPostfixNode() : JSNode(kPostfixKind) {}
    JSPostfixNode(int32_t nodeLine, int32_t nodeColumn, const Name& operatorText, JSNode* value)
        : JSNode(kPostfixKind, nodeLine, nodeColumn), op(operatorText), operand(value) {}
    QUORVELIN_NODE_OPERATIONS;

    Name op;
    Owned<JSNode> operand;  // ?
};

// A string, number, boolean or null; `tokenKind` tells which (token.h).
class JSLiteralNode final : public JSNode {
  public:
    JSLiteralNode() : JSNode(kLiteralKind) {}
    JSLiteralNode(int32_t nodeLine, int32_t nodeColumn, int32_t literalKind, const BString& literalText)
        : JSNode(kLiteralKind, nodeLine, nodeColumn), tokenKind(literalKind), text(literalText) {}
    QUORVELIN_NODE_OPERATIONS;
    bool peek(JSContext* context, PeekedValue& out) override;

    int32_t tokenKind = 0;
    BString text;

    // The number that the text stands for, once the evaluator has read it; kind -1 before.
    double number = 0.0;
    int32_t numberKind = -1;

  private:
    void readNumber();
};

class JSRegExpNode final : public JSNode {
  public:
    JSRegExpNode() : JSNode(kRegExpKind) {}
    JSRegExpNode(int32_t nodeLine, int32_t nodeColumn, const BString& patternText)
        : JSNode(kRegExpKind, nodeLine, nodeColumn), pattern(patternText) {}
    QUORVELIN_NODE_OPERATIONS;

    BString pattern;
};

// The classes whose one field is a list of entries.
class JSEntryListNode : public JSNode {
  public:
    // Takes the reference over on success. False without memory.
    bool append(JSNode* value);

    RecordList<ListRecord> entries;

  protected:
    using JSNode::JSNode;
};

class JSArgumentsNode final : public JSEntryListNode {
  public:
    JSArgumentsNode() : JSEntryListNode(kArgumentsKind) {}
    JSArgumentsNode(int32_t nodeLine, int32_t nodeColumn)
        : JSEntryListNode(kArgumentsKind, nodeLine, nodeColumn) {}
    QUORVELIN_NODE_OPERATIONS;
};

class JSArrayNode final : public JSEntryListNode {
  public:
    JSArrayNode() : JSEntryListNode(kArrayKind) {}
    JSArrayNode(int32_t nodeLine, int32_t nodeColumn) : JSEntryListNode(kArrayKind, nodeLine, nodeColumn) {}
    QUORVELIN_NODE_OPERATIONS;
};

// ---- Statements ----

class JSStatementListNode final : public JSEntryListNode {
  public:
    JSStatementListNode() : JSEntryListNode(kStatementListKind) {}
    JSStatementListNode(int32_t nodeLine, int32_t nodeColumn)
        : JSEntryListNode(kStatementListKind, nodeLine, nodeColumn) {}
    QUORVELIN_NODE_OPERATIONS;
};

class JSVarNode final : public JSNode {
  public:
    JSVarNode() : JSNode(kVarKind) {}
    JSVarNode(int32_t nodeLine, int32_t nodeColumn) : JSNode(kVarKind, nodeLine, nodeColumn) {}
    QUORVELIN_NODE_OPERATIONS;

    RecordList<VariableRecord> variables;
};

class JSParametersNode final : public JSNode {
  public:
    // The class's number in saved trees, which tells it from a `var` statement: both have the same kind.
    static constexpr int32_t kTag = 35;

    JSParametersNode() : JSNode(kVarKind) {}
    JSParametersNode(int32_t nodeLine, int32_t nodeColumn) : JSNode(kVarKind, nodeLine, nodeColumn) {}
    QUORVELIN_NODE_OPERATIONS;

    // False without memory.
    bool append(const Name& name);

    RecordList<ParameterRecord> parameters;
};

// The layer that holds the name of a function.
class JSNamedNode : public JSNode {
  public:
    Name name;

  protected:
    JSNamedNode(int32_t nodeKind, int32_t nodeLine, int32_t nodeColumn, const Name& functionName)
        : JSNode(nodeKind, nodeLine, nodeColumn), name(functionName) {}
};

// function name(parameters) { body }
class JSFunctionNode final : public JSNamedNode {
  public:
    JSFunctionNode() : JSNamedNode(kFunctionKind, 0, 0, Name()) {}
    JSFunctionNode(int32_t nodeLine, int32_t nodeColumn, const Name& functionName, JSNode* parameterList,
                   JSNode* statements)
        : JSNamedNode(kFunctionKind, nodeLine, nodeColumn, functionName),
          parameters(parameterList),
          body(statements) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> parameters;  // ? a JSParametersNode, unless a loaded tree is damaged
    Owned<JSNode> body;        // ?
};

// for (name in object) body. Only loaded trees hold this node: no source text leads to it.
class JSForInNode final : public JSNode {
  public:
    JSForInNode() : JSNode(kForInKind) {}
    JSForInNode(int32_t nodeLine, int32_t nodeColumn, const Name& variable, JSNode* collection,
                JSNode* statement)
        : JSNode(kForInKind, nodeLine, nodeColumn), object(collection), body(statement), name(variable) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> object;
    Owned<JSNode> body;  // ?
    Name name;
};

// for (init; condition; update) body
class JSForNode final : public JSNode {
  public:
    JSForNode() : JSNode(kForKind) {}
    JSForNode(int32_t nodeLine, int32_t nodeColumn, JSNode* start, JSNode* test, JSNode* step,
              JSNode* statement)
        : JSNode(kForKind, nodeLine, nodeColumn),
          init(start),
          condition(test),
          update(step),
          body(statement) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> init;       // ?
    Owned<JSNode> condition;  // ?
    Owned<JSNode> update;     // ?
    Owned<JSNode> body;       // ?
};

class JSIfNode final : public JSNode {
  public:
    JSIfNode() : JSNode(kIfKind) {}
    JSIfNode(int32_t nodeLine, int32_t nodeColumn, JSNode* test, JSNode* first, JSNode* second)
        : JSNode(kIfKind, nodeLine, nodeColumn), condition(test), thenPart(first), elsePart(second) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> condition;  // ?
    Owned<JSNode> thenPart;   // ?
    Owned<JSNode> elsePart;   // ?
};

class JSBreakNode final : public JSNode {
  public:
    JSBreakNode() : JSNode(kBreakKind) {}
    JSBreakNode(int32_t nodeLine, int32_t nodeColumn, const Name& target)
        : JSNode(kBreakKind, nodeLine, nodeColumn), label(target) {}
    QUORVELIN_NODE_OPERATIONS;

    Name label;  // empty for none
};

class JSContinueNode final : public JSNode {
  public:
    JSContinueNode() : JSNode(kContinueKind) {}
    JSContinueNode(int32_t nodeLine, int32_t nodeColumn, const Name& target)
        : JSNode(kContinueKind, nodeLine, nodeColumn), label(target) {}
    QUORVELIN_NODE_OPERATIONS;

    Name label;  // empty for none
};

// do body while (condition)
class JSDoNode final : public JSNode {
  public:
    JSDoNode() : JSNode(kDoKind) {}
    JSDoNode(int32_t nodeLine, int32_t nodeColumn, JSNode* statement, JSNode* test)
        : JSNode(kDoKind, nodeLine, nodeColumn), body(statement), condition(test) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> body;       // ?
    Owned<JSNode> condition;  // ?
};

class JSReturnNode final : public JSNode {
  public:
    JSReturnNode() : JSNode(kReturnKind) {}
    JSReturnNode(int32_t nodeLine, int32_t nodeColumn, JSNode* result)
        : JSNode(kReturnKind, nodeLine, nodeColumn), value(result) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> value;  // ?
};

class JSSwitchNode final : public JSNode {
  public:
    JSSwitchNode() : JSNode(kSwitchKind) {}
    JSSwitchNode(int32_t nodeLine, int32_t nodeColumn, JSNode* subject)
        : JSNode(kSwitchKind, nodeLine, nodeColumn), discriminant(subject) {}
    QUORVELIN_NODE_OPERATIONS;

    // Takes the reference over on success. False without memory.
    bool appendCase(JSNode* test);

    Owned<JSNode> discriminant;  // ? in loaded trees
    RecordList<CaseRecord> cases;
};

class JSWithNode final : public JSNode {
  public:
    JSWithNode() : JSNode(kWithKind) {}
    JSWithNode(int32_t nodeLine, int32_t nodeColumn, JSNode* scope, JSNode* statement)
        : JSNode(kWithKind, nodeLine, nodeColumn), object(scope), body(statement) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> object;  // ?
    Owned<JSNode> body;    // ?
};

class JSWhileNode final : public JSNode {
  public:
    JSWhileNode() : JSNode(kWhileKind) {}
    JSWhileNode(int32_t nodeLine, int32_t nodeColumn, JSNode* test, JSNode* statement)
        : JSNode(kWhileKind, nodeLine, nodeColumn), condition(test), body(statement) {}
    QUORVELIN_NODE_OPERATIONS;

    Owned<JSNode> condition;  // ?
    Owned<JSNode> body;       // ?
};

// label: statement
class JSLabelNode final : public JSNode {
  public:
    JSLabelNode() : JSNode(kLabelKind) {}
    JSLabelNode(int32_t nodeLine, int32_t nodeColumn, const Name& labelName, JSNode* labelled)
        : JSNode(kLabelKind, nodeLine, nodeColumn), label(labelName), statement(labelled) {}
    QUORVELIN_NODE_OPERATIONS;

    Name label;
    Owned<JSNode> statement;  // ? always absent in a loaded tree
};

// A syntax error. It can only be the root of what the parser returns; `check` then reports its message.
class JSErrorNode final : public JSNode {
  public:
    // "Error(Ln L, Col C): " and the reason.
    JSErrorNode(int32_t nodeLine, int32_t nodeColumn, const char16_t* reason);
    // The same with the name of the token kind, a blank and the token's text as the reason.
    JSErrorNode(int32_t nodeLine, int32_t nodeColumn, int32_t tokenKind, const BString& tokenText);
    QUORVELIN_NODE_OPERATIONS;

    BString message;
};

#undef QUORVELIN_NODE_OPERATIONS

}  // namespace quorvelin
