// The two formatters of `util` that take no argument list: a mask that a text is fitted into, and the layout
// of a date.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

// `text` fitted into `mask`, where "*", "?", "9", "A" and "X" take characters of the text, "<", ">" and "="
// set the case from there on, and a backslash begins an escape. The empty text without memory.
BString fitIntoMask(const BString& mask, const BString& text);

// The moment `seconds` (after 1970-01-01 00:00:00 UTC) laid out by `format`, in which runs of the letters m,
// d, y, H, h, M, s and t are fields. The empty text without memory.
BString formatDate(const BString& format, int64_t seconds);

}  // namespace quorvelin
