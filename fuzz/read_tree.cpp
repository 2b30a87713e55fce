// Any bytes as a saved tree: loaded, written back and saved. What was read is a whole tree, so saving and
// loading it changes nothing any more.
#include <cstdint>
#include <cstring>

#include "foundation/stream.h"
#include "frontend/tree_reader.h"
#include "frontend/tree_writer.h"

namespace quorvelin {
namespace {

BString streamOf(const uint8_t* bytes, size_t size) {
    BString text;
    const int32_t length = static_cast<int32_t>(size);
    if (!text.reserve(length)) return BString();
    for (int32_t i = 0; i < length; ++i) text.buffer()[i] = bytes[i];
    text.buffer()[length] = 0;
    return text;
}

void goThrough(const uint8_t* data, size_t size) {
    const BString bytes = streamOf(data, size);
    BStringInputStream stream(&bytes);
    const Owned<JSNode> root(readNode(&stream));
    if (!root) return;
    root->regenerate();
    SavedTree first;
    if (!first.write(root.get())) return;

    const BString savedBytes = streamOf(first.bytes(), first.size());
    BStringInputStream savedStream(&savedBytes);
    savedStream.readChar();
    const Owned<JSNode> readBack(readNode(&savedStream));
    SavedTree second;
    if (!second.write(readBack.get())) return;
    if (first.size() != second.size() || std::memcmp(first.bytes(), second.bytes(), first.size()) != 0) {
        __builtin_trap();
    }
}

}  // namespace
}  // namespace quorvelin

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quorvelin::goThrough(data, size);
    return 0;
}
