// The English names of months and days, as the interned names hold them.
#pragma once

#include "foundation/bstring.h"

namespace quorvelin {

// The full name of a month, 0 for January; the number is folded into 0 to 11.
const BString& monthName(int32_t month);

// The full name of a day of the week, 0 for Sunday; the number is folded into 0 to 6.
const BString& dayName(int32_t weekDay);

}  // namespace quorvelin
