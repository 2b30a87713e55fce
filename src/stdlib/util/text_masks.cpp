#include "stdlib/util/text_masks.h"

#include "foundation/character.h"
#include "foundation/text_builder.h"
#include "stdlib/date/calendar.h"
#include "stdlib/date/date_names.h"
#include "stdlib/regexp/escape.h"

namespace quorvelin {

namespace {

enum class CaseMode { unchanged, upper, lower };

char16_t converted(char16_t c, CaseMode mode) {
    switch (mode) {
        case CaseMode::upper:
            return toUpperCase(c);
        case CaseMode::lower:
            return toLowerCase(c);
        default:
            return c;
    }
}

bool isLetterOrDigit(char16_t c) {
    return isAlphabetic(c) || isDecimalDigit(c);
}
bool isAny(char16_t) {
    return true;
}

// What a character of the mask takes from the text: the next character that passes the test.
struct MaskClass {
    char16_t maskCharacter;
    bool (*accepts)(char16_t);
};

constexpr MaskClass kMaskClasses[] = {
    {u'?', isAny}, {u'9', isDecimalDigit}, {u'A', isAlphabetic}, {u'X', isLetterOrDigit}};

const MaskClass* findMaskClass(char16_t c) {
    for (const MaskClass& entry : kMaskClasses) {
        if (entry.maskCharacter == c) return &entry;
    }
    return nullptr;
}

BString finished(const TextBuilder& builder) {
    return builder.failed() ? BString() : builder.text();
}

// `value` in decimal, with zeros up to `width` places, a sign among them.
void appendNumber(TextBuilder& out, int64_t value, int32_t width) {
    TextBuilder digits;
    digits.appendDecimal(value < 0 ? -value : value);
    if (value < 0) {
        out.append(u'-');
        --width;
    }
    for (int32_t i = digits.length(); i < width; ++i) out.append(u'0');
    out.append(digits.data(), digits.length());
}

void appendStart(TextBuilder& out, const BString& name, int32_t length) {
    out.append(name.data(), length < name.length() ? length : name.length());
}

// Lays out one field: the letter and how often it stands.
void appendField(TextBuilder& out, const DateFields& f, char16_t letter, int32_t run) {
    constexpr int32_t kAll = INT32_MAX;
    const int32_t width = run > 1 ? 2 : 1;
    switch (letter) {
        case u'm':
            if (run > 2) {
                // Quirk: the short form has four letters.
                appendStart(out, monthName(f.month), run == 3 ? 4 : kAll);
            } else {
                appendNumber(out, f.month + 1, width);
            }
            break;
        case u'd':
            if (run > 2) {
                appendStart(out, dayName(f.weekDay), run == 3 ? 3 : kAll);
            } else {
                appendNumber(out, f.day, width);
            }
            break;
        case u'y': {
            const int64_t year = int64_t{f.year} + 1900;
            if (run == 2) {
                appendNumber(out, year % 100, 2);
            } else {
                appendNumber(out, year, 4);
            }
            break;
        }
        case u'H':
            appendNumber(out, f.hour, width);
            break;
        case u'h':
            appendNumber(out, (f.hour + 11) % 12 + 1, width);
            break;
        case u'M':
            appendNumber(out, f.minute, width);
            break;
        case u's':
            appendNumber(out, f.second, width);
            break;
        default:
            out.append(f.hour < 12 ? u'a' : u'p');
            if (run > 1) out.append(u'm');
            break;
    }
}

bool isFieldLetter(char16_t c) {
    for (const char16_t letter : u"mdyHhMst") {
        if (letter == c) return c != 0;
    }
    return false;
}

}  // namespace

BString fitIntoMask(const BString& mask, const BString& text) {
    TextBuilder out;
    CaseMode mode = CaseMode::unchanged;
    int32_t read = 0;
    for (int32_t i = 0; i < mask.length(); ++i) {
        const char16_t c = mask[i];
        if (const MaskClass* wanted = findMaskClass(c)) {
            while (read < text.length() && !wanted->accepts(text[read])) ++read;
            if (read < text.length()) out.append(converted(text[read++], mode));
            continue;
        }
        switch (c) {
            case u'*':
                while (read < text.length()) out.append(converted(text[read++], mode));
                break;
            case u'<':
                mode = CaseMode::lower;
                break;
            case u'>':
                mode = CaseMode::upper;
                break;
            case u'=':
                mode = CaseMode::unchanged;
                break;
            case u'\\': {
                if (i + 1 >= mask.length()) break;
                int32_t consumed = 0;
                const char16_t value = decodeEscape(mask.data() + i + 1, consumed);
                out.append(consumed == 0 ? mask[i + 1] : value);
                i += consumed == 0 ? 1 : consumed;
                break;
            }
            default:
                out.append(converted(c, mode));
                break;
        }
    }
    return finished(out);
}

BString formatDate(const BString& format, int64_t seconds) {
    const DateFields fields = fieldsFromSeconds(seconds);
    TextBuilder out;
    for (int32_t i = 0; i < format.length();) {
        const char16_t c = format[i++];
        if (c == u'\\') {
            if (i < format.length()) out.append(format[i++]);
        } else if (!isFieldLetter(c)) {
            out.append(c);
        } else {
            int32_t run = 1;
            for (; i < format.length() && format[i] == c; ++i) ++run;
            appendField(out, fields, c, run);
        }
    }
    return finished(out);
}

}  // namespace quorvelin
