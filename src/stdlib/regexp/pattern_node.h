// The tree that a regular expression is compiled to and that the matcher walks. There is no other compiled
// form.
//
// A sequence is a chain through `next` that starts at the root's `next`. A quantifier takes the place of its
// atom in the chain and keeps the atom in `body`; a group keeps its inside in `body` and goes on in `next`;
// an alternative has its left side in `body` and its right side in `next`.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

// The order counts: from ReSearch on, a node can be the one that a `|` divides.
enum JSPatternNodeKind : int32_t {
    ReLineStart = 0,
    ReLineEnd = 1,
    ReRepeatGreedy = 2,
    ReRepeatLazy = 3,
    ReAnyChar = 4,
    ReCharSet = 5,
    ReNotCharSet = 6,
    ReSpaceEdge = 7,
    ReNotSpaceEdge = 8,
    ReChar = 9,
    ReBackReference = 10,
    ReSearch = 11,  // the root; no pattern text makes one
    ReCapture = 12,
    ReGroup = 13,
    ReLookAhead = 14,  // no pattern text makes one
    ReNotLookAhead = 15,
    ReAlternative = 16
};

// No upper limit of a repetition; also what braces hold where they set nothing.
inline constexpr uint32_t kNoLimit = 0xFFFFFFFFu;

struct JSPatternNode {
    explicit JSPatternNode(JSPatternNodeKind nodeKind = ReSearch) : kind(nodeKind) {}

    JSPatternNodeKind kind;
    JSPatternNode* parent = nullptr;
    JSPatternNode* next = nullptr;  // owned
    JSPatternNode* body = nullptr;  // owned
    BString text;                   // members of a set, in the order in which they were added
    uint32_t min = 0;               // repetition: lower count; group or reference: its index
    uint32_t max = 0;               // repetition: upper count
    char16_t ch = 0;                // ReChar

    // This node and all that follow it take one unit of the input each, whatever happened before. Such an
    // ending can be tried at one place: looking further would leave no trace.
    bool isPlainEnding = false;

    // Takes one unit of the input?
    bool isUnit() const { return kind == ReChar || (kind >= ReAnyChar && kind <= ReNotCharSet); }

    // Makes `members` the set's text. False without memory.
    bool setMembers(const char16_t* members, int32_t count);

    // Is `c` in the set? As a search of the C library in the text would find it: it ends at the first NUL,
    // and that it finds as well. Quirk: so a NUL is in every set.
    bool hasMember(char16_t c) const {
        return c < 256 ? (latinMembers_[c / 32] >> (c % 32) & 1) != 0 : hasMemberBeyondLatin(c);
    }

  private:
    bool hasMemberBeyondLatin(char16_t c) const;

    uint32_t latinMembers_[8] = {1};  // a bit for each member up to 255, as `hasMember` sees them
};

// A node from the allocator, or null.
JSPatternNode* makePatternNode(JSPatternNodeKind kind, JSPatternNode* parent);

// Attaches a new node to the node that its `parent` names; without one nothing happens and the answer is
// false. What the parent had as `next` becomes the body of the new node: that is how a quantifier gets its
// atom.
bool linkNode(JSPatternNode* node);

// Frees everything under `node` and its text, but not the record itself, which may be the owner's own. Takes
// no native stack that grows with the tree.
void destroyNodes(JSPatternNode* node);

// The same, and frees the record too; null is allowed.
void destroyPattern(JSPatternNode* node);

}  // namespace quorvelin
