// The compiler of regular expressions: one pass over the pattern text, one small routine per construct.
//
// The dialect looks like the common one and differs in many corners (braces, look-ahead, the numbers of
// groups, sets, octal escapes). Nothing is an error that the compiler can give a meaning to.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/text_builder.h"
#include "stdlib/regexp/pattern_node.h"
#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {

class PatternCompiler {
  public:
    // Failures and nodes that end up unconnected go to `matcher`.
    PatternCompiler(JSRegExpMatcher& matcher, const BString& pattern)
        : matcher_(matcher), pattern_(pattern), length_(pattern.length()) {}

    // As `JSRegExpMatcher::compilePattern`. Goes down once per group, not per element.
    int32_t compileSequence(int32_t pos, JSPatternNode* current, int32_t groupCount);

  private:
    // Where the sequence stands: the tail of the chain, and how many groups it counts.
    struct Tail {
        JSPatternNode* current;
        int32_t groupCount;
    };

    // Each takes the position of the construct, extends the chain, and gives the position behind it or -1.
    int32_t compileElement(int32_t pos, Tail& tail);
    int32_t compileQuestionMark(int32_t pos, Tail& tail);
    int32_t compileBraces(int32_t pos, Tail& tail);
    int32_t compileBrackets(int32_t pos, Tail& tail);
    int32_t compileEscape(int32_t pos, Tail& tail);
    int32_t compileControlEscape(int32_t pos, Tail& tail);
    int32_t compileNumberEscape(int32_t pos, Tail& tail);
    int32_t compileUnicodeEscape(int32_t pos, Tail& tail);
    int32_t compileGroup(int32_t pos, Tail& tail);
    int32_t compileAlternative(int32_t pos, Tail& tail);

    // Makes a node and links it. Each gives `end`, where the sequence goes on, or -1 without memory.
    int32_t addNode(JSPatternNodeKind kind, JSPatternNode* parent, Tail& tail, int32_t end);
    int32_t addChar(int32_t value, Tail& tail, int32_t end);
    int32_t addSet(JSPatternNodeKind kind, const char16_t* members, int32_t count, Tail& tail, int32_t end);
    int32_t addRepeat(uint32_t min, uint32_t max, Tail& tail, int32_t end);

    static void markPlainEnding(JSPatternNode* last);

    // Reads the members of a set up to its `]`; the position behind it, or -1.
    [[gnu::noinline]] int32_t readMembers(int32_t pos, TextBuilder& members);

    int32_t failWith(PatternFailure failure) {
        matcher_.fail(failure);
        return -1;
    }

    JSRegExpMatcher& matcher_;
    const BString& pattern_;
    const int32_t length_;
};

}  // namespace quorvelin
