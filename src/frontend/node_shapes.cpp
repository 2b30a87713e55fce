// The table of node classes: name, kind, tag, source text, fields, order in saved trees.
#include "frontend/nodes.h"

namespace quorvelin {

namespace {

template <typename Class>
constexpr NodeField nodeField(const char* name, Owned<JSNode> Class::*member) {
    NodeField field{name, FieldType::node};
    field.node = static_cast<Owned<JSNode> JSNode::*>(member);
    return field;
}

template <typename Class>
constexpr NodeField nameField(const char* name, Name Class::*member) {
    NodeField field{name, FieldType::name};
    field.identifier = static_cast<Name JSNode::*>(member);
    return field;
}

template <typename Class>
constexpr NodeField textField(const char* name, BString Class::*member) {
    NodeField field{name, FieldType::text};
    field.text = static_cast<BString JSNode::*>(member);
    return field;
}

constexpr NodeField entriesField() {
    NodeField field{"entries", FieldType::entries};
    field.entries = static_cast<RecordList<ListRecord> JSNode::*>(&JSEntryListNode::entries);
    return field;
}

constexpr NodeField variablesField() {
    NodeField field{"variables", FieldType::variables};
    field.variables = static_cast<RecordList<VariableRecord> JSNode::*>(&JSVarNode::variables);
    return field;
}

constexpr NodeField parametersField() {
    NodeField field{"parameters", FieldType::parameters};
    field.parameters = static_cast<RecordList<ParameterRecord> JSNode::*>(&JSParametersNode::parameters);
    return field;
}

constexpr NodeField casesField() {
    NodeField field{"cases", FieldType::clauses};
    field.clauses = static_cast<RecordList<CaseRecord> JSNode::*>(&JSSwitchNode::cases);
    return field;
}

constexpr NodeField tokenKindField() {
    NodeField field{"tokenKind", FieldType::number};
    field.number = static_cast<int32_t JSNode::*>(&JSLiteralNode::tokenKind);
    return field;
}

template <typename Class>
JSNode* make() {
    return new Class();
}

// Both sides of a binary operator stand in parentheses, whether or not they need them.
constexpr const char16_t* kBinarySource = u"(%1)%0(%2)";

template <typename Class>
constexpr NodeShape binaryShape(const char* className, int32_t tag) {
    return {className,
            kBinaryKind,
            tag,
            kBinarySource,
            3,
            {nameField("op", &JSBinaryNode::op), nodeField("left", &JSBinaryNode::left),
             nodeField("right", &JSBinaryNode::right)},
            {1, 0, 2, -1},
            make<Class>};
}

constexpr NodeShape kMemberCall = {
    "JSMemberCallNode",
    kMemberCallKind,
    3,
    u"%0.%2(%1)",
    3,
    {nodeField("object", &JSMemberCallNode::object), nodeField("arguments", &JSMemberCallNode::arguments),
     nameField("name", &JSMemberCallNode::name)},
    {0, 2, 1, -1},
    make<JSMemberCallNode>};

constexpr NodeShape kMember = {
    "JSMemberNode",
    kMemberKind,
    4,
    u"%0.%1",
    2,
    {nodeField("object", &JSMemberNode::object), nameField("name", &JSMemberNode::name)},
    {0, 1, -1, -1},
    make<JSMemberNode>};

constexpr NodeShape kIdentifier = {
    "JSIdentifierNode", kIdentifierKind,       2, u"%0", 1, {nameField("name", &JSIdentifierNode::name)},
    {0, -1, -1, -1},    make<JSIdentifierNode>};

constexpr NodeShape kCall = {
    "JSCallNode",
    kCallKind,
    5,
    u"%0(%1)",
    2,
    {nodeField("callee", &JSCallNode::callee), nodeField("arguments", &JSCallNode::arguments)},
    {0, 1, -1, -1},
    make<JSCallNode>};

constexpr NodeShape kIndex = {
    "JSIndexNode",
    kIndexKind,
    6,
    u"(%0)[%1]",
    2,
    {nodeField("object", &JSIndexNode::object), nodeField("index", &JSIndexNode::index)},
    {0, 1, -1, -1},
    make<JSIndexNode>};

constexpr NodeShape kComma = {
    "JSCommaNode",
    kCommaKind,
    7,
    u"%0,%1",
    2,
    {nodeField("left", &JSCommaNode::left), nodeField("right", &JSCommaNode::right)},
    {0, 1, -1, -1},
    make<JSCommaNode>};

constexpr NodeShape kBinary = binaryShape<JSBinaryNode>("JSBinaryNode", 8);
constexpr NodeShape kAssign = binaryShape<JSAssignNode>("JSAssignNode", 9);
constexpr NodeShape kLogicalOr = binaryShape<JSLogicalOrNode>("JSLogicalOrNode", 10);
constexpr NodeShape kLogicalAnd = binaryShape<JSLogicalAndNode>("JSLogicalAndNode", 11);

constexpr NodeShape kConditional = {"JSConditionalNode",
                                    kConditionalKind,
                                    12,
                                    u"(%0)?(%1):(%2)",
                                    3,
                                    {nodeField("condition", &JSConditionalNode::condition),
                                     nodeField("thenValue", &JSConditionalNode::thenValue),
                                     nodeField("elseValue", &JSConditionalNode::elseValue)},
                                    {0, 1, 2, -1},
                                    make<JSConditionalNode>};

constexpr NodeShape kUnary = {
    "JSUnaryNode",
    kUnaryKind,
    13,
    u"%0(%1)",
    2,
    {nameField("op", &JSUnaryNode::op), nodeField("operand", &JSUnaryNode::operand)},
    {0, 1, -1, -1},
    make<JSUnaryNode>};

constexpr NodeShape kPostfix = {
    "JSPostfixNode",
    kPostfixKind,
    14,
    u"(%1)%0",
    2,
    {nameField("op", &JSPostfixNode::op), nodeField("operand", &JSPostfixNode::operand)},
    {1, 0, -1, -1},
    make<JSPostfixNode>};

constexpr NodeShape kLiteral = {"JSLiteralNode",
                                kLiteralKind,
                                15,
                                nullptr,
                                2,
                                {tokenKindField(), textField("text", &JSLiteralNode::text)},
                                {0, 1, -1, -1},
                                make<JSLiteralNode>};

constexpr NodeShape kFunction = {
    "JSFunctionNode",
    kFunctionKind,
    1,
    u"function %2(%0)\n{%1}\n",
    3,
    {nodeField("parameters", &JSFunctionNode::parameters), nodeField("body", &JSFunctionNode::body),
     nameField("name", static_cast<Name JSFunctionNode::*>(&JSNamedNode::name))},
    {2, 0, 1, -1},
    make<JSFunctionNode>};

// Quirk: unlike every other compound statement, a for-in has a line feed before its closing brace.
constexpr NodeShape kForIn = {"JSForInNode",
                              kForInKind,
                              16,
                              u"for(%2 in %0)\n{%1\n}\n",
                              3,
                              {nodeField("object", &JSForInNode::object),
                               nodeField("body", &JSForInNode::body), nameField("name", &JSForInNode::name)},
                              {2, 0, 1, -1},
                              make<JSForInNode>};

constexpr NodeShape kFor = {
    "JSForNode",
    kForKind,
    17,
    u"for(%0;%1;%2)\n{%3}\n",
    4,
    {nodeField("init", &JSForNode::init), nodeField("condition", &JSForNode::condition),
     nodeField("update", &JSForNode::update), nodeField("body", &JSForNode::body)},
    {0, 1, 2, 3},
    make<JSForNode>};

constexpr NodeShape kIf = {
    "JSIfNode",
    kIfKind,
    18,
    u"if(%0)\n{%1<2}else\n{?2>}\n",
    3,
    {nodeField("condition", &JSIfNode::condition), nodeField("thenPart", &JSIfNode::thenPart),
     nodeField("elsePart", &JSIfNode::elsePart)},
    {0, 1, 2, -1},
    make<JSIfNode>};

// Quirk: break, continue and do end in a semicolon of their own, and get a second one in a list.
constexpr NodeShape kBreak = {
    "JSBreakNode",   kBreakKind,       19, u"break %0;\n", 1, {nameField("label", &JSBreakNode::label)},
    {0, -1, -1, -1}, make<JSBreakNode>};

constexpr NodeShape kContinue = {"JSContinueNode",
                                 kContinueKind,
                                 20,
                                 u"continue %0;\n",
                                 1,
                                 {nameField("label", &JSContinueNode::label)},
                                 {0, -1, -1, -1},
                                 make<JSContinueNode>};

constexpr NodeShape kDo = {"JSDoNode",
                           kDoKind,
                           21,
                           u"do{\n%0\n}while(%1);\n",
                           2,
                           {nodeField("body", &JSDoNode::body), nodeField("condition", &JSDoNode::condition)},
                           {0, 1, -1, -1},
                           make<JSDoNode>};

constexpr NodeShape kReturn = {
    "JSReturnNode",  kReturnKind,       22, u"return %0\n", 1, {nodeField("value", &JSReturnNode::value)},
    {0, -1, -1, -1}, make<JSReturnNode>};

constexpr NodeShape kSwitch = {"JSSwitchNode",
                               kSwitchKind,
                               23,
                               nullptr,
                               2,
                               {nodeField("discriminant", &JSSwitchNode::discriminant), casesField()},
                               {0, 1, -1, -1},
                               make<JSSwitchNode>};

constexpr NodeShape kWith = {"JSWithNode",
                             kWithKind,
                             26,
                             u"with(%0)\n{%1}\n",
                             2,
                             {nodeField("object", &JSWithNode::object), nodeField("body", &JSWithNode::body)},
                             {0, 1, -1, -1},
                             make<JSWithNode>};

constexpr NodeShape kWhile = {
    "JSWhileNode",
    kWhileKind,
    27,
    u"while(%0)\n{%1}\n",
    2,
    {nodeField("condition", &JSWhileNode::condition), nodeField("body", &JSWhileNode::body)},
    {0, 1, -1, -1},
    make<JSWhileNode>};

constexpr NodeShape kStatementList = {
    "JSStatementListNode", kStatementListKind,       28, nullptr, 1, {entriesField()},
    {0, -1, -1, -1},       make<JSStatementListNode>};

constexpr NodeShape kVar = {"JSVarNode",     kVarKind,       30, nullptr, 1, {variablesField()},
                            {0, -1, -1, -1}, make<JSVarNode>};

constexpr NodeShape kParameters = {"JSParametersNode",  kVarKind,        JSParametersNode::kTag, nullptr, 1,
                                   {parametersField()}, {0, -1, -1, -1}, make<JSParametersNode>};

constexpr NodeShape kArguments = {"JSArgumentsNode", kArgumentsKind,       32, nullptr, 1, {entriesField()},
                                  {0, -1, -1, -1},   make<JSArgumentsNode>};

// Quirk: the form of saved trees has no place for the statement of a label, so a loaded label has none.
constexpr NodeShape kLabel = {
    "JSLabelNode",
    kLabelKind,
    34,
    u"%0:?1",
    2,
    {nameField("label", &JSLabelNode::label), nodeField("statement", &JSLabelNode::statement)},
    {0, -1, -1, -1},
    make<JSLabelNode>};

constexpr NodeShape kRegExp = {
    "JSRegExpNode",  kRegExpKind,       37, u"/%0/", 1, {textField("pattern", &JSRegExpNode::pattern)},
    {0, -1, -1, -1}, make<JSRegExpNode>};

constexpr NodeShape kArray = {"JSArrayNode",   kArrayKind,       38, nullptr, 1, {entriesField()},
                              {0, -1, -1, -1}, make<JSArrayNode>};

constexpr NodeShape kError = {
    "JSErrorNode",    kErrorKind, 0, u"%0", 1, {textField("message", &JSErrorNode::message)},
    {-1, -1, -1, -1}, nullptr};

constexpr const NodeShape* kSavedShapes[] = {
    &kFunction, &kIdentifier, &kMemberCall, &kMember,     &kCall,          &kIndex,    &kComma,
    &kBinary,   &kAssign,     &kLogicalOr,  &kLogicalAnd, &kConditional,   &kUnary,    &kPostfix,
    &kLiteral,  &kForIn,      &kFor,        &kIf,         &kBreak,         &kContinue, &kDo,
    &kReturn,   &kSwitch,     &kWith,       &kWhile,      &kStatementList, &kVar,      &kArguments,
    &kLabel,    &kParameters, &kRegExp,     &kArray};

}  // namespace

const NodeShape& JSMemberCallNode::shape() const {
    return kMemberCall;
}
const NodeShape& JSMemberNode::shape() const {
    return kMember;
}
const NodeShape& JSIdentifierNode::shape() const {
    return kIdentifier;
}
const NodeShape& JSCallNode::shape() const {
    return kCall;
}
const NodeShape& JSIndexNode::shape() const {
    return kIndex;
}
const NodeShape& JSCommaNode::shape() const {
    return kComma;
}
const NodeShape& JSBinaryNode::shape() const {
    return kBinary;
}
const NodeShape& JSAssignNode::shape() const {
    return kAssign;
}
const NodeShape& JSLogicalOrNode::shape() const {
    return kLogicalOr;
}
const NodeShape& JSLogicalAndNode::shape() const {
    return kLogicalAnd;
}
const NodeShape& JSConditionalNode::shape() const {
    return kConditional;
}
const NodeShape& JSUnaryNode::shape() const {
    return kUnary;
}
const NodeShape& JSPostfixNode::shape() const {
    return kPostfix;
}
const NodeShape& JSLiteralNode::shape() const {
    return kLiteral;
}
const NodeShape& JSFunctionNode::shape() const {
    return kFunction;
}
const NodeShape& JSForInNode::shape() const {
    return kForIn;
}
const NodeShape& JSForNode::shape() const {
    return kFor;
}
const NodeShape& JSIfNode::shape() const {
    return kIf;
}
const NodeShape& JSBreakNode::shape() const {
    return kBreak;
}
const NodeShape& JSContinueNode::shape() const {
    return kContinue;
}
const NodeShape& JSDoNode::shape() const {
    return kDo;
}
const NodeShape& JSReturnNode::shape() const {
    return kReturn;
}
const NodeShape& JSSwitchNode::shape() const {
    return kSwitch;
}
const NodeShape& JSWithNode::shape() const {
    return kWith;
}
const NodeShape& JSWhileNode::shape() const {
    return kWhile;
}
const NodeShape& JSStatementListNode::shape() const {
    return kStatementList;
}
const NodeShape& JSVarNode::shape() const {
    return kVar;
}
const NodeShape& JSParametersNode::shape() const {
    return kParameters;
}
const NodeShape& JSArgumentsNode::shape() const {
    return kArguments;
}
const NodeShape& JSLabelNode::shape() const {
    return kLabel;
}
const NodeShape& JSRegExpNode::shape() const {
    return kRegExp;
}
const NodeShape& JSArrayNode::shape() const {
    return kArray;
}
const NodeShape& JSErrorNode::shape() const {
    return kError;
}

const NodeShape* shapeOfTag(int32_t tag) {
    for (const NodeShape* shape : kSavedShapes) {
        if (shape->tag == tag) return shape;
    }
    return nullptr;
}

}  // namespace quorvelin
