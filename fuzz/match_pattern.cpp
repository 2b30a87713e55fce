// Any pattern on any text: the first line of the data is the pattern, the rest the text. A run that is
// endless is ended by the interrupt. A match lies in the text, and its length is that of its own text.
#include <cstdint>
#include <cstdlib>

#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {
namespace {

BString textOf(const uint8_t* data, size_t size) {
    BString text;
    const int32_t length = static_cast<int32_t>(size);
    if (!text.reserve(length)) return BString();
    for (int32_t i = 0; i < length; ++i) text.buffer()[i] = data[i];
    text.buffer()[length] = 0;
    return text;
}

bool countDown(void* left) {
    return --*static_cast<int32_t*>(left) < 0;
}

void check(bool condition) {
    if (!condition) std::abort();
}

void goThrough(const BString& pattern, const BString& input, bool ignoreCase) {
    JSRegExpMatcher matcher;
    matcher.ignoreCase = ignoreCase;
    int32_t questions = 2000;
    matcher.setInterrupt(countDown, &questions);
    for (int32_t from = 0; from <= input.length(); from += 3) {
        int32_t start = 0;
        int32_t length = 0;
        const BString match = matcher.matchPatternOnce(input, pattern, start, length, from);
        if (start < 0) continue;
        check(length == match.length() && start + length <= input.length() - from);
        for (int32_t i = 0; i < matcher.captures.count(); ++i) {
            const JSRegExpCapture& capture = *matcher.captures.at(i);
            check(capture.length == static_cast<uint32_t>(capture.text.length()));
        }
    }
}

}  // namespace
}  // namespace quorvelin

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace quorvelin;
    if (size == 0) return 0;
    const bool ignoreCase = (data[0] & 1) != 0;
    size_t lineEnd = 1;
    while (lineEnd < size && data[lineEnd] != '\n') ++lineEnd;
    const size_t rest = lineEnd < size ? lineEnd + 1 : size;
    goThrough(textOf(data + 1, lineEnd - 1), textOf(data + rest, size - rest), ignoreCase);
    return 0;
}
