// The operating system's query for the types of characters, under its own name and constants. The answers
// come from a fixed table and never from a locale, so that a script means the same on every machine.
#pragma once

#include <cstdint>

inline constexpr std::uint32_t CT_CTYPE1 = 1;
inline constexpr std::uint16_t C1_SPACE = 0x0008;
inline constexpr std::uint16_t C1_ALPHA = 0x0100;

/// The locale that callers pass; any other one gives the same answers.
inline constexpr std::uint32_t LOCALE_USER_DEFAULT = 0x0400;

extern "C" {

/// Writes the type bits of the first `count` units of `text` to `types`, `C1_ALPHA` for the letters of the
/// Basic Multilingual Plane and `C1_SPACE` for white space; every other unit, a surrogate included, gets 0. A
/// negative `count` means the whole text with its NUL. 1 on success; 0 for a null pointer, a `count` of 0 or
/// an `infoType` other than `CT_CTYPE1`.
int GetStringTypeExW(std::uint32_t locale, std::uint32_t infoType, const char16_t* text, int count,
                     std::uint16_t* types);

}  // extern "C"
