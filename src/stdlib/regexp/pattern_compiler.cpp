#include "stdlib/regexp/pattern_compiler.h"

#include "foundation/character.h"
#include "foundation/native_stack_guard.h"
#include "stdlib/regexp/escape.h"

namespace quorvelin {

namespace {

constexpr char16_t kDigits[] = u"0123456789";
constexpr char16_t kSpaces[] = u" \f\n\r\t\v";
constexpr char16_t kWordCharacters[] = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";

// The escapes that stand for a set; the upper-case letter negates it.
struct SetEscape {
    char16_t letter;
    const char16_t* members;
};

constexpr SetEscape kSetEscapes[] = {{u'd', kDigits}, {u's', kSpaces}, {u'w', kWordCharacters}};

// The members of a set that is being read, with a quick answer to "is it there already?".
class MemberCollector {
  public:
    explicit MemberCollector(TextBuilder& members) : members_(members) {}

    void add(char16_t c) {
        members_.append(c);
        last_ = c;
        present_[c / 32] |= 1u << (c % 32);
    }

    // Adds each code from `first` to `last` that is not there yet.
    void addRange(int32_t first, int32_t last) {
        for (int32_t code = first; code <= last; ++code) {
            const char16_t c = static_cast<char16_t>(code);
            if ((present_[c / 32] >> (c % 32) & 1) == 0) add(c);
        }
    }

    // The member added last, also when memory for it failed.
    char16_t last() const { return last_; }

  private:
    TextBuilder& members_;
    char16_t last_ = 0;
    uint32_t present_[0x10000 / 32] = {};
};

}  // namespace

int32_t PatternCompiler::compileSequence(int32_t pos, JSPatternNode* current, int32_t groupCount) {
    if (nativeStackIsShort()) return failWith(PatternFailure::stackOverflow);
    Tail tail{current, groupCount};
    // Quirk: a parenthesis that nothing opened ends the pattern as well; what follows it is left out without
    // a word.
    while (pos != -1 && pos < length_ && pattern_[pos] != u')') pos = compileElement(pos, tail);
    markPlainEnding(tail.current);
    return pos;
}

int32_t PatternCompiler::compileElement(int32_t pos, Tail& tail) {
    const char16_t c = pattern_[pos];
    switch (c) {
        case u'^':
            return addNode(ReLineStart, tail.current, tail, pos + 1);
        case u'$':
            return addNode(ReLineEnd, tail.current, tail, pos + 1);
        case u'.':
            return addNode(ReAnyChar, tail.current, tail, pos + 1);
        case u'*':
            return addRepeat(0, kNoLimit, tail, pos + 1);
        case u'+':
            return addRepeat(1, kNoLimit, tail, pos + 1);
        case u'?':
            return compileQuestionMark(pos, tail);
        case u'{':
            return compileBraces(pos, tail);
        case u'[':
            return compileBrackets(pos, tail);
        case u'\\':
            return compileEscape(pos, tail);
        case u'(':
            return compileGroup(pos, tail);
        case u'|':
            return compileAlternative(pos, tail);
        default:
            return addChar(c, tail, pos + 1);
    }
}

// Marks the units at the end of a chain whose last node will not get a `next` any more.
void PatternCompiler::markPlainEnding(JSPatternNode* last) {
    if (last->next != nullptr) return;
    for (JSPatternNode* node = last; node != nullptr && node->isUnit(); node = node->parent) {
        node->isPlainEnding = true;
    }
}

int32_t PatternCompiler::addNode(JSPatternNodeKind kind, JSPatternNode* parent, Tail& tail, int32_t end) {
    JSPatternNode* node = makePatternNode(kind, parent);
    if (node == nullptr) return failWith(PatternFailure::outOfMemory);
    if (!linkNode(node)) {
        // Quirk: a quantifier at the very start has nothing above it. It and all that follows it stay outside
        // the tree, which is then the pattern that matches the empty text. One such chain at most is still
        // growing; a further quantifier starts the next, and nothing leads to the old one any more.
        destroyPattern(matcher_.detached_);
        matcher_.detached_ = node;
    }
    tail.current = node;
    return end;
}

int32_t PatternCompiler::addChar(int32_t value, Tail& tail, int32_t end) {
    end = addNode(ReChar, tail.current, tail, end);
    if (end != -1) tail.current->ch = static_cast<char16_t>(value);
    return end;
}

int32_t PatternCompiler::addSet(JSPatternNodeKind kind, const char16_t* members, int32_t count, Tail& tail,
                                int32_t end) {
    end = addNode(kind, tail.current, tail, end);
    if (end != -1 && !tail.current->setMembers(members, count)) return failWith(PatternFailure::outOfMemory);
    return end;
}

int32_t PatternCompiler::addRepeat(uint32_t min, uint32_t max, Tail& tail, int32_t end) {
    end = addNode(ReRepeatGreedy, tail.current->parent, tail, end);
    if (end != -1) {
        tail.current->min = min;
        tail.current->max = max;
        if (tail.current->body != nullptr) markPlainEnding(tail.current->body);
    }
    return end;
}

int32_t PatternCompiler::compileQuestionMark(int32_t pos, Tail& tail) {
    if (tail.current->kind == ReRepeatGreedy) {
        tail.current->kind = ReRepeatLazy;
        return pos + 1;
    }
    return addRepeat(0, 1, tail, pos + 1);
}

int32_t PatternCompiler::compileBraces(int32_t pos, Tail& tail) {
    // Quirk: only a comma stores a number. So {3} has no counts at all and can never be met, {2,5} has no
    // upper count, and an upper count needs a second comma, which also ends the braces: {2,5,
    uint32_t counts[2] = {kNoLimit, kNoLimit};
    int32_t commas = 0;
    uint32_t number = 0;
    for (++pos;; ++pos) {
        if (pos >= length_) return -1;
        const char16_t c = pattern_[pos];
        if (c == u'}') break;
        if (c == u',') {
            counts[commas++] = number;
            if (commas == 2) break;
            number = 0;
        } else {
            // Quirk: everything else counts as a digit, of a negative value in front of "0" and of -1 behind
            // "9".
            number = number * 10 + (c <= u'9' ? static_cast<uint32_t>(c) - u'0' : kNoLimit);
        }
    }
    return addRepeat(counts[0], counts[1], tail, pos + 1);
}

int32_t PatternCompiler::compileBrackets(int32_t pos, Tail& tail) {
    if (++pos >= length_) return -1;
    // Quirk: empty brackets are as good as not there.
    if (pattern_[pos] == u']') return pos + 1;
    const bool isNegated = pattern_[pos] == u'^';
    if (isNegated) ++pos;
    TextBuilder members;
    const int32_t end = readMembers(pos, members);
    if (end == -1) return -1;
    return addSet(isNegated ? ReNotCharSet : ReCharSet, members.data(), members.length(), tail, end);
}

int32_t PatternCompiler::readMembers(int32_t pos, TextBuilder& members) {
    MemberCollector collector(members);
    bool isRangePending = false;
    bool hasPrevious = false;
    for (; pos < length_; ++pos) {
        char16_t c = pattern_[pos];
        if (c == u']') return members.failed() ? failWith(PatternFailure::outOfMemory) : pos + 1;
        if (c == u'.') {
            // Quirk: a dot in brackets is no dot but nearly every character of Latin-1.
            collector.addRange(1, 255);
            isRangePending = hasPrevious = false;
            continue;
        }
        if (c == u'-' && hasPrevious) {
            isRangePending = true;
            hasPrevious = false;
            continue;
        }
        if (c == u'\\') {
            // Quirk: in brackets \d, \s and \w are just these letters, and \b is a backspace.
            if (pos + 1 >= length_) return -1;
            int32_t consumed = 0;
            c = decodeEscape(pattern_.data() + pos + 1, consumed);
            if (consumed == 0) return -1;
            pos += consumed;
        }
        if (isRangePending) {
            collector.addRange(collector.last() + 1, c);
            isRangePending = hasPrevious = false;
        } else {
            collector.add(c);
            hasPrevious = true;
        }
    }
    return -1;
}

int32_t PatternCompiler::compileEscape(int32_t pos, Tail& tail) {
    if (++pos >= length_) return -1;
    const char16_t c = pattern_[pos];
    for (const SetEscape& escape : kSetEscapes) {
        if (toLowerCase(c) == escape.letter) {
            return addSet(c == escape.letter ? ReCharSet : ReNotCharSet, escape.members,
                          BString::measure(escape.members), tail, pos + 1);
        }
    }
    if (isDecimalDigit(c)) return compileNumberEscape(pos, tail);
    switch (c) {
        case u'b':
            return addNode(ReSpaceEdge, tail.current, tail, pos + 1);
        case u'B':
            return addNode(ReNotSpaceEdge, tail.current, tail, pos + 1);
        case u'c':
            return compileControlEscape(pos, tail);
        case u'u':
            return compileUnicodeEscape(pos, tail);
        default: {
            int32_t consumed = 0;
            const char16_t value = decodeEscape(pattern_.data() + pos, consumed);
            return consumed == 0 ? -1 : addChar(value, tail, pos + consumed);
        }
    }
}

int32_t PatternCompiler::compileControlEscape(int32_t pos, Tail& tail) {
    const char16_t letter = pattern_[pos + 1];  // at the end this is the NUL
    const char16_t lower = toLowerCase(letter);
    if (lower >= u'a' && lower <= u'z') return addChar(lower - u'a' + 1, tail, pos + 2);
    return addChar(u'c', tail, pos + 1);
}

int32_t PatternCompiler::compileNumberEscape(int32_t pos, Tail& tail) {
    const char16_t digit = pattern_[pos];
    const int32_t value = digit - u'0';
    if (value < tail.groupCount || digit >= u'8') {
        uint32_t index = static_cast<uint32_t>(value);
        for (++pos; pos < length_; ++pos) {
            // Quirk: what stands behind the digit is not asked to be a digit; any character whose sum still
            // is the number of a group goes into it.
            const uint32_t longer = index * 10 + pattern_[pos] - u'0';
            if (tail.groupCount <= 0 || longer >= static_cast<uint32_t>(tail.groupCount)) break;
            index = longer;
        }
        const int32_t end = addNode(ReBackReference, tail.current, tail, pos);
        if (end != -1) {
            tail.current->min = index;
            tail.current->max = kNoLimit;
        }
        return end;
    }
    int32_t code = value;
    int32_t furtherDigits = value <= 3 ? 2 : 1;
    // Quirk: when all digits that are allowed were there, the last of them is compiled once more, as a
    // literal: \101 is "A1".
    for (++pos; pos < length_ && isOctalDigit(pattern_[pos]); ++pos) {
        code = code * 8 + (pattern_[pos] - u'0');
        if (--furtherDigits == 0) break;
    }
    return addChar(code, tail, pos);
}

int32_t PatternCompiler::compileUnicodeEscape(int32_t pos, Tail& tail) {
    if (++pos >= length_) return addChar(u'u', tail, pos);
    int32_t code = 0;
    // Quirk: without any digit the escape is a NUL.
    for (int32_t i = 0; i < 4 && hexadecimalDigitValue(pattern_[pos]) >= 0; ++i) {
        code = code * 16 + hexadecimalDigitValue(pattern_[pos++]);
    }
    return addChar(code, tail, pos);
}

int32_t PatternCompiler::compileGroup(int32_t pos, Tail& tail) {
    if (++pos >= length_) return -1;
    JSPatternNodeKind kind = ReCapture;
    if (pattern_[pos] == u'?') {
        if (++pos >= length_) return -1;
        switch (pattern_[pos++]) {
            case u':':
                kind = ReGroup;
                break;
            // Quirk: both look-aheads forbid what they hold.
            case u'!':
            case u'=':
                kind = ReNotLookAhead;
                break;
            default:
                return -1;
        }
    } else {
        ++tail.groupCount;
    }
    pos = addNode(kind, tail.current, tail, pos);
    if (pos == -1) return -1;
    // Quirk: groups are numbered along each chain, not by their parentheses. The inside starts again at the
    // number of the group itself, and what it counts does not come out.
    JSPatternNode* group = tail.current;
    group->min = static_cast<uint32_t>(tail.groupCount) - 1;
    pos = compileSequence(pos, group, tail.groupCount - 1);
    if (pos == -1 || pos >= length_ || pattern_[pos] != u')') return -1;
    group->body = group->next;
    group->next = nullptr;
    return pos + 1;
}

int32_t PatternCompiler::compileAlternative(int32_t pos, Tail& tail) {
    JSPatternNode* divided = tail.current;
    while (divided != nullptr && (divided->kind < ReSearch || divided->body != nullptr))
        divided = divided->parent;
    // Behind a quantifier at the very start there is no group and no root above.
    if (divided == nullptr) return -1;
    markPlainEnding(tail.current);
    return addNode(ReAlternative, divided, tail, pos + 1);
}

}  // namespace quorvelin
