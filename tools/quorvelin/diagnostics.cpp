#include "quorvelin/diagnostics.h"

#include <algorithm>
#include <string>

#include "quorvelin/files.h"
#include "quorvelin/text_encoding.h"

namespace quorvelin::tool {

namespace {

// Of a longer line only so much around the place is shown.
constexpr size_t kLongestShownLine = 240;

bool isTrailingSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// Terminals must not take orders from a script: control characters show as U+FFFD. Tabs stay, so that the
// line looks as it does in an editor.
std::string shownLine(std::u16string_view units) {
    std::u16string line(units);
    for (char16_t& unit : line) {
        if ((unit < 0x20 && unit != u'\t') || (unit >= 0x7F && unit < 0xA0)) unit = 0xFFFD;
    }
    return encodeUtf8(line);
}

// As wide as the units when they are shown.
std::string blanksFor(std::u16string_view units) {
    std::string blanks;
    for (const char16_t unit : units) {
        if (!isTrailingSurrogate(unit)) blanks += unit == u'\t' ? '\t' : ' ';
    }
    return blanks;
}

void showSourceLine(Output& messages, std::u16string_view line, size_t index) {
    constexpr std::u16string_view kCut = u"...";
    std::u16string shown(line);
    if (line.size() > kLongestShownLine) {
        const size_t start = std::min(index > kLongestShownLine / 2 ? index - kLongestShownLine / 2 : 0,
                                      line.size() - kLongestShownLine);
        shown = line.substr(start, kLongestShownLine);
        index -= start;
        if (start > 0) {
            shown.insert(0, kCut);
            index += kCut.size();
        }
        if (start + kLongestShownLine < line.size()) shown += kCut;
    }
    messages.write(shownLine(shown));
    messages.write('\n');
    messages.write(blanksFor(std::u16string_view(shown).substr(0, index)));
    messages.write("^\n");
}

// The message of an error node starts with its position, which is shown in another form here.
std::u16string_view reasonOf(std::u16string_view message) {
    constexpr std::u16string_view kEndOfPosition = u"): ";
    const size_t end = message.find(kEndOfPosition);
    return end == std::u16string_view::npos ? message : message.substr(end + kEndOfPosition.size());
}

std::string placeName(std::string_view name, int32_t line, int32_t column) {
    return std::string(name) + ":" + std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace

void showDiagnostic(Output& messages, std::string_view name, const SourceText& source, int32_t line,
                    int32_t column, std::u16string_view message) {
    if (line <= 0 || source.isSavedTree()) {
        showFileMessage(messages, name, shownOnOneLine(message));
        return;
    }
    showFileMessage(messages, placeName(name, line, column), shownOnOneLine(message));
    const SourceText::Place place = source.placeOf(line, column);
    showSourceLine(messages, source.line(place.line), place.index);
}

void showUnseenPlace(Output& messages, std::string_view name, int32_t line, int32_t column,
                     std::u16string_view message) {
    constexpr std::u16string_view kSyntaxError = u"Error(Ln ";
    if (message.starts_with(kSyntaxError)) message = reasonOf(message);
    showFileMessage(messages, placeName(name, line, column), shownOnOneLine(message));
    messages.write("    (in a text compiled at run time)\n");
}

void showSyntaxError(Output& messages, std::string_view name, const SourceText& source,
                     const JSErrorNode& error) {
    showDiagnostic(messages, name, source, error.line, error.column, reasonOf(unitsOf(error.message)));
}

}  // namespace quorvelin::tool
