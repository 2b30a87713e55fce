// Saved trees: reading a tree from a stream.
//
// A byte of the format is one character of the stream, of which the low eight bits count; numbers are
// little-endian. There is no version, length or checksum, and the reader reports nothing: what it does not
// understand is an absent child, and a tree that is damaged fails when it is checked or run. A stream that
// ends early reads as zeros and absent children, and no count in it makes the reader take more memory than
// the stream can deliver.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "frontend/node.h"

namespace quorvelin {

// The first character of a stream that holds a saved tree.
inline constexpr char16_t kSavedTreeMarker = 1;

// Reads a tag and what it demands. Null for a tag that stands for no class and at the end of the stream, and
// when memory failed for any part of the tree; the result carries a reference for the caller. A tree that
// nests too deeply for the native stack gives a JSErrorNode at that place.
JSNode* readNode(IBStream* stream);

// Reads a text: a count of units and the units, of which the text ends at the first zero.
BString readText(IBStream* stream);

}  // namespace quorvelin
