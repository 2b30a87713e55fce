#include "frontend/tokenizer.h"

#include <algorithm>
#include <string_view>

#include "foundation/character.h"

namespace quorvelin {

namespace {

constexpr char16_t kLineFeed = 10;
constexpr char16_t kCarriageReturn = 13;
constexpr char16_t kTab = 9;

bool isLineEndCharacter(char16_t c) {
    return c == kLineFeed || c == kCarriageReturn;
}

int32_t columnBehindTab(int32_t column) {
    return (column & ~7) + 8;
}

bool isRunCharacter(char16_t c) {
    switch (c) {
        case u'!':
        case u'%':
        case u'&':
        case u'*':
        case u'+':
        case u'-':
        case u'/':
        case u'<':
        case u'=':
        case u'>':
        case u'^':
        case u'|':
            return true;
        default:
            return false;
    }
}

// In the order of their units, for the search. "true", "false" and "null" are told apart before it.
constexpr std::u16string_view kReservedWords[] = {
    u"abstract", u"boolean",      u"break",    u"byte",       u"case",      u"catch",  u"char",
    u"class",    u"const",        u"continue", u"default",    u"delete",    u"do",     u"double",
    u"else",     u"extends",      u"false",    u"final",      u"finally",   u"float",  u"for",
    u"function", u"goto",         u"if",       u"implements", u"import",    u"in",     u"instanceof",
    u"int",      u"interface",    u"long",     u"native",     u"new",       u"null",   u"package",
    u"private",  u"protected",    u"public",   u"return",     u"short",     u"static", u"super",
    u"switch",   u"synchronized", u"throw",    u"throws",     u"transient", u"true",   u"try",
    u"typeof",   u"var",          u"void",     u"while",      u"with"};

static_assert(std::size(kReservedWords) == 54);

}  // namespace

bool JSTokenizer::continuesStatement(char16_t c) {
    return std::u16string_view(u"%^&*={[]}|\\:,<>./?").find(c) != std::u16string_view::npos;
}

int32_t JSTokenizer::classifyWord(const BString& word) const {
    const std::u16string_view view(word.data(), static_cast<size_t>(word.length()));
    const bool reserved = std::binary_search(std::begin(kReservedWords), std::end(kReservedWords), view);
    return reserved ? JSTT_RESERVED : JSTT_IDENFICATOR;
}

int32_t JSTokenizer::nextToken(bool skipLineEnds) {
    do {
        kind_ = scanToken();
    } while (skipLineEnds && isLineEnd());
    return kind_;
}

// ---- Characters ----

char16_t JSTokenizer::readChar(bool rawLineEnd) {
    if (readIndex_ == writeIndex_) putRecord(fetch(rawLineEnd));
    const CharacterRecord& record = ring_[readIndex_];
    current_ = record.character;
    column_ = record.column;
    line_ = record.line;
    // The end of the text stays in the ring, so that every further read finds it again.
    if (current_ != kEndOfText) readIndex_ = (readIndex_ + 1) % kRingSize;
    return current_;
}

void JSTokenizer::unreadChar() {
    if (current_ != kEndOfText) readIndex_ = (readIndex_ + kRingSize - 1) % kRingSize;
    current_ = 0;
}

void JSTokenizer::putRecord(char16_t character) {
    ring_[writeIndex_] = {character, line_, column_};
    writeIndex_ = (writeIndex_ + 1) % kRingSize;
}

char16_t JSTokenizer::fetch(bool rawLineEnd) {
    const char16_t c = stream_->readChar();
    switch (c) {
        case 0:
        case kEndOfStream:
            return kEndOfText;
        case kTab:
            column_ = columnBehindTab(column_);
            return u' ';
        case kLineFeed:
        case kCarriageReturn:
            finishLineEnd(c);
            return rawLineEnd ? kLineFeed : lookBehindLineEnd();
        default:
            ++column_;
            return c;
    }
}

// A line feed and a carriage return next to each other, in either order, are one line end.
void JSTokenizer::finishLineEnd(char16_t first) {
    const char16_t second = stream_->readChar();
    if (!isLineEndCharacter(second) || second == first) stream_->unreadChar(second);
    ++line_;
    column_ = 0;
}

// What to deliver for a line end: the line end itself, or the character behind it that makes it vanish.
char16_t JSTokenizer::lookBehindLineEnd() {
    for (;;) {
        const char16_t c = stream_->readChar();
        if (isLineEndCharacter(c)) {
            finishLineEnd(c);
        } else if (c == u' ') {
            ++column_;
        } else if (c == kTab) {
            column_ = columnBehindTab(column_);
        } else if (c == 0 || c == kEndOfStream) {
            return kEndOfText;
        } else {
            // Quirk: also the character that is pushed back here is counted, and counted again when it is
            // read, so that the first character behind a kept line end stands at column 2.
            ++column_;
            if (c == u'+' || c == u'-') {
                const char16_t following = stream_->readChar();
                stream_->unreadChar(following);
                // A line that starts with ++ or -- is a statement of its own.
                if (following == c) putRecord(kLineFeed);
                return c;
            }
            if (continuesStatement(c)) return c;
            stream_->unreadChar(c);
            return kLineFeed;
        }
    }
}

// ---- Tokens ----

int32_t JSTokenizer::finish(int32_t kind) {
    if (scanned_.failed()) memoryFailed_ = true;
    setText(scanned_.data(), scanned_.length());
    return kind;
}

int32_t JSTokenizer::finishCharacter(int32_t kind, char16_t character) {
    setText(&character, 1);
    return kind;
}

void JSTokenizer::setText(const char16_t* units, int32_t length) {
    if (!text_.assign(units, length)) memoryFailed_ = true;
}

int32_t JSTokenizer::scanToken() {
    scanned_.clear();
    for (;;) {
        const char16_t c = readChar(false);
        switch (c) {
            case u' ':
                continue;
            case u'/': {
                const char16_t following = readChar(false);
                if (following == u'*') {
                    skipBlockComment();
                    continue;
                }
                if (following == u'/') {
                    skipLineComment();
                    continue;
                }
                unreadChar();
                return scanOperatorRun(c);
            }
            case kLineFeed:
            case kCarriageReturn:
                return finishCharacter(JSTT_OPERSEPARATOR, kLineFeed);
            case u';':
                return finishCharacter(JSTT_OPERSEPARATOR, c);
            case kEndOfText:
                return JSTT_EOF;  // the text stays that of the token before
            case u',':
            case u':':
            case u'?':
            case u'~':
                return finishCharacter(JSTT_OPERATORS, c);
            case u'(':
            case u')':
            case u'[':
            case u']':
            case u'{':
            case u'}':
                return finishCharacter(JSTT_PARENTHESES, c);
            case u'"':
            case u'\'':
                return scanString(c);
            case u'0':
                return scanZero();
            case u'.':
                return scanPoint();
            default:
                break;
        }
        if (isRunCharacter(c)) return scanOperatorRun(c);
        if (isDecimalDigit(c)) {
            unreadChar();
            return scanDecimal(false);
        }
        return scanWord(c);
    }
}

void JSTokenizer::skipLineComment() {
    char16_t c;
    do {
        c = readChar(true);
    } while (c != kLineFeed && c != kEndOfText);
    // The line end is delivered as a token: it was read raw and comes back without a look-ahead.
    unreadChar();
}

void JSTokenizer::skipBlockComment() {
    char16_t previous = 0;
    for (;;) {
        const char16_t c = readChar(false);
        if (c == kEndOfText || (c == u'/' && previous == u'*')) return;
        previous = c;
    }
}

int32_t JSTokenizer::scanOperatorRun(char16_t first) {
    scanned_.append(first);
    for (char16_t previous = first;;) {
        const char16_t c = readChar(false);
        if (previous == u'/' && (c == u'/' || c == u'*')) {
            if (c == u'/') {
                skipLineComment();
            } else {
                skipBlockComment();
            }
            scanned_.dropLast();
            return finish(JSTT_OPERATORS);
        }
        if (!isRunCharacter(c)) {
            unreadChar();
            return finish(JSTT_OPERATORS);
        }
        scanned_.append(c);
        previous = c;
    }
}

int32_t JSTokenizer::scanString(char16_t quote) {
    const int32_t unterminated =
        quote == u'\'' ? JSTT_ERROR_NEEDSINGLEQUOTATION : JSTT_ERROR_NEEDDOUBLEQUOTATION;
    for (;;) {
        char16_t c = readChar(false);
        if (c == quote) return finish(JSTT_STRING);
        if (isLineEndCharacter(c) || c == kEndOfText) return finish(unterminated);
        // Quirk: the quote of the other kind is dropped from the string unless it is escaped.
        if (c == u'"' || c == u'\'') continue;
        if (c != u'\\') {
            scanned_.append(c);
            continue;
        }
        c = readChar(false);
        switch (c) {
            case kLineFeed:
            case kCarriageReturn:
            case kEndOfText:
                return finish(unterminated);
            case u'a':
                scanned_.append(char16_t{7});
                break;
            case u'b':
                scanned_.append(char16_t{8});
                break;
            case u'f':
                scanned_.append(char16_t{12});
                break;
            case u'n':
                scanned_.append(char16_t{10});
                break;
            case u'r':
                scanned_.append(char16_t{13});
                break;
            case u't':
                scanned_.append(char16_t{9});
                break;
            case u'v':
                scanned_.append(char16_t{11});
                break;
            case u'x':
                scanHexadecimalEscape();
                break;
            default:
                if (isOctalDigit(c)) {
                    scanOctalEscape();
                } else {
                    scanned_.append(c);
                }
        }
    }
}

// Quirk: a third digit is looked at, and read again as a character of the string in any case; it counts into
// the value only while that stays within 0xFF. So \x41B is "AB", and \x0ff is the character 0xFF followed by
// "f".
void JSTokenizer::scanHexadecimalEscape() {
    int32_t value = 0;
    for (int32_t count = 0; count < 3; ++count) {
        const int32_t digit = hexadecimalDigitValue(readChar(false));
        if (digit < 0) break;
        value = value * 16 + digit;
        if (value > 0xFF) {
            value >>= 4;
            break;
        }
    }
    unreadChar();
    scanned_.append(static_cast<char16_t>(value));
}

// Quirk: the digit behind the backslash selects the escape but does not count, so \101 is the character 1;
// and a third digit is read again as with hexadecimal escapes.
void JSTokenizer::scanOctalEscape() {
    int32_t value = 0;
    for (int32_t count = 0; count < 3; ++count) {
        const char16_t c = readChar(false);
        if (!isOctalDigit(c)) break;
        value = value * 8 + (c - u'0');
        if (value > 0xFF) {
            value >>= 3;
            break;
        }
    }
    unreadChar();
    scanned_.append(static_cast<char16_t>(value));
}

int32_t JSTokenizer::scanZero() {
    scanned_.append(u'0');
    char16_t c = readChar(false);
    if (c == u'x' || c == u'X') {
        do {
            scanned_.append(c);
            c = readChar(false);
        } while (hexadecimalDigitValue(c) >= 0);
        unreadChar();
        return finish(JSTT_HEXINT);
    }
    if (isOctalDigit(c)) {
        do {
            scanned_.append(c);
            c = readChar(false);
        } while (isOctalDigit(c));
        unreadChar();
        return finish(JSTT_OCTALINT);
    }
    if (c == u'.') {
        c = readChar(false);
        unreadChar();
        // Quirk: a point that no digit follows is lost, so that 0.x is the number 0 and the name x.
        if (!isDecimalDigit(c)) return finish(JSTT_ZERO);
        scanned_.clear();
        scanned_.append(u'.');
        return scanDecimal(true);
    }
    unreadChar();
    return finish(JSTT_ZERO);
}

int32_t JSTokenizer::scanPoint() {
    scanned_.append(u'.');
    const char16_t c = readChar(false);
    unreadChar();
    return isDecimalDigit(c) ? scanDecimal(true) : finish(JSTT_OPERATORS);
}

int32_t JSTokenizer::scanDecimal(bool pointSeen) {
    bool exponentSeen = false;
    bool signAllowed = false;
    for (;;) {
        const char16_t c = readChar(false);
        bool taken = true;
        if (isDecimalDigit(c)) {
            // Quirk: a digit does not end the place for the exponent's sign, so 1e5-3 is one token.
        } else if (c == u'.') {
            taken = !pointSeen && !exponentSeen;
            pointSeen = pointSeen || taken;
        } else if (c == u'e' || c == u'E') {
            taken = !exponentSeen;
            if (taken) exponentSeen = signAllowed = true;
        } else if (c == u'+' || c == u'-') {
            taken = signAllowed;
            signAllowed = false;
        } else {
            taken = false;
        }
        if (!taken) break;
        scanned_.append(c);
    }
    unreadChar();
    return finish(pointSeen || exponentSeen ? JSTT_FLOAT : JSTT_INT);
}

namespace {

bool startsWord(char16_t c) {
    return isAlphabetic(c) || c == u'_' || c == u'$';
}

}  // namespace

void JSTokenizer::readIdentifierTail(char16_t first) {
    char16_t c = first;
    do {
        scanned_.append(c);
        c = readChar(false);
    } while (startsWord(c) || isDecimalDigit(c));
    unreadChar();
}

int32_t JSTokenizer::scanWord(char16_t first) {
    if (!startsWord(first)) return finishCharacter(JSTT_ERROR_UNEXPECTEDCHAR, first);
    readIdentifierTail(first);
    finish(JSTT_IDENFICATOR);
    if (text_.equals(u"true") || text_.equals(u"false")) return JSTT_BOOL;
    if (text_.equals(u"null")) return JSTT_NULL;
    return classifyWord(text_);
}

}  // namespace quorvelin
