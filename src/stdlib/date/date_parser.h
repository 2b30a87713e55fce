// Reading a date from text. There is no grammar: numbers and words are picked out of the text, and the
// numbers become year, day, month, hour, minute and second by their size and order.
#pragma once

#include "foundation/bstring.h"

namespace quorvelin {

// The moment that `text` names, in milliseconds since 1970-01-01 00:00:00 UTC. The empty text, and a text in
// which no part of a date is found, stand for the present moment: the reading of the local clock, taken as if
// it were UTC.
double parseDateText(const BString& text);

}  // namespace quorvelin
