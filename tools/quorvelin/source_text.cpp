#include "quorvelin/source_text.h"

#include <algorithm>

#include "foundation/stream.h"
#include "frontend/tokenizer.h"
#include "frontend/tree_reader.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

std::u16string decodeBytes(std::string_view bytes) {
    if (bytes.starts_with(static_cast<char>(kSavedTreeMarker))) {
        std::u16string units;
        units.reserve(bytes.size());
        for (const char byte : bytes) units += static_cast<unsigned char>(byte);
        return units;
    }
    if (bytes.starts_with(kLittleEndianMark)) return decodeUtf16(bytes.substr(2), false);
    if (bytes.starts_with(kBigEndianMark)) return decodeUtf16(bytes.substr(2), true);
    if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    return decodeUtf8(bytes);
}

constexpr std::u16string_view kBlanks = u" \t";

bool isLineEnd(char16_t unit) {
    return unit == u'\n' || unit == u'\r';
}

}  // namespace

std::optional<SourceText> SourceText::decode(std::string_view bytes) {
    const std::u16string units = decodeBytes(bytes);
    if (units.size() > static_cast<size_t>(BString::kMaximumLength)) return std::nullopt;
    SourceText source;
    if (!source.text_.assign(units.data(), static_cast<int32_t>(units.size()))) return std::nullopt;
    return source;
}

bool SourceText::isSavedTree() const {
    return !text_.isEmpty() && text_[0] == kSavedTreeMarker;
}

std::u16string_view SourceText::units() const {
    return unitsOf(text_);
}

const std::vector<SourceText::Line>& SourceText::lines() const {
    if (lines_.empty()) {
        splitIntoLines();
        findLineComments();
    }
    return lines_;
}

void SourceText::splitIntoLines() const {
    const std::u16string_view all = units();
    size_t start = 0;
    size_t i = 0;
    for (; i < all.size() && all[i] != 0 && all[i] != kEndOfStream; ++i) {
        if (!isLineEnd(all[i])) continue;
        lines_.push_back({start, i, false});
        // A line feed and a carriage return next to each other are one line end.
        if (i + 1 < all.size() && isLineEnd(all[i + 1]) && all[i + 1] != all[i]) ++i;
        start = i + 1;
    }
    lines_.push_back({start, i, false});
}

// The tokenizer gives a line end column 0 when it was read behind a line comment, and never otherwise. (Where
// a regular-expression literal looks like one, as `/\//` does, the mark in the following line stands off by
// one.)
void SourceText::findLineComments() const {
    BStringInputStream stream(&text_);
    JSTokenizer tokenizer(&stream);
    while (tokenizer.nextToken(false) != JSTT_EOF) {
        const size_t index = static_cast<size_t>(tokenizer.line()) - 1;
        if (tokenizer.kind() == JSTT_OPERSEPARATOR && tokenizer.column() == 0 && index < lines_.size()) {
            lines_[index].followsLineComment = true;
        }
    }
}

std::u16string_view SourceText::line(int32_t number) const {
    if (number < 1 || static_cast<size_t>(number) > lines().size()) return {};
    const Line& line = lines()[static_cast<size_t>(number) - 1];
    return units().substr(line.start, line.end - line.start);
}

bool SourceText::isBlank(int32_t number) const {
    return line(number).find_first_not_of(kBlanks) == std::u16string_view::npos;
}

// Behind the last character that is no blank in the lines before `number`.
SourceText::Place SourceText::endOfTextBefore(int32_t number) const {
    do --number;
    while (number > 1 && isBlank(number));
    return {std::max(number, 1), line(number).find_last_not_of(kBlanks) + 1};
}

SourceText::Place SourceText::placeOf(int32_t number, int32_t column) const {
    const int32_t count = static_cast<int32_t>(lines().size());
    if (number < 1) return {1, 0};
    if (number > count) number = count;
    if (number > 1 && isBlank(number)) return endOfTextBefore(number);

    // Behind a line end the blanks are passed over together with it, unless it follows a line comment.
    const std::u16string_view units = line(number);
    const bool readsBlanks = number == 1 || lines()[static_cast<size_t>(number) - 1].followsLineComment;
    const size_t first = readsBlanks ? 0 : units.find_first_not_of(kBlanks);
    int32_t counted = number == 1 ? 1 : 0;
    for (size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (unit == u'\t') {
            counted = (counted & ~7) + 8;
        } else {
            const bool keepsLineEnd = !JSTokenizer::continuesStatement(unit) && unit != u'+' && unit != u'-';
            counted += i == first && !readsBlanks && keepsLineEnd ? 2 : 1;
        }
        if (i < first) continue;
        // In front of the first character that is read stands the line end.
        if (i == first && number > 1 && column < counted) return endOfTextBefore(number);
        if (counted >= column) return {number, i};
    }
    return {number, units.size()};
}

}  // namespace quorvelin::tool
