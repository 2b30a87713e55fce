// The text of a script file: from bytes to units, and from the positions that the engine counts to places in
// lines.
//
// The engine's columns are odd: the first character of the text has column 2; a tab moves to the next
// multiple of eight; the first character behind a line end has column 1, or, when the line end was kept as a
// separator, 2, since the character is then counted when it is looked at and again when it is read. `placeOf`
// counts the same way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/bstring.h"

namespace quorvelin::tool {

class SourceText {
  public:
    // From the bytes of a file: a saved tree when the first byte is 1, each byte then being one unit; else
    // UTF-16 with a byte-order mark, else UTF-8 with or without one. Nothing when the text is too long for
    // the engine.
    static std::optional<SourceText> decode(std::string_view bytes);

    const BString& text() const { return text_; }

    // More lines than the text has, without looking at it.
    int32_t lineBound() const { return text_.length() + 2; }

    // What the engine takes for a saved tree: a text whose first unit is 1.
    bool isSavedTree() const;

    // A line by its number, counted from 1, without its line end; empty for a number that the text does not
    // have. Line ends count as the engine counts them, and the text ends at a U+0000 or U+FFFF.
    std::u16string_view line(int32_t number) const;

    // A unit of a line: the line's number from 1, the index of the unit from 0, which may be the line's
    // length.
    struct Place {
        int32_t line;
        size_t index;
        friend bool operator==(const Place&, const Place&) = default;
    };

    // The place of an engine's position. The engine counts a line end to the line that follows it; its place
    // is behind the last character in front of it. So is the place of the end of the text when that lies on a
    // blank line.
    Place placeOf(int32_t line, int32_t column) const;

  private:
    struct Line {
        size_t start;
        size_t end;
        bool followsLineComment;  // the line end in front of it was read raw
    };

    // Built when the first line is asked for, as most scripts have no errors.
    const std::vector<Line>& lines() const;
    void splitIntoLines() const;
    void findLineComments() const;
    bool isBlank(int32_t number) const;
    Place endOfTextBefore(int32_t number) const;
    std::u16string_view units() const;

    BString text_;
    mutable std::vector<Line> lines_;
};

}  // namespace quorvelin::tool
