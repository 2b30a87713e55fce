// The statement rules of the parser.
//
// There is no rule that inserts semicolons. Whether a line end is a separator is decided by the tokenizer's
// look-ahead and by which tokens a rule reads with `nextToken(true)`, which throws line ends away; a line end
// that is delivered satisfies every rule that asks for a separator, and a semicolon is never swallowed.
#include "foundation/native_stack_guard.h"
#include "frontend/parser.h"

namespace quorvelin {

JSNode* JSParser::parseProgram() {
    Result program = parseStatements();
    if (!memoryFailed_) return program.take();
    // Whatever came of it was made from incomplete texts: even an error may not be the script's.
    program.reset();
    return error(u"Out of memory").take();
}

JSParser::Result JSParser::parseStatements() {
    Owned<JSStatementListNode> program(new JSStatementListNode(line(), column()));
    if (!program) return error(u"Out of memory");
    nextToken(true);
    for (;;) {
        Result statements = parseStatementList();
        if (isError(statements)) return statements;
        if (!statements) break;
        if (!program->append(statements.get())) return error(u"Out of memory");
        (void)statements.take();
    }
    if (kind() != JSTT_EOF) return error(u"unexpected char");
    return Result(program.take());
}

JSParser::Result JSParser::parseStatementList() {
    const Position start = position();
    Owned<JSStatementListNode> list;
    for (;;) {
        while (isToken(JSTT_OPERSEPARATOR, u";")) nextToken(true);
        Result statement = parseStatement();
        if (isError(statement)) return statement;
        // Quirk: an empty block is no statement, so it ends the list.
        if (!statement) return Result(list.take());
        if (!list) list = Owned<JSStatementListNode>(new JSStatementListNode(start.line, start.column));
        if (!list || !list->append(statement.get())) return error(u"Out of memory");
        (void)statement.take();
    }
}

JSParser::Result JSParser::parseStatement() {
    if (tooDeep()) return error(u"too deep");
    while (isLineEnd()) nextToken(true);
    if (isToken(JSTT_OPERSEPARATOR, u";")) return Result();
    if (isBracket(u"{")) return parseBlock();
    if (kind() == JSTT_RESERVED) {
        struct StatementRule {
            const char16_t* word;
            Result (JSParser::*parse)(Position start);
        };
        static constexpr StatementRule kRules[] = {
            {u"function", &JSParser::parseFunction},
            {u"for", &JSParser::parseFor},
            {u"if", &JSParser::parseIf},
            {u"break", &JSParser::parseBreak},
            {u"continue", &JSParser::parseContinue},
            {u"do", &JSParser::parseDo},
            {u"return", &JSParser::parseReturn},
            {u"switch", &JSParser::parseSwitch},
            {u"with", &JSParser::parseWith},
            {u"while", &JSParser::parseWhile},
        };
        for (const StatementRule& rule : kRules) {
            if (text_.equals(rule.word)) return (this->*rule.parse)(position());
        }
    }
    return parseExpressionStatement();
}

JSParser::Result JSParser::parseBlock() {
    nextToken(true);
    Result list = parseStatementList();
    if (isError(list)) return list;
    if (!isBracket(u"}")) return error(u"need }");
    nextToken(true);
    return list;
}

JSParser::Result JSParser::parseFunction(Position start) {
    nextToken(true);
    if (kind() != JSTT_IDENFICATOR) return error(u"need identificator");
    const Name name = tokenName();
    nextToken(true);
    Result parameters;
    if (isBracket(u"(")) {
        nextToken(true);
        parameters = parseParameters();
        if (isError(parameters)) return parameters;
        if (!isBracket(u")")) return error(u"need )");
        nextToken(true);
    }
    if (!isBracket(u"{")) return error(u"need {");
    nextToken(true);
    Result body = parseStatementList();
    if (isError(body)) return body;
    if (!isBracket(u"}")) return error(u"need }");
    nextToken(true);
    return make<JSFunctionNode>(start, name, parameters, body);
}

JSParser::Result JSParser::parseParameters() {
    Owned<JSParametersNode> list(new JSParametersNode(line(), column()));
    if (!list) return error(u"Out of Memory");
    while (kind() == JSTT_IDENFICATOR) {
        if (!list->append(tokenName())) return error(u"Out of memory");
        nextToken(true);
        if (!startsOperator(u",")) break;
        consumeOperator(1);
    }
    return Result(list.take());
}

// "(", an expression, ")", leaving the current token at the bracket that closes.
JSParser::Result JSParser::parseParenthesized() {
    if (!isBracket(u"(")) return error(u"need (");
    nextToken(true);
    Result value = parseExpression();
    if (isError(value)) return value;
    if (!isBracket(u")")) return error(u"need )");
    return value;
}

JSParser::Result JSParser::parseFor(Position start) {
    nextToken(true);
    if (!isBracket(u"(")) return error(u"need (");
    nextToken(true);
    Result init = parseVarOrExpression();
    if (isError(init)) return init;
    if (kind() != JSTT_OPERSEPARATOR) return error(u"need ;");
    // Quirk: a separator never has this text, so no source text makes a for-in; `for (x in y)` asks for a
    // ";".
    if (text_.equals(u"in")) return parseForIn(start, std::move(init));
    nextToken(true);
    Result condition = parseExpression();
    if (isError(condition)) return condition;
    if (kind() != JSTT_OPERSEPARATOR) return error(u"need ;");
    nextToken(true);
    Result update = parseVarOrExpression();
    if (isError(update)) return update;
    if (!isBracket(u")")) return error(u"need )");
    nextToken(true);
    Result body = parseStatement();
    if (isError(body)) return body;
    return make<JSForNode>(start, init, condition, update, body);
}

JSParser::Result JSParser::parseForIn(Position start, Result variable) {
    if (!variable || variable->kind != kIdentifierKind) return error(u"need simple identificator");
    const Name name = static_cast<JSIdentifierNode&>(*variable).name;
    nextToken(true);
    Result object = parseVarOrExpression();
    if (isError(object)) return object;
    if (!isBracket(u")")) return error(u"need )");
    nextToken(true);
    Result body = parseStatement();
    if (isError(body)) return body;
    return make<JSForInNode>(start, name, object, body);
}

JSParser::Result JSParser::parseIf(Position start) {
    nextToken(true);
    Result condition = parseParenthesized();
    if (isError(condition)) return condition;
    nextToken(true);
    Result thenPart = parseStatement();
    if (isError(thenPart)) return thenPart;
    Result elsePart;
    if (isWord(u"else")) {
        nextToken(true);
        elsePart = parseStatement();
        if (isError(elsePart)) return elsePart;
    }
    return make<JSIfNode>(start, condition, thenPart, elsePart);
}

JSParser::Result JSParser::parseWhile(Position start) {
    nextToken(true);
    Result condition = parseParenthesized();
    if (isError(condition)) return condition;
    nextToken(true);
    Result body = parseStatement();
    if (isError(body)) return body;
    return make<JSWhileNode>(start, condition, body);
}

JSParser::Result JSParser::parseWith(Position start) {
    nextToken(true);
    Result object = parseParenthesized();
    if (isError(object)) return object;
    nextToken(true);
    Result body = parseStatement();
    if (isError(body)) return body;
    return make<JSWithNode>(start, object, body);
}

JSParser::Result JSParser::parseDo(Position start) {
    nextToken(true);
    Result body = parseStatement();
    if (isError(body)) return body;
    if (!isWord(u"while")) return error(u"need while");
    nextToken(true);
    Result condition = parseParenthesized();
    if (isError(condition)) return condition;
    nextToken(false);
    if (kind() != JSTT_OPERSEPARATOR) return error(u"need ;");
    nextToken(true);
    return make<JSDoNode>(start, body, condition);
}

JSParser::Result JSParser::parseReturn(Position start) {
    nextToken(false);
    Result value = parseExpression();
    if (isError(value)) return value;
    if (!isBracket(u"}")) {
        // Quirk: the end of the text is no separator here, though it is one behind an expression.
        if (kind() != JSTT_OPERSEPARATOR) return error(u"need ;");
        nextToken(true);
    }
    return make<JSReturnNode>(start, value);
}

// What follows `break` and `continue`: an optional label and a separator. An error, or nothing.
JSParser::Result JSParser::parseJump(Name* label) {
    nextToken(false);
    if (kind() == JSTT_IDENFICATOR) {
        *label = tokenName();
        nextToken(false);
    }
    // Quirk: neither a closing brace nor the end of the text will do, so {break} is an error.
    if (kind() != JSTT_OPERSEPARATOR) return error(u"need ;");
    nextToken(true);
    return Result();
}

JSParser::Result JSParser::parseBreak(Position start) {
    Name label;
    Result failed = parseJump(&label);
    if (failed) return failed;
    return make<JSBreakNode>(start, label);
}

JSParser::Result JSParser::parseContinue(Position start) {
    Name label;
    Result failed = parseJump(&label);
    if (failed) return failed;
    return make<JSContinueNode>(start, label);
}

JSParser::Result JSParser::parseSwitch(Position start) {
    nextToken(true);
    if (!isBracket(u"(")) return error(u"need (");
    nextToken(true);
    Result discriminant = parseExpression();
    if (isError(discriminant)) return discriminant;
    if (!discriminant) return error(u"need expression");
    if (!isBracket(u")")) return error(u"need )");
    nextToken(true);
    if (!isBracket(u"{")) return error(u"need {");
    Result result = make<JSSwitchNode>(start, discriminant);
    if (!result || isError(result)) return result;
    JSSwitchNode& node = static_cast<JSSwitchNode&>(*result);
    nextToken(true);

    bool sawDefault = false;
    for (;;) {
        if (isBracket(u"}")) {
            nextToken(true);
            return result;
        }
        if (isWord(u"case") || isWord(u"default")) {
            Result failed = parseCaseLabel(node, &sawDefault);
            if (failed) return failed;
            continue;
        }
        Result statements = parseStatementList();
        if (isError(statements)) return statements;
        if (!statements) return error(u"unexpected operator");
        // Quirk: statements in front of the first clause belong to none and are dropped.
        if (node.cases.last != nullptr) node.cases.last->statements = std::move(statements);
    }
}

// A `case` or `default` label with its colon. An error, or nothing.
// Quirk: a case without a test counts as a default.
JSParser::Result JSParser::parseCaseLabel(JSSwitchNode& node, bool* sawDefault) {
    Result test;
    const bool isDefault = isWord(u"default");
    if (!isDefault) {
        nextToken(true);
        test = parseExpression();
        if (isError(test)) return test;
    }
    if (!test) {
        if (*sawDefault) return error(u"don't truely use no label case or default");
        *sawDefault = true;
    }
    if (isDefault) nextToken(true);
    if (!isToken(JSTT_OPERATORS, u":")) return error(u"need :");
    if (!node.appendCase(test.get())) return error(u"Out of memory");
    (void)test.take();
    nextToken(true);
    return Result();
}

JSParser::Result JSParser::parseVarOrExpression() {
    if (!isWord(u"var")) return parseExpression();
    nextToken(true);
    return parseVarList();
}

JSParser::Result JSParser::parseVarList() {
    Owned<JSVarNode> list(new JSVarNode(line(), column()));
    if (!list) return error(u"Out of Memory");
    while (kind() == JSTT_IDENFICATOR) {
        VariableRecord* record = list->variables.append();
        if (record == nullptr) return error(u"Out of memory");
        record->name = tokenName();
        nextToken(false);
        if (startsOperator(u"=")) {
            consumeOperator(1);
            Result initialiser = parseAssignment();
            if (isError(initialiser)) return initialiser;
            record->initialiser = std::move(initialiser);
        }
        if (!startsOperator(u",")) break;
        consumeOperator(1);
    }
    return Result(list.take());
}

// An expression, a `var` statement or a label with its statement.
JSParser::Result JSParser::parseExpressionStatement() {
    Result value = parseVarOrExpression();
    if (!value || isError(value)) return value;
    if (value->kind == kIdentifierKind && startsOperator(u":")) {
        consumeOperator(1);
        Result statement = parseStatement();
        if (isError(statement)) return statement;
        // No separator is looked for behind a labelled statement.
        const Position start = {value->line, value->column};
        return make<JSLabelNode>(start, static_cast<JSIdentifierNode&>(*value).name, statement);
    }
    if (isBracket(u"}")) return value;
    if (kind() != JSTT_OPERSEPARATOR && kind() != JSTT_EOF) return error(u"need ;");
    nextToken(true);
    return value;
}

}  // namespace quorvelin
