// The expression rules of the parser.
#include <iterator>

#include "foundation/native_stack_guard.h"
#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "frontend/parser.h"

namespace quorvelin {

struct OperatorTable {
    const WellKnownName* entries;
    int32_t count;
    // Accept an entry only where no "=" follows it, which leaves "+=" and its kin to the assignment level.
    bool guarded;
    // Decline an entry that is doubled in the text ("|" in front of "||").
    bool declinesDouble;
};

namespace {

constexpr WellKnownName kAssignmentOperators[] = {
    WellKnownName::assignOperator,          WellKnownName::addAssignOperator,
    WellKnownName::andAssignOperator,       WellKnownName::orAssignOperator,
    WellKnownName::xorAssignOperator,       WellKnownName::divideAssignOperator,
    WellKnownName::shiftLeftAssignOperator, WellKnownName::remainderAssignOperator,
    WellKnownName::multiplyAssignOperator,  WellKnownName::shiftRightUnsignedAssignOperator,
    WellKnownName::subtractAssignOperator,  WellKnownName::shiftRightAssignOperator};
constexpr WellKnownName kLogicalOrOperators[] = {WellKnownName::logicalOrOperator};
constexpr WellKnownName kLogicalAndOperators[] = {WellKnownName::logicalAndOperator};
constexpr WellKnownName kBitOrOperators[] = {WellKnownName::bitOrOperator};
constexpr WellKnownName kBitXorOperators[] = {WellKnownName::bitXorOperator};
constexpr WellKnownName kBitAndOperators[] = {WellKnownName::bitAndOperator};
constexpr WellKnownName kEqualityOperators[] = {
    WellKnownName::identicalOperator, WellKnownName::notIdenticalOperator, WellKnownName::equalOperator,
    WellKnownName::notEqualOperator};
constexpr WellKnownName kRelationalOperators[] = {
    WellKnownName::lessOrEqualOperator, WellKnownName::lessOperator, WellKnownName::greaterOrEqualOperator,
    WellKnownName::greaterOperator};
constexpr WellKnownName kShiftOperators[] = {WellKnownName::shiftLeftOperator,
                                             WellKnownName::shiftRightOperator,
                                             WellKnownName::shiftRightUnsignedOperator};
constexpr WellKnownName kAdditiveOperators[] = {WellKnownName::addOperator, WellKnownName::subtractOperator};
constexpr WellKnownName kMultiplicativeOperators[] = {
    WellKnownName::multiplyOperator, WellKnownName::divideOperator, WellKnownName::remainderOperator};
constexpr WellKnownName kUnarySymbols[] = {WellKnownName::incrementOperator, WellKnownName::decrementOperator,
                                           WellKnownName::subtractOperator, WellKnownName::complementOperator,
                                           WellKnownName::logicalNotOperator};
constexpr WellKnownName kUnaryWords[] = {WellKnownName::typeofWordOperator, WellKnownName::newWordOperator,
                                         WellKnownName::voidWordOperator, WellKnownName::deleteWordOperator};
constexpr WellKnownName kPostfixOperators[] = {WellKnownName::incrementOperator,
                                               WellKnownName::decrementOperator};

template <size_t count>
constexpr OperatorTable table(const WellKnownName (&entries)[count], bool guarded = false,
                              bool declinesDouble = false) {
    return {entries, static_cast<int32_t>(count), guarded, declinesDouble};
}

constexpr OperatorTable kAssignment = table(kAssignmentOperators);
constexpr OperatorTable kLogicalOr = table(kLogicalOrOperators);
constexpr OperatorTable kLogicalAnd = table(kLogicalAndOperators);
constexpr OperatorTable kBitOr = table(kBitOrOperators, false, true);
constexpr OperatorTable kBitXor = table(kBitXorOperators);
constexpr OperatorTable kBitAnd = table(kBitAndOperators, false, true);
constexpr OperatorTable kEquality = table(kEqualityOperators);
constexpr OperatorTable kRelational = table(kRelationalOperators);
constexpr OperatorTable kShift = table(kShiftOperators, true);
constexpr OperatorTable kAdditive = table(kAdditiveOperators, true);
constexpr OperatorTable kMultiplicative = table(kMultiplicativeOperators, true);
constexpr OperatorTable kUnary = table(kUnarySymbols);
constexpr OperatorTable kPostfix = table(kPostfixOperators);

// Operators are names of the engine's own, as nodes hold them.
Name operatorName(const Atom* op) {
    return Name(op);
}

}  // namespace

// ---- Tokens and results ----

const Atom* JSParser::matchingOperator(const OperatorTable& operators) const {
    if (kind() != JSTT_OPERATORS) return nullptr;
    for (int32_t i = 0; i < operators.count; ++i) {
        const Atom* entry = nameAtom(operators.entries[i]);
        const BString& op = entry->text();
        if (!text_.startsWith(op.data())) continue;
        const char16_t following = text_[op.length()];
        if (operators.guarded && following == u'=') continue;
        if (operators.declinesDouble && following == op[0]) continue;
        return entry;
    }
    return nullptr;
}

// Takes an operator of `length` units off the front of the run. What remains of the run is the current token
// still.
JSParser::Position JSParser::consumeOperator(int32_t length) {
    const Position start = position();
    text_.removePrefix(length);
    if (text_.isEmpty()) nextToken(true);
    return start;
}

// The current token as a name.
Name JSParser::tokenName() {
    Name name(text());
    if (name.atom() == nullptr) memoryFailed_ = true;
    return name;
}

JSParser::Result JSParser::error(const char16_t* reason) {
    Result result(new JSErrorNode(line(), column(), reason));
    // Without an error node the rules above would go on as if nothing stood here.
    if (!result) memoryFailed_ = true;
    return result;
}

// A node that was just built, or the error when there was no memory for it.
JSParser::Result JSParser::made(JSNode* node, const char16_t* messageWithoutMemory) {
    return node != nullptr ? Result(node) : error(messageWithoutMemory);
}

bool JSParser::tooDeep() const {
    return nativeStackIsShort();
}

// ---- The ladder ----

JSParser::Result JSParser::makeBinary(Position start, const Atom* op, Result& left, Result& right) {
    switch (static_cast<WellKnownName>(op->wellKnown())) {
        case WellKnownName::logicalOrOperator:
            return make<JSLogicalOrNode>(start, operatorName(op), left, right);
        case WellKnownName::logicalAndOperator:
            return make<JSLogicalAndNode>(start, operatorName(op), left, right);
        default:
            return make<JSBinaryNode>(start, operatorName(op), left, right);
    }
}

// A level of left-associative operators.
JSParser::Result JSParser::parseLoopLevel(const OperatorTable& operators, Rule operandRule, Result left) {
    while (!isError(left)) {
        const Atom* op = matchingOperator(operators);
        if (op == nullptr) return left;
        const Position start = consumeOperator(op->text().length());
        Result right = (this->*operandRule)();
        if (isError(right)) return right;
        left = make<JSBinaryNode>(start, operatorName(op), left, right);
    }
    return left;
}

// A level whose right side is the level itself (or what `rightRule` says).
JSParser::Result JSParser::parseRightLevel(const OperatorTable& operators, Rule operandRule, Rule rightRule) {
    if (tooDeep()) return error(u"too deep");
    Result left = (this->*operandRule)();
    if (isError(left)) return left;
    const Atom* op = matchingOperator(operators);
    if (op == nullptr) return left;
    const Position start = consumeOperator(op->text().length());
    Result right = (this->*rightRule)();
    if (isError(right)) return right;
    return makeBinary(start, op, left, right);
}

JSParser::Result JSParser::parseExpression() {
    if (tooDeep()) return error(u"too deep");
    Result left = parseAssignment();
    if (isError(left) || !startsOperator(u",")) return left;
    const Position start = consumeOperator(1);
    Result right = parseExpression();
    if (isError(right)) return right;
    return make<JSCommaNode>(start, left, right);
}

JSParser::Result JSParser::parseAssignment() {
    if (tooDeep()) return error(u"too deep");
    Result left = parseConditional();
    if (isError(left)) return left;
    const Atom* op = matchingOperator(kAssignment);
    if (op == nullptr) return left;
    const Position start = consumeOperator(op->text().length());
    Result right = parseAssignment();
    if (isError(right)) return right;
    return make<JSAssignNode>(start, operatorName(op), left, right);
}

JSParser::Result JSParser::parseConditional() {
    Result condition = parseLogicalOr();
    if (isError(condition) || !startsOperator(u"?")) return condition;
    const Position start = consumeOperator(1);
    Result thenValue = parseAssignment();
    if (isError(thenValue)) return thenValue;
    if (!startsOperator(u":")) return error(u"need :");
    consumeOperator(1);
    Result elseValue = parseAssignment();
    if (isError(elseValue)) return elseValue;
    return make<JSConditionalNode>(start, condition, thenValue, elseValue);
}

JSParser::Result JSParser::parseLogicalOr() {
    return parseRightLevel(kLogicalOr, &JSParser::parseLogicalAnd, &JSParser::parseLogicalOr);
}

JSParser::Result JSParser::parseLogicalAnd() {
    return parseRightLevel(kLogicalAnd, &JSParser::parseBitOr, &JSParser::parseLogicalAnd);
}

JSParser::Result JSParser::parseBitOr() {
    return parseLoopLevel(kBitOr, &JSParser::parseBitXor, parseBitXor());
}

JSParser::Result JSParser::parseBitXor() {
    return parseLoopLevel(kBitXor, &JSParser::parseBitAnd, parseBitAnd());
}

// Quirk: "&", the equalities and the comparisons group to the right: a==b==c is a==(b==c).
JSParser::Result JSParser::parseBitAnd() {
    return parseRightLevel(kBitAnd, &JSParser::parseEquality, &JSParser::parseBitAnd);
}

JSParser::Result JSParser::parseEquality() {
    return parseRightLevel(kEquality, &JSParser::parseRelational, &JSParser::parseEquality);
}

// Quirk: this level has no guard, so that a >>= 2 is a > (absent >= 2), as the guarded level above declines
// ">>=".
JSParser::Result JSParser::parseRelational() {
    return parseRightLevel(kRelational, &JSParser::parseShift, &JSParser::parseRelational);
}

// Quirk: ">>" comes before ">>>" and passes its guard there, so a >>> b is (a >> absent) > b.
JSParser::Result JSParser::parseShift() {
    return parseLoopLevel(kShift, &JSParser::parseAdditive, parseAdditive());
}

JSParser::Result JSParser::parseAdditive() {
    return parseLoopLevel(kAdditive, &JSParser::parseMultiplicative, parseMultiplicative());
}

// Quirk: only the first operand of a chain can be a regular-expression literal.
JSParser::Result JSParser::parseMultiplicative() {
    Result first = startsOperator(u"/") ? parseRegExpLiteral() : parseUnary();
    return parseLoopLevel(kMultiplicative, &JSParser::parseUnary, std::move(first));
}

JSParser::Result JSParser::parseUnary() {
    if (tooDeep()) return error(u"too deep");
    if (kind() == JSTT_RESERVED) {
        for (const WellKnownName name : kUnaryWords) {
            const Atom* word = nameAtom(name);
            if (!(text_ == word->text())) continue;
            const Position start = position();
            nextToken(true);
            Result operand = parseUnary();
            if (isError(operand)) return operand;
            return make<JSUnaryNode>(start, operatorName(word), operand);
        }
    }
    if (const Atom* op = matchingOperator(kUnary)) {
        const Position start = consumeOperator(op->text().length());
        Result operand = parseUnary();
        if (isError(operand)) return operand;
        return make<JSUnaryNode>(start, operatorName(op), operand);
    }
    Result value = parseMemberChain();
    while (!isError(value)) {
        const Atom* op = matchingOperator(kPostfix);
        if (op == nullptr) break;
        const Position start = consumeOperator(op->text().length());
        value = make<JSPostfixNode>(start, operatorName(op), value);
    }
    return value;
}

JSParser::Result JSParser::parseMemberChain() {
    Result value = parsePrimary();
    while (!isError(value)) {
        if (startsOperator(u".")) {
            value = parseMember(std::move(value));
        } else if (isBracket(u"(")) {
            const Position start = position();
            nextToken(true);
            Result arguments = parseArguments();
            if (isError(arguments)) return arguments;
            value = make<JSCallNode>(start, value, arguments);
        } else if (isBracket(u"[")) {
            const Position start = position();
            nextToken(true);
            if (!value) {
                value = parseArrayElements();
                continue;
            }
            Result index = parseIndex();
            if (isError(index)) return index;
            value = make<JSIndexNode>(start, value, index);
        } else {
            break;
        }
    }
    return value;
}

// The member behind a point, with its arguments if it is called.
JSParser::Result JSParser::parseMember(Result object) {
    Position start = consumeOperator(1);
    if (kind() != JSTT_IDENFICATOR) return error(u"need identificator");
    const Name name = tokenName();
    nextToken(false);
    if (!isBracket(u"(")) return make<JSMemberNode>(start, object, name);
    start = position();
    nextToken(true);
    Result arguments = parseArguments();
    if (isError(arguments)) return arguments;
    return make<JSMemberCallNode>(start, object, arguments, name);
}

JSParser::Result JSParser::parsePrimary() {
    switch (kind()) {
        case JSTT_CHAR:
        case JSTT_STRING:
        case JSTT_INT:
        case JSTT_FLOAT:
        case JSTT_HEXINT:
        case JSTT_OCTALINT:
        case JSTT_ZERO:
        case JSTT_BOOL:
        case JSTT_NULL: {
            JSLiteralNode* node = new JSLiteralNode(line(), column(), kind(), text());
            if (node != nullptr && node->text.length() != text().length()) memoryFailed_ = true;
            Result literal = made(node, u"out of memory");
            nextToken(false);
            return literal;
        }
        case JSTT_IDENFICATOR: {
            Result identifier = made(new JSIdentifierNode(line(), column(), tokenName()), u"out of memory");
            nextToken(false);
            return identifier;
        }
        case JSTT_PARENTHESES: {
            if (!text_.equals(u"(")) return Result();
            nextToken(true);
            Result value = parseExpression();
            if (isError(value)) return value;
            if (!isBracket(u")")) return error(u"need )");
            nextToken(false);
            return value;
        }
        default:
            if (kind() < kFirstErrorKind || kind() > kLastErrorKind) return Result();
            return made(new JSErrorNode(line(), column(), kind(), text()));
    }
}

JSParser::Result JSParser::parseIndex() {
    Result value = parseExpression();
    if (isError(value)) return value;
    if (!value) return error(u"need expression");
    if (!isBracket(u"]")) return error(u"need ]");
    nextToken(false);
    return value;
}

JSParser::Result JSParser::parseArguments() {
    return parseElements(Owned<JSEntryListNode>(new JSArgumentsNode(line(), column())), u")");
}

JSParser::Result JSParser::parseArrayElements() {
    return parseElements(Owned<JSEntryListNode>(new JSArrayNode(line(), column())), u"]");
}

JSParser::Result JSParser::parseElements(Owned<JSEntryListNode> list, const char16_t* closingBracket) {
    if (!list) return error(u"Out of Memory");
    for (;;) {
        // Quirk: a regular-expression literal stands here by itself, without operators or members behind it.
        Result element = startsOperator(u"/") ? parseRegExpLiteral() : parseAssignment();
        if (isError(element)) return element;
        if (!element) break;
        if (!list->append(element.get())) return error(u"Out of memory");
        (void)element.take();
        // Quirk: only the text is looked at, so a string literal that starts with a comma separates as well.
        if (!text_.startsWith(u",")) break;
        text_.removePrefix(1);
        if (text_.isEmpty()) nextToken(true);
    }
    while (isLineEnd()) nextToken(false);
    // Quirk: an array literal that is not closed asks for the bracket of a call.
    if (!isBracket(closingBracket)) return error(u"need )");
    nextToken(false);
    return Result(list.take());
}

// The tokenizer has delivered the run of operators that starts with "/"; the characters behind the run are
// unread. Quirk: the rest of the run is no part of the pattern and is lost: /=a/ has the pattern "a".
JSParser::Result JSParser::parseRegExpLiteral() {
    const Position start = position();
    TextBuilder pattern;
    for (;;) {
        char16_t c = readChar(false);
        if (c == u'/') break;
        if (c == u'\n' || c == u'\r') return error(u"Unexpected char");
        if (c == u'\\') {
            pattern.append(c);
            c = readChar(false);
        }
        if (c == kEndOfText) return error(u"Unexpected end of file");
        pattern.append(c);
    }
    if (pattern.failed()) memoryFailed_ = true;
    nextToken(false);
    JSRegExpNode* node = new JSRegExpNode(start.line, start.column, pattern.text());
    if (node != nullptr && node->pattern.length() != pattern.length()) memoryFailed_ = true;
    return made(node);
}

}  // namespace quorvelin
