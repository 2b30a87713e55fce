#include "stdlib/regexp/regexp_matcher.h"

#include <new>
#include <utility>

#include "foundation/character.h"
#include "foundation/native_stack_guard.h"
#include "host/allocator.h"
#include "stdlib/regexp/pattern_compiler.h"

namespace quorvelin {

namespace {

bool isLineBreak(char16_t c) {
    return c == u'\n' || c == u'\r';
}

void destroyCapture(JSRegExpCapture* capture) {
    capture->~JSRegExpCapture();
    _sfree(capture);
}

// Watches the turns of a loop that may be endless because it does not move. After so many of them the
// captures that the turns still add can only fill the memory: references reach the first few, and those are
// replaced.
class StandingTurns {
  public:
    explicit StandingTurns(bool& dropsNewCaptures) : flag_(dropsNewCaptures), before_(dropsNewCaptures) {}
    StandingTurns(const StandingTurns&) = delete;
    StandingTurns& operator=(const StandingTurns&) = delete;
    ~StandingTurns() { flag_ = before_; }

    void count() {
        if (turns_ < kMany) {
            ++turns_;
        } else {
            flag_ = true;
        }
    }
    void restart() {
        turns_ = 0;
        flag_ = before_;
    }

  private:
    static constexpr uint32_t kMany = 65536;

    bool& flag_;
    const bool before_;
    uint32_t turns_ = 0;
};

}  // namespace

JSRegExpMatcher::~JSRegExpMatcher() {
    while (captures.count() > 0) destroyCapture(captures.eraseLast());
    destroyPattern(detached_);
    destroyPattern(onceRoot_);
}

int32_t JSRegExpMatcher::compilePattern(const BString& pattern, int32_t pos, JSPatternNode* current,
                                        int32_t groupCount) {
    failure_ = PatternFailure::none;
    return PatternCompiler(*this, pattern).compileSequence(pos, current, groupCount);
}

bool JSRegExpMatcher::run(const char16_t* input, int32_t length, uint32_t pos, const JSPatternNode* node,
                          PatternMatch& match) {
    failure_ = PatternFailure::none;
    input_ = input;
    inputLength_ = static_cast<uint32_t>(length);
    return find(pos, node, match) && failure_ == PatternFailure::none;
}

bool JSRegExpMatcher::matchNode(const BString& input, uint32_t pos, const JSPatternNode* node,
                                uint32_t& outStart, uint32_t& outLength, BString& outText) {
    PatternMatch match;
    if (!run(input.data(), input.length(), pos, node, match)) return false;
    outStart = match.start();
    outLength = match.length();
    return needMemory(outText.assign(match.units(input_), static_cast<int32_t>(match.length())));
}

BString JSRegExpMatcher::matchPatternOnce(const BString& input, const BString& pattern, int32_t& outStart,
                                          int32_t& outLength, int32_t from) {
    outStart = outLength = -1;
    BString text;
    if ((onceRoot_ == nullptr || !(oncePattern_ == pattern)) && !compileOnce(pattern)) return text;
    PatternMatch match;
    if (!run(input.data() + from, input.length() - from, 0, onceRoot_, match)) return text;
    const int32_t length = static_cast<int32_t>(match.length());
    if (!needMemory(text.assign(match.units(input_), length))) return text;
    outStart = static_cast<int32_t>(match.start());
    outLength = length;
    return text;
}

bool JSRegExpMatcher::compileOnce(const BString& pattern) {
    while (captures.count() > 0) destroyCapture(captures.eraseLast());
    destroyPattern(std::exchange(onceRoot_, makePatternNode(ReSearch, nullptr)));
    if (onceRoot_ == nullptr || !oncePattern_.assign(pattern.data(), pattern.length())) {
        return fail(PatternFailure::outOfMemory);
    }
    if (compilePattern(pattern, 0, onceRoot_, 0) != -1) return true;
    destroyPattern(std::exchange(onceRoot_, nullptr));
    return false;
}

bool JSRegExpMatcher::find(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    if (node == nullptr) {
        out.setEmpty(pos);
        return true;
    }
    if (!takeTurn()) return false;
    if (nativeStackIsShort()) return fail(PatternFailure::stackOverflow);
    switch (node->kind) {
        case ReLineStart:
            return findLineStart(pos, node, out);
        case ReLineEnd:
            return findLineEnd(pos, node, out);
        case ReRepeatGreedy:
        case ReRepeatLazy:
            return findRepeat(pos, node, out);
        case ReAnyChar:
        case ReCharSet:
        case ReNotCharSet:
        case ReChar:
            return findUnit(pos, node, out);
        case ReSpaceEdge:
        case ReNotSpaceEdge:
            return findSpaceEdge(pos, node, out);
        case ReBackReference:
            return findBackReference(pos, node, out);
        case ReSearch:
            return findSearch(pos, node, out);
        case ReCapture:
        case ReGroup:
            return findGroup(pos, node, out);
        case ReLookAhead:
            return findLookAhead(pos, node, out);
        case ReNotLookAhead:
            return findNotLookAhead(pos, node, out);
        case ReAlternative:
            return findAlternative(pos, node, out);
    }
    return false;
}

bool JSRegExpMatcher::findSearch(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    // Quirk: the end of the input is not tried, so nothing is ever found in an empty text.
    for (; pos < inputLength() && takeTurn(); ++pos) {
        if (find(pos, node->next, out)) return true;
    }
    return false;
}

bool JSRegExpMatcher::findUnit(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    const uint32_t length = inputLength();
    for (; pos < length; ++pos) {
        const char16_t c = inputAt(pos);
        if (!accepts(node, c)) continue;
        if (findAt(pos + 1, node->next, out)) {
            // Quirk: without case, a literal puts its own case into the text of the match.
            return needMemory(out.prepend(input_, node->kind == ReChar ? node->ch : c));
        }
        if (failure_ != PatternFailure::none) return false;
    }
    return false;
}

bool JSRegExpMatcher::matchPlainEnding(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    uint32_t end = pos;
    for (; node != nullptr; node = node->next, ++end) {
        if (end >= inputLength() || !accepts(node, inputAt(end))) return false;
    }
    out.setPart(pos, end - pos);
    return true;
}

bool JSRegExpMatcher::accepts(const JSPatternNode* node, char16_t c) const {
    switch (node->kind) {
        case ReChar:
            return c == node->ch || (ignoreCase && toLowerCase(c) == toLowerCase(node->ch));
        case ReAnyChar:
            return c != u'\n';
        default: {
            // Quirk: a NUL is in every set, but in none without case.
            const bool isMember =
                ignoreCase ? c != 0 && (node->hasMember(toLowerCase(c)) || node->hasMember(toUpperCase(c)))
                           : node->hasMember(c);
            return isMember == (node->kind == ReCharSet);
        }
    }
}

bool JSRegExpMatcher::findLineStart(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    if (pos >= inputLength() || pos == 0 || isLineBreak(inputAt(pos - 1))) {
        if (findAt(pos, node->next, out)) return true;
    }
    // Quirk: further lines begin behind a line feed only, and a NUL ends the look for one.
    for (;; ++pos) {
        const char16_t c = inputAt(pos);
        if (c == 0) return false;
        if (c != u'\n') continue;
        if (findAt(pos + 1, node->next, out)) return true;
        if (!takeTurn()) return false;
    }
}

bool JSRegExpMatcher::findLineEnd(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    const uint32_t length = inputLength();
    // Quirk: the end of the input counts only here, when the search is there already: `$` alone finds nothing
    // in a text of one line.
    if (pos >= length || inputAt(pos) == u'\n' ||
        (inputAt(pos) == u'\r' && pos + 1 < length && inputAt(pos + 1) == u'\n')) {
        if (findAt(pos, node->next, out)) return true;
    }
    for (;; ++pos) {
        uint32_t lineEnd = pos;
        while (inputAt(lineEnd) != u'\n') {
            if (inputAt(lineEnd) == 0) return false;
            ++lineEnd;
        }
        if (lineEnd > pos + 1 && inputAt(lineEnd - 1) == u'\r') --lineEnd;
        if (findAt(lineEnd, node->next, out)) return true;
        if (!takeTurn()) return false;
        pos = lineEnd;
    }
}

bool JSRegExpMatcher::findRepeat(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    // What the iterations have found so far; the position is its end.
    // Quirk: what the body found in an iteration stands; it is never asked for another find there.
    PatternMatch sofar;
    sofar.setEmpty(pos);
    uint32_t at = pos;
    PatternMatch turn;
    uint32_t count = 0;
    StandingTurns standing(dropsNewCaptures_);
    const auto iterate = [&] {
        if (!takeTurn() || !findAt(at, node->body, turn)) return false;
        at += turn.length();
        ++count;
        if (turn.length() == 0) {
            standing.count();
        } else {
            standing.restart();
        }
        return needMemory(sofar.append(input_, turn));
    };

    if (node->min != 0) {
        do {
            if (!iterate()) return false;
        } while (count < node->min);
    }

    PatternMatch rest;
    bool hasRest = false;
    // A plain ending that was found further on is still the next one from here.
    const auto findRest = [&] {
        hasRest = (hasRest && rest.start() >= at && isPlainEnding(node->next)) || find(at, node->next, rest);
        return hasRest;
    };
    if (!findRest()) return false;
    PatternMatch bestRest;
    uint32_t bestLength = 0;
    bool isFound = false;
    do {
        if (rest.start() == at) {
            isFound = true;
            bestLength = sofar.length();
            std::swap(bestRest, rest);
            hasRest = false;
            if (node->kind == ReRepeatLazy) break;
        }
    } while (count < node->max && iterate() && findRest());
    if (!isFound || failure_ != PatternFailure::none) return false;

    sofar.truncate(bestLength);
    std::swap(out, sofar);
    return needMemory(out.append(input_, bestRest));
}

bool JSRegExpMatcher::findGroup(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    if (!find(pos, node->body, out)) return false;
    PatternMatch rest;
    while (!findAt(out.end(), node->next, rest)) {
        if (out.start() >= inputLength() || !takeTurn()) return false;
        if (!find(out.start() + 1, node->body, out)) return false;
    }
    if (node->kind == ReCapture && !storeCapture(node, out)) return false;
    return needMemory(out.append(input_, rest));
}

bool JSRegExpMatcher::storeCapture(const JSPatternNode* node, const PatternMatch& match) {
    const bool replaces = node->min < static_cast<uint32_t>(captures.count());
    if (!replaces && dropsNewCaptures_) return true;

    void* block = _smalloc(sizeof(JSRegExpCapture));
    if (block == nullptr) return fail(PatternFailure::outOfMemory);
    JSRegExpCapture* capture = new (block) JSRegExpCapture{node->body, BString(), match.length()};
    // Quirk: an index that is not there yet just means the end. So of a chain of groups, whose last one
    // stores first, about half the captures get lost.
    if (!capture->text.assign(match.units(input_), static_cast<int32_t>(match.length())) ||
        (!replaces && !captures.append(capture))) {
        destroyCapture(capture);
        return fail(PatternFailure::outOfMemory);
    }
    if (replaces) {
        JSRegExpCapture*& place = captures.at(static_cast<int32_t>(node->min));
        destroyCapture(place);
        place = capture;
    }
    return true;
}

bool JSRegExpMatcher::findBackReference(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    if (node->min >= static_cast<uint32_t>(captures.count())) return find(pos, node->next, out);

    // Quirk: the reference runs the pattern of the group again and asks whether that found the same text. A
    // run of it may replace the capture, so what it is compared with is kept here.
    const JSPatternNode* body = captures.at(static_cast<int32_t>(node->min))->body;
    BString text;
    const BString& captured = captures.at(static_cast<int32_t>(node->min))->text;
    if (!needMemory(text.assign(captured.data(), captured.length()))) return false;

    if (!find(pos, body, out)) return false;
    PatternMatch rest;
    // Quirk: where the rest has to begin is worked out with the length of the rest instead of the length of
    // the reference, so the two must be equally long.
    while (!(equalTexts(out, text) && find(out.end(), node->next, rest) &&
             rest.start() == out.start() + rest.length())) {
        if (out.start() >= inputLength() || !takeTurn()) return false;
        if (!find(out.start() + 1, body, out)) return false;
    }
    return needMemory(out.setText(input_, text) && out.append(input_, rest));
}

bool JSRegExpMatcher::equalTexts(const PatternMatch& match, const BString& text) const {
    if (match.length() != static_cast<uint32_t>(text.length())) return false;
    const char16_t* units = match.units(input_);
    for (int32_t i = 0; i < text.length(); ++i) {
        if (units[i] != text[i] && !(ignoreCase && toLowerCase(units[i]) == toLowerCase(text[i])))
            return false;
    }
    return true;
}

bool JSRegExpMatcher::findLookAhead(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    PatternMatch body;
    if (!find(pos, node->body, body)) return false;
    while (!findAt(body.start(), node->next, out)) {
        if (body.start() >= inputLength() || !takeTurn()) return false;
        if (!find(body.start() + 1, node->body, body)) return false;
    }
    return true;
}

bool JSRegExpMatcher::findNotLookAhead(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    // The continuation is found first, and what must not be there is looked for where it begins.
    if (!find(pos, node->next, out)) return false;
    PatternMatch body;
    while (findAt(out.start(), node->body, body)) {
        if (out.start() >= inputLength() || !takeTurn()) return false;
        if (!find(out.start() + 1, node->next, out)) return false;
    }
    return true;
}

bool JSRegExpMatcher::findAlternative(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    // Quirk: both sides always run, and of two finds at the same place the right one is taken, however long.
    PatternMatch left;
    const bool rightIsFound = find(pos, node->next, out);
    const bool leftIsFound = find(pos, node->body, left);
    if (leftIsFound && (!rightIsFound || left.start() < out.start())) std::swap(out, left);
    return leftIsFound || rightIsFound;
}

bool JSRegExpMatcher::findSpaceEdge(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
    const bool wantsSpace = node->kind == ReSpaceEdge;
    if (pos >= inputLength()) return wantsSpace && findAt(pos, node->next, out);
    // Quirk: the position does not move. When the character is not of the wanted kind, or the continuation is
    // not found right here, only an interrupt ends the run.
    StandingTurns standing(dropsNewCaptures_);
    while (!(isSpace(inputAt(pos)) == wantsSpace && findAt(pos, node->next, out))) {
        if (!takeTurn()) return false;
        standing.count();
    }
    return true;
}

}  // namespace quorvelin
