// Texts of 16-bit units on their way in and out of the program.
#pragma once

#include <string>
#include <string_view>

#include "foundation/bstring.h"

namespace quorvelin::tool {

std::u16string_view unitsOf(const BString& text);

// UTF-8 to units. Every piece that is not UTF-8 becomes one U+FFFD, as decoders for the web do it.
std::u16string decodeUtf8(std::string_view bytes);

// UTF-16 to units; an odd byte at the end becomes U+FFFD. Unpaired surrogates stay.
std::u16string decodeUtf16(std::string_view bytes, bool bigEndian);

// Units as UTF-8. An unpaired surrogate becomes U+FFFD.
std::string encodeUtf8(std::u16string_view units);

// The same on one line, for people: a control character is written as an escape, a backslash as two.
std::string shownOnOneLine(std::u16string_view units);

// How JSON escapes line ends and tabs: as \n, \r and \t, or by number as all other control characters.
enum class ControlEscapes { letters, numbers };

// A JSON string with its quotes, in ASCII: everything else is escaped, unpaired surrogates included.
std::string jsonString(std::u16string_view units, ControlEscapes escapes = ControlEscapes::letters);

}  // namespace quorvelin::tool
