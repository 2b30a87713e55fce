// What every node class has: its numbers, the order of its operations, its counting.
#include <gtest/gtest.h>

#include "frontend/parser.h"
#include "support/operation_place.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

struct Expected {
    const char* className;
    int32_t kind;
    int32_t tag;
};

constexpr Expected kExpected[] = {
    {"JSMemberCallNode", 1, 3},   {"JSMemberNode", 2, 4},          {"JSIdentifierNode", 4, 2},
    {"JSCallNode", 5, 5},         {"JSIndexNode", 6, 6},           {"JSCommaNode", 7, 7},
    {"JSBinaryNode", 8, 8},       {"JSAssignNode", 8, 9},          {"JSLogicalOrNode", 8, 10},
    {"JSLogicalAndNode", 8, 11},  {"JSConditionalNode", 9, 12},    {"JSUnaryNode", 10, 13},
    {"JSPostfixNode", 11, 14},    {"JSLiteralNode", 12, 15},       {"JSFunctionNode", 13, 1},
    {"JSForInNode", 14, 16},      {"JSForNode", 15, 17},           {"JSIfNode", 16, 18},
    {"JSBreakNode", 17, 19},      {"JSContinueNode", 18, 20},      {"JSDoNode", 19, 21},
    {"JSReturnNode", 20, 22},     {"JSSwitchNode", 21, 23},        {"JSWithNode", 22, 26},
    {"JSWhileNode", 23, 27},      {"JSStatementListNode", 24, 28}, {"JSVarNode", 25, 30},
    {"JSParametersNode", 25, 35}, {"JSArgumentsNode", 26, 32},     {"JSLabelNode", 27, 34},
    {"JSRegExpNode", 28, 37},     {"JSArrayNode", 29, 38},
};

TEST(Node, KindsAndTagsAreFixed) {
    for (const Expected& expected : kExpected) {
        const NodeShape* shape = shapeOfTag(expected.tag);
        ASSERT_NE(shape, nullptr) << expected.className;
        EXPECT_STREQ(shape->className, expected.className);
        EXPECT_EQ(shape->kind, expected.kind) << expected.className;
        EXPECT_EQ(shape->tag, expected.tag);
    }
}

TEST(Node, MadeForTheReaderIsEmpty) {
    for (const Expected& expected : kExpected) {
        const Owned<JSNode> node(shapeOfTag(expected.tag)->make());
        ASSERT_TRUE(node);
        EXPECT_EQ(node->kind, expected.kind) << expected.className;
        EXPECT_EQ(node->line, 0);
        EXPECT_EQ(node->column, 0);
        EXPECT_EQ(node->refCount(), 0);
        EXPECT_EQ(&node->shape(), shapeOfTag(expected.tag));
        EXPECT_STREQ(node->getClassId().name(), "BSmartObject");
    }
}

TEST(Node, ErrorNodeHasNoTag) {
    const JSErrorNode error(3, 7, u"reason");
    EXPECT_EQ(error.kind, 30);
    EXPECT_EQ(error.shape().tag, 0);
    EXPECT_EQ(support::ascii(error.message), "Error(Ln 3, Col 7): reason");
    const JSErrorNode ofToken(3, 7, JSTT_ERROR_UNEXPECTEDCHAR, BString(u"#"));
    EXPECT_EQ(support::ascii(ofToken.message), "Error(Ln 3, Col 7): JSTT_ERROR_UNEXPECTEDCHAR #");
    const JSErrorNode ofNamelessToken(-1, 0, 16, BString(u"x"));
    EXPECT_EQ(support::ascii(ofNamelessToken.message), "Error(Ln -1, Col 0):  x");
}

TEST(Node, OwnsItsChildren) {
    JSIdentifierNode* child = new JSIdentifierNode(1, 2, Name(u"child"));
    child->addRef();
    JSUnaryNode* parent = new JSUnaryNode(1, 1, Name(u"-"), child);
    EXPECT_EQ(child->refCount(), 1);
    EXPECT_TRUE(parent->release());
    EXPECT_EQ(child->refCount(), 0);
    EXPECT_TRUE(child->release());
}

TEST(Node, ListOwnsItsEntries) {
    JSIdentifierNode* child = new JSIdentifierNode(1, 2, Name(u"child"));
    child->addRef();
    JSStatementListNode* list = new JSStatementListNode(1, 1);
    ASSERT_TRUE(list->append(child));
    ASSERT_TRUE(list->append(nullptr));
    EXPECT_FALSE(list->entries.isEmpty());
    EXPECT_EQ(list->entries.last->value.get(), nullptr);
    EXPECT_TRUE(list->release());
    EXPECT_EQ(child->refCount(), 0);
    EXPECT_TRUE(child->release());
}

TEST(Node, ClauseRecordsHaveNoPosition) {
    const Owned<JSNode> root = support::parse(u"switch (a) { case 1: b }");
    const JSSwitchNode* node = static_cast<const JSSwitchNode*>(support::firstStatement(root.get()));
    ASSERT_EQ(node->kind, kSwitchKind);
    EXPECT_EQ(node->cases.first->line, 0);
    EXPECT_EQ(node->cases.first->column, 0);
}

#ifdef QUORVELIN_KNOWS_OPERATION_PLACES

using support::operationPlace;

TEST(Node, OperationsStandInOrder) {
    EXPECT_EQ(operationPlace(&JSNode::regenerate), 9u);
    EXPECT_EQ(operationPlace(&JSNode::run), 10u);
    EXPECT_EQ(operationPlace(&JSNode::check), 11u);
    EXPECT_EQ(operationPlace(&JSNode::load), 12u);
    EXPECT_EQ(operationPlace(&JSTokenizer::classifyWord), 2u);
}

#endif

}  // namespace
}  // namespace quorvelin
