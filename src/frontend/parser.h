// The parser: recursive descent, one function a precedence level or statement, working directly on the
// current token of the tokenizer, which it is.
//
// Every rule gives one of three things: a node; a JSErrorNode, which whoever receives it hands on at once; or
// null, which means "no construct here, nothing consumed" and is no error: many rules build their node with
// an absent child. The ladder of expressions is deliberately not symmetrical. Some levels are loops and some
// are right recursion, and only three guard against compound assignment; each of these asymmetries decides
// what some expression means.
//
// The first error ends the parse. It carries the position of the tokenizer at that moment.
#pragma once

#include "foundation/owned.h"
#include "frontend/nodes.h"
#include "frontend/tokenizer.h"

namespace quorvelin {

// Operators in the order in which they are tried; matching is by prefix, so the order matters.
struct OperatorTable;

class JSParser : public JSTokenizer {
  public:
    using JSTokenizer::JSTokenizer;

    // Parses the whole stream: a JSStatementListNode, or a JSErrorNode. The result carries a reference for
    // the caller and outlives the parser. When memory fails anywhere the result is an error; null only when
    // there was no memory for so much as that.
    JSNode* parseProgram();

  private:
    using Result = Owned<JSNode>;

    struct Position {
        int32_t line;
        int32_t column;
    };
    Position position() const { return {line(), column()}; }

    // ---- expressions ----
    Result parseExpression();
    Result parseAssignment();
    Result parseConditional();
    Result parseLogicalOr();
    Result parseLogicalAnd();
    Result parseBitOr();
    Result parseBitXor();
    Result parseBitAnd();
    Result parseEquality();
    Result parseRelational();
    Result parseShift();
    Result parseAdditive();
    Result parseMultiplicative();
    Result parseUnary();
    Result parseMemberChain();
    Result parsePrimary();
    Result parseIndex();
    Result parseArguments();
    Result parseArrayElements();
    Result parseMember(Result object);
    Result parseElements(Owned<JSEntryListNode> list, const char16_t* closingBracket);
    Result parseRegExpLiteral();

    using Rule = Result (JSParser::*)();
    Result parseLoopLevel(const OperatorTable& operators, Rule operandRule, Result left);
    Result parseRightLevel(const OperatorTable& operators, Rule operandRule, Rule rightRule);

    // ---- statements ----
    Result parseStatements();
    Result parseStatementList();
    Result parseStatement();
    Result parseBlock();
    Result parseFunction(Position start);
    Result parseFor(Position start);
    Result parseForIn(Position start, Result variable);
    Result parseIf(Position start);
    Result parseWhile(Position start);
    Result parseWith(Position start);
    Result parseDo(Position start);
    Result parseReturn(Position start);
    Result parseBreak(Position start);
    Result parseContinue(Position start);
    Result parseSwitch(Position start);
    Result parseCaseLabel(JSSwitchNode& node, bool* sawDefault);
    Result parseExpressionStatement();
    Result parseVarOrExpression();
    Result parseVarList();
    Result parseParameters();
    Result parseParenthesized();
    Result parseJump(Name* label);

    // ---- tokens ----
    bool startsOperator(const char16_t* text) const {
        return kind() == JSTT_OPERATORS && text_.startsWith(text);
    }
    const Atom* matchingOperator(const OperatorTable& operators) const;
    Position consumeOperator(int32_t length);
    bool isWord(const char16_t* word) const { return isToken(JSTT_RESERVED, word); }
    bool isBracket(const char16_t* bracket) const { return isToken(JSTT_PARENTHESES, bracket); }
    Name tokenName();

    // ---- results ----
    Result error(const char16_t* reason);
    static bool isError(const Result& result) { return result && result->kind == kErrorKind; }
    Result made(JSNode* node, const char16_t* messageWithoutMemory = u"Out of memory");
    Result makeBinary(Position start, const Atom* op, Result& left, Result& right);

    // Builds a node and hands children over to it. Without memory they stay with their owners, and the result
    // is the error. (`new` may evaluate the constructor's arguments although it gives null, and what they
    // hand over leaks.)
    template <typename Node, typename... Fields>
    Result make(Position start, Fields&&... fields) {
        void* place = Node::operator new(sizeof(Node));
        if (place == nullptr) return error(u"Out of memory");
        return Result(new (place) Node(start.line, start.column, handOver(fields)...));
    }
    static JSNode* handOver(Result& child) { return child.take(); }
    static const Name& handOver(const Name& name) { return name; }

    bool tooDeep() const;
};

}  // namespace quorvelin
