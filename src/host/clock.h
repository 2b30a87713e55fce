// The operating system's clock and time zone, under their own names and in their own records. On systems
// without them the zone is worked out from what the C library knows of the local time.
#pragma once

#include <cstdint>

extern "C" {

/// A moment as calendar fields; in a zone's rule, a day of every year.
struct SYSTEMTIME {
    std::uint16_t wYear;
    std::uint16_t wMonth;      ///< from 1
    std::uint16_t wDayOfWeek;  ///< 0 for Sunday
    std::uint16_t wDay;        ///< from 1; in a rule the week of the month, 5 for the last
    std::uint16_t wHour;
    std::uint16_t wMinute;
    std::uint16_t wSecond;
    std::uint16_t wMilliseconds;
};

/// A time zone: UTC is the local time plus `Bias` plus the bias of the season, all in minutes. The two dates
/// say by the local clock just before the change when each season begins: in month `wMonth`, in week `wDay`
/// of it, on day of the week `wDayOfWeek`, with `wYear` 0. A zone without seasons has `wMonth` 0 in both.
struct TIME_ZONE_INFORMATION {
    std::int32_t Bias;
    char16_t StandardName[32];
    SYSTEMTIME StandardDate;
    std::int32_t StandardBias;
    char16_t DaylightName[32];
    SYSTEMTIME DaylightDate;
    std::int32_t DaylightBias;
};

/// Writes the present moment in UTC.
void GetSystemTime(SYSTEMTIME* time);

/// Writes the local time zone with the seasons of the present year. The result says what holds at present:
/// one of the three constants below.
std::uint32_t GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone);

}  // extern "C"

inline constexpr std::uint32_t TIME_ZONE_ID_UNKNOWN = 0;  ///< the zone has no seasons
inline constexpr std::uint32_t TIME_ZONE_ID_STANDARD = 1;
inline constexpr std::uint32_t TIME_ZONE_ID_DAYLIGHT = 2;

namespace quorvelin {

/// Makes the clock stand still at `seconds` and `milliseconds` after 1970-01-01 00:00:00 UTC, for all
/// threads.
void stopClock(std::int64_t seconds, int milliseconds = 0);

/// Makes the clock run again.
void startClock();

/// Makes `GetTimeZoneInformation` give `zone` and `id`, for all threads; null makes it give the local zone
/// again.
void replaceTimeZone(const TIME_ZONE_INFORMATION* zone, std::uint32_t id = TIME_ZONE_ID_UNKNOWN);

}  // namespace quorvelin
