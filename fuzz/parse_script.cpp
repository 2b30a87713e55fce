// Any text through the front end: parsed, written back, saved and loaded. A tree that was saved once is saved
// again as the same bytes.
#include <cstdint>
#include <cstring>

#include "foundation/stream.h"
#include "frontend/parser.h"
#include "frontend/tree_reader.h"
#include "frontend/tree_writer.h"

namespace quorvelin {
namespace {

// The first byte tells whether the others are units of one byte or of two.
BString textOf(const uint8_t* data, size_t size) {
    BString text;
    if (size == 0) return text;
    const bool wide = (data[0] & 1) != 0;
    ++data;
    --size;
    const int32_t length = static_cast<int32_t>(wide ? size / 2 : size);
    if (!text.reserve(length)) return BString();
    for (int32_t i = 0; i < length; ++i) {
        text.buffer()[i] = wide ? static_cast<char16_t>(data[2 * i] | data[2 * i + 1] << 8) : data[i];
    }
    text.buffer()[length] = 0;
    return text;
}

BString streamOf(const SavedTree& tree) {
    BString text;
    const int32_t length = static_cast<int32_t>(tree.size());
    if (!text.reserve(length)) return BString();
    for (int32_t i = 0; i < length; ++i) text.buffer()[i] = tree.bytes()[i];
    text.buffer()[length] = 0;
    return text;
}

void goThrough(const BString& script) {
    BStringInputStream stream(&script);
    JSParser parser(&stream);
    const Owned<JSNode> root(parser.parseProgram());
    if (!root) return;
    root->regenerate();
    if (root->kind == kErrorKind) return;

    SavedTree first;
    if (!first.write(root.get())) return;
    const BString bytes = streamOf(first);
    BStringInputStream savedStream(&bytes);
    savedStream.readChar();
    const Owned<JSNode> readBack(readNode(&savedStream));
    if (!readBack) __builtin_trap();
    readBack->regenerate();
    SavedTree second;
    if (!second.write(readBack.get())) return;
    // A text that holds a U+0000 is cut there, and its bytes differ.
    const bool cut = first.size() != second.size();
    if (!cut && std::memcmp(first.bytes(), second.bytes(), first.size()) != 0) __builtin_trap();
    if (cut && second.size() > first.size()) __builtin_trap();
}

}  // namespace
}  // namespace quorvelin

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quorvelin::goThrough(quorvelin::textOf(data, size));
    return 0;
}
