// Reading numbers from text, and cutting them to whole ones, with the meaning that the C library gives it in
// the "C" locale: a script's numbers must not depend on where it runs, so the library's own functions, which
// ask the locale, are not used.
//
// Texts end at their first NUL. Nothing here allocates.
#pragma once

#include <cstdint>

namespace quorvelin {

// Reads the longest number at the start of `text`, as `wcstod` does: white space (space and 9 to 13), a sign,
// then a decimal number, a hexadecimal one ("0x1.8p3"), "inf", "infinity", "nan" or "nan(...)" in either
// case. The result is the nearest double; beyond the range it is an infinity or a zero with the number's
// sign. Without a number it is 0. `consumed`, which may be null, receives the count of units read, white
// space included, and 0 without a number.
double parseDouble(const char16_t* text, int32_t* consumed = nullptr);

// Reads the longest whole number at the start of `text`, as `wcstol` does with a long of 32 bits: white
// space, a sign, digits of the base `radix`. Base 16 allows "0x" in front; base 0 takes the base from the
// text: 16 behind "0x", 8 behind "0", else 10. A number beyond the range becomes the nearest end of it;
// without a number, or with a base outside 0 and 2 to 36, the result is 0. `consumed` as above.
int32_t parseInteger32(const char16_t* text, int32_t radix, int32_t* consumed = nullptr);

// `value` with its fraction cut off. What the width cannot hold, and a NaN, gives its smallest integer.
int32_t truncateToInt32(double value);
int64_t truncateToInt64(double value);

}  // namespace quorvelin
