#include "support/script_text.h"

#include <cstdio>

namespace quorvelin::support {

BString textOf(std::u16string_view units) {
    return BString(units.data(), static_cast<int32_t>(units.size()));
}

std::u16string unitsOf(const BString& text) {
    return std::u16string(text.data(), static_cast<size_t>(text.length()));
}

std::string ascii(std::u16string_view units) {
    std::string result;
    for (const char16_t unit : units) {
        if (unit == u'\n' || (unit >= 0x20 && unit < 0x7F)) {
            result += static_cast<char>(unit);
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(unit));
            result += escape;
        }
    }
    return result;
}

std::string ascii(const BString& text) {
    return ascii(unitsOf(text));
}

}  // namespace quorvelin::support
