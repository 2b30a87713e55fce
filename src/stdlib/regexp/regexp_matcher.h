// JSRegExpMatcher runs one regular expression over one text; the compiler of patterns is an operation of it
// too.
//
// The dialect is the system's own. What sets the matcher apart: matching a node does not test a position, it
// searches. `matchNode` looks forward from a position for the chain that starts at a node and tells where it
// found it, and each caller decides whether a find at another position will do. There is no stack of
// alternatives to come back to; a caller can only ask again from a later position. The order of the questions
// is part of the dialect, because the captures that a failed branch stored stay.
//
// A run may be endless by the rules of the dialect (a repetition of an empty match; `\b` in front of a
// letter). It takes no more and more memory then, and the host can end it through `setInterrupt`.
#pragma once

#include <cstdint>

#include "foundation/barray.h"
#include "foundation/bstring.h"
#include "stdlib/regexp/pattern_match.h"
#include "stdlib/regexp/pattern_node.h"

namespace quorvelin {

// What a group found last.
struct JSRegExpCapture {
    const JSPatternNode* body;
    BString text;
    uint32_t length;
};

// Why a compilation or a run ended before its time.
enum class PatternFailure : uint8_t { none, stackOverflow, outOfMemory, interrupted };

class JSRegExpMatcher {
  public:
    JSRegExpMatcher() : captures(BArray<JSRegExpCapture*>::Lazy()) {}
    JSRegExpMatcher(const JSRegExpMatcher&) = delete;
    JSRegExpMatcher& operator=(const JSRegExpMatcher&) = delete;
    virtual ~JSRegExpMatcher();

    // The captures of the run, owned. A run only adds and replaces.
    BArray<JSRegExpCapture*> captures;
    bool global = false;  // never read here
    bool ignoreCase = false;
    // Quirk: never read here; `^` and `$` always work on lines, whatever `RegExp.multiline` says.
    bool multiline = false;

    // Compiles `pattern` from `pos` on; new nodes grow from `current`, the tail of the chain being built. The
    // result is the position where compiling ended, or -1 for a faulty pattern; what was built stays under
    // the root, and the caller frees it with `destroyNodes`. The caller starts with a root of kind ReSearch
    // and 0, 0.
    int32_t compilePattern(const BString& pattern, int32_t pos, JSPatternNode* current, int32_t groupCount);

    // Looks from `pos` on (at most the length) for the chain that starts at `node`. On true, `outStart` and
    // `outLength` tell where it was found and `outText` the text of the match. A null node is found at `pos`.
    bool matchNode(const BString& input, uint32_t pos, const JSPatternNode* node, uint32_t& outStart,
                   uint32_t& outLength, BString& outText);

    // Compiles and runs in one step, on the text from `from` on as if it were the whole input, and gives the
    // text of the match. A faulty pattern, and no match, give -1 for both outputs and the empty text. The
    // captures stay from call to call while the pattern is the same.
    BString matchPatternOnce(const BString& input, const BString& pattern, int32_t& outStart,
                             int32_t& outLength, int32_t from = 0);

    // Why the last `compilePattern` gave -1 or the last run false, when that was not the pattern's own doing.
    PatternFailure failure() const { return failure_; }

    // `ask` is called now and then during a run, with `context`; true ends the run without a match. Null, the
    // default, never ends it.
    void setInterrupt(bool (*ask)(void* context), void* context) {
        interrupt_ = ask;
        interruptContext_ = context;
    }

  private:
    friend class PatternCompiler;

    bool compileOnce(const BString& pattern);

    bool run(const char16_t* input, int32_t length, uint32_t pos, const JSPatternNode* node,
             PatternMatch& match);

    // Each looks for the chain that starts at the node from `pos` on.
    bool find(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findSearch(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findUnit(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findLineStart(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findLineEnd(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findRepeat(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findGroup(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findBackReference(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findLookAhead(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findNotLookAhead(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findAlternative(uint32_t pos, const JSPatternNode* node, PatternMatch& out);
    bool findSpaceEdge(uint32_t pos, const JSPatternNode* node, PatternMatch& out);

    // Finds the chain, and at `pos` itself?
    bool findAt(uint32_t pos, const JSPatternNode* node, PatternMatch& out) {
        if (isPlainEnding(node)) return matchPlainEnding(pos, node, out);
        return find(pos, node, out) && out.start() == pos;
    }

    // May the chain be tried at one place? Not without case: then the units of the text need a look of their
    // own.
    bool isPlainEnding(const JSPatternNode* node) const {
        return node != nullptr && node->isPlainEnding && !ignoreCase;
    }
    bool matchPlainEnding(uint32_t pos, const JSPatternNode* node, PatternMatch& out);

    bool accepts(const JSPatternNode* node, char16_t c) const;
    bool equalTexts(const PatternMatch& match, const BString& text) const;
    bool storeCapture(const JSPatternNode* node, const PatternMatch& match);

    uint32_t inputLength() const { return inputLength_; }
    // The unit at `position`, at the length the NUL behind the input.
    char16_t inputAt(uint32_t position) const { return input_[position]; }

    bool fail(PatternFailure failure) {
        failure_ = failure;
        return false;
    }
    bool needMemory(bool success) { return success || fail(PatternFailure::outOfMemory); }

    // One turn of a loop: false when the run is to end.
    bool takeTurn() {
        if ((++turns_ & 0xFF) == 0 && interrupt_ != nullptr && interrupt_(interruptContext_)) {
            fail(PatternFailure::interrupted);
        }
        return failure_ == PatternFailure::none;
    }

    const char16_t* input_ = nullptr;
    uint32_t inputLength_ = 0;
    PatternFailure failure_ = PatternFailure::none;
    bool dropsNewCaptures_ = false;
    uint32_t turns_ = 0;
    bool (*interrupt_)(void*) = nullptr;
    void* interruptContext_ = nullptr;

    // What a quantifier at the start of a pattern left outside the tree, owned (see PatternCompiler).
    JSPatternNode* detached_ = nullptr;
    // The pattern of `matchPatternOnce` and its tree, for the next call and for the captures, which point
    // into it.
    BString oncePattern_;
    JSPatternNode* onceRoot_ = nullptr;
};

}  // namespace quorvelin
