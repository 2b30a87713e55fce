// Turns what the C library knows of the local time into a zone record with rules for the seasons. The C
// library only answers "what is the local time at this moment", so the changes of a year are found by asking
// for many moments.
#pragma once

#include "host/clock.h"

namespace quorvelin {

/// The calendar fields of a moment in UTC, without milliseconds.
SYSTEMTIME calendarFields(std::int64_t seconds);

/// Writes the local zone as it is in the year of the moment `now` and gives the `TIME_ZONE_ID_` value of that
/// moment. Follows a change of the environment variable TZ. A year with other than one change to daylight
/// time and one back (as when a country moves to another zone) is described by the offset that holds at the
/// moment.
std::uint32_t localTimeZone(std::int64_t now, TIME_ZONE_INFORMATION& zone);

}  // namespace quorvelin
