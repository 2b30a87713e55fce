// Texts of the engine and texts of the tests, turned into each other.
#pragma once

#include <string>
#include <string_view>

#include "foundation/bstring.h"

namespace quorvelin::support {

// The units as a text of the engine; they may hold NULs.
BString textOf(std::u16string_view units);

// The units of a text of the engine.
std::u16string unitsOf(const BString& text);

// The text in ASCII, for comparing and for messages: a unit outside ASCII, and a control character other than
// the line feed, is written as \uXXXX.
std::string ascii(std::u16string_view units);
std::string ascii(const BString& text);

}  // namespace quorvelin::support
