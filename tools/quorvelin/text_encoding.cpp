#include "quorvelin/text_encoding.h"

#include <cstdint>
#include <cstdio>

namespace quorvelin::tool {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void appendUnits(std::u16string& units, char32_t character) {
    if (character < 0x10000) {
        units += static_cast<char16_t>(character);
        return;
    }
    character -= 0x10000;
    units += static_cast<char16_t>(0xD800 + (character >> 10));
    units += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

void appendUtf8(std::string& bytes, char32_t character) {
    if (character < 0x80) {
        bytes += static_cast<char>(character);
        return;
    }
    const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(kLead[following] | (character >> (6 * following)));
    for (int i = following - 1; i >= 0; --i)
        bytes += static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3F));
}

// What a lead byte promises: how many bytes follow, and the range of the first of them, which keeps out
// characters in longer forms than they need, surrogates, and numbers above the last character. No bytes for a
// wrong lead.
struct Sequence {
    int following = 0;
    unsigned lowest = 0x80;
    unsigned highest = 0xBF;
};

Sequence sequenceOf(unsigned lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return {1};
    if (lead == 0xE0) return {2, 0xA0};
    if (lead == 0xED) return {2, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF) return {2};
    if (lead == 0xF0) return {3, 0x90};
    if (lead >= 0xF1 && lead <= 0xF3) return {3};
    if (lead == 0xF4) return {3, 0x80, 0x8F};
    return {};
}

// The character that starts at `index`, which moves behind it.
char32_t takeCharacter(std::u16string_view units, size_t& index) {
    const char32_t unit = units[index++];
    if (isHighSurrogate(unit) && index < units.size() && isLowSurrogate(units[index])) {
        return 0x10000 + ((unit - 0xD800) << 10) + (units[index++] - 0xDC00);
    }
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

void appendEscape(std::string& text, char32_t unit) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(unit));
    text += escape;
}

// The letter of the short escape of a control character, 0 for one that has none.
char shortEscape(char32_t character) {
    switch (character) {
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        default:
            return 0;
    }
}

}  // namespace

std::u16string_view unitsOf(const BString& text) {
    return std::u16string_view(text.data(), static_cast<size_t>(text.length()));
}

std::u16string decodeUtf8(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
        const unsigned lead = static_cast<unsigned char>(bytes[i++]);
        if (lead < 0x80) {
            units += static_cast<char16_t>(lead);
            continue;
        }
        const Sequence sequence = sequenceOf(lead);
        char32_t character = lead & (0x3Fu >> sequence.following);
        int left = sequence.following;
        unsigned lowest = sequence.lowest;
        unsigned highest = sequence.highest;
        while (left > 0 && i < bytes.size()) {
            const unsigned byte = static_cast<unsigned char>(bytes[i]);
            if (byte < lowest || byte > highest) break;
            character = character << 6 | (byte & 0x3F);
            lowest = 0x80;
            highest = 0xBF;
            ++i;
            --left;
        }
        appendUnits(units, sequence.following == 0 || left > 0 ? char32_t{kReplacement} : character);
    }
    return units;
}

std::u16string decodeUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2 + 1);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned first = static_cast<unsigned char>(bytes[i]);
        const unsigned second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    if (bytes.size() % 2 != 0) units += kReplacement;
    return units;
}

std::string encodeUtf8(std::u16string_view units) {
    std::string bytes;
    bytes.reserve(units.size());
    for (size_t i = 0; i < units.size();) appendUtf8(bytes, takeCharacter(units, i));
    return bytes;
}

std::string shownOnOneLine(std::u16string_view units) {
    std::string text;
    for (size_t i = 0; i < units.size();) {
        const char32_t character = takeCharacter(units, i);
        if (const char letter = shortEscape(character)) {
            text += '\\';
            text += letter;
        } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            appendEscape(text, character);
        } else {
            if (character == U'\\') text += '\\';
            appendUtf8(text, character);
        }
    }
    return text;
}

std::string jsonString(std::u16string_view units, ControlEscapes escapes) {
    std::string text = "\"";
    for (const char16_t unit : units) {
        const char letter = escapes == ControlEscapes::letters ? shortEscape(unit) : '\0';
        if (letter != 0) {
            text += '\\';
            text += letter;
        } else if (unit < 0x20 || unit >= 0x7F) {
            appendEscape(text, unit);
        } else {
            if (unit == u'"' || unit == u'\\') text += '\\';
            text += static_cast<char>(unit);
        }
    }
    return text += '"';
}

}  // namespace quorvelin::tool
