// Calendar arithmetic: seconds since 1970-01-01 00:00:00 UTC to fields and back, the present moment, local
// time.
//
// The arithmetic is the system's own and has properties that scripts rely on, most of all how the first day
// of a month is reported (see `fieldsFromSeconds`). Sums beyond the range of 64 bits wrap around.
#pragma once

#include <cstdint>

namespace quorvelin {

// A broken-down time.
struct DateFields {
    int32_t second = 0;
    int32_t minute = 0;
    int32_t hour = 0;
    int32_t day = 0;      // of the month, from 1
    int32_t month = 0;    // from 0
    int32_t year = 0;     // counted from 1900
    int32_t weekDay = 0;  // 0 for Sunday
    int32_t yearDay = 0;  // from 0
    int32_t isDaylight = 0;
};

// The moment of the given fields. No field is limited: day 40 runs on into the next month, months above 12
// into the next years. A negative month counts as the first.
int64_t secondsFromFields(int32_t second, int32_t minute, int32_t hour, int32_t day, int32_t month,
                          int32_t year);
int64_t secondsFromFields(const DateFields& fields);

// The fields of a moment in UTC. `isDaylight` is 0.
DateFields fieldsFromSeconds(int64_t seconds);

// The fields of a moment in the time zone of the system.
DateFields localFields(int64_t seconds);

// The present moment by the clock of the system.
int64_t presentSeconds();

// The year field, which counts from 1900, of a full year.
// Quirk: years below 1900 count from 1900 themselves, all of them: 76 is 1976, and 1800 is 3700.
inline int32_t yearField(int32_t year) {
    return year < 1900 ? year : year - 1900;
}

// The moment of the given fields in milliseconds, the year being a full one. Years below 1900 count from
// 1900.
double utcValue(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute, int32_t second);

}  // namespace quorvelin
