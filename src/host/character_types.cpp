#include "host/character_types.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "host/character_tables.h"

namespace quorvelin {
namespace {

template <std::size_t size>
constexpr bool isInRanges(const CharacterRange (&ranges)[size], char16_t character) {
    const CharacterRange* range = std::lower_bound(
        std::begin(ranges), std::end(ranges), character,
        [](const CharacterRange& candidate, char16_t wanted) { return candidate.last < wanted; });
    return range != std::end(ranges) && range->first <= character;
}

constexpr std::uint16_t typeOf(char16_t character) {
    if (isInRanges(kLetterRanges, character)) {
        return C1_ALPHA;
    }
    return isInRanges(kSpaceRanges, character) ? C1_SPACE : 0;
}

// Nearly all script text is ASCII: those answers need no search.
constexpr std::array<std::uint16_t, 128> kAsciiTypes = [] {
    std::array<std::uint16_t, 128> types{};
    for (std::size_t i = 0; i < types.size(); ++i) {
        types[i] = typeOf(static_cast<char16_t>(i));
    }
    return types;
}();

}  // namespace
}  // namespace quorvelin

extern "C" int GetStringTypeExW(std::uint32_t /*locale*/, std::uint32_t infoType, const char16_t* text,
                                int count, std::uint16_t* types) {
    if (infoType != CT_CTYPE1 || text == nullptr || types == nullptr || count == 0) {
        return 0;
    }
    const std::size_t length =
        count < 0 ? std::char_traits<char16_t>::length(text) + 1 : static_cast<std::size_t>(count);
    using quorvelin::kAsciiTypes;
    for (std::size_t i = 0; i < length; ++i) {
        types[i] = text[i] < kAsciiTypes.size() ? kAsciiTypes[text[i]] : quorvelin::typeOf(text[i]);
    }
    return 1;
}
