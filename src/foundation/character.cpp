#include "foundation/character.h"

#include "host/character_types.h"

namespace quorvelin {

namespace {

// The user's default locale, as the query wants it told.
constexpr uint32_t kUserDefaultLocale = 0x400;

uint16_t characterType(char16_t c) {
    uint16_t type = 0;
    GetStringTypeExW(kUserDefaultLocale, CT_CTYPE1, &c, 1, &type);
    return type;
}

}  // namespace

bool isAlphabeticBeyondAscii(char16_t c) {
    return (characterType(c) & C1_ALPHA) != 0;
}

bool isSpaceBeyondAscii(char16_t c) {
    return (characterType(c) & C1_SPACE) != 0;
}

}  // namespace quorvelin
