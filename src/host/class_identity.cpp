#include "host/class_identity.h"

#include <cstring>

namespace quorvelin {
namespace {

unsigned digitValue(char16_t digit) {
    if (digit >= u'0' && digit <= u'9') {
        return static_cast<unsigned>(digit - u'0');
    }
    if (digit >= u'a' && digit <= u'f') {
        return static_cast<unsigned>(digit - u'a' + 10);
    }
    // Quirk: any other character is taken for an upper-case letter, whatever it is, so that no text is
    // refused for its characters; identifiers already given out by such texts must stay what they are.
    return static_cast<unsigned>(digit - u'A' + 10);
}

}  // namespace

bool BGuid::parse(std::u16string_view text) {
    unsigned char bytes[sizeof words];
    if (text.size() < 2 * sizeof bytes) {
        return false;
    }
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        bytes[i] = static_cast<unsigned char>(digitValue(text[2 * i]) * 16 + digitValue(text[2 * i + 1]));
    }
    std::memcpy(words, bytes, sizeof words);
    return true;
}

}  // namespace quorvelin
