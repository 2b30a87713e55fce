// The meaning of one backslash escape, for everything of the standard objects that knows escapes: patterns
// and the masks of `util`.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

// Decodes the escape whose first unit, the one behind the backslash, stands at `text`, which ends in a NUL.
// `consumed` receives the count of units used; 0 means that this is no escape: a NUL, or "x" without a
// hexadecimal digit.
char16_t decodeEscape(const char16_t* text, int32_t& consumed);

}  // namespace quorvelin
