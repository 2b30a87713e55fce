#include "stdlib/date/calendar.h"

#include "host/clock.h"

namespace quorvelin {

namespace {

constexpr int64_t kSecondsOfDay = 24 * 60 * 60;
constexpr int64_t kSecondsOfCommonYear = 365 * kSecondsOfDay;

// The days of a common year through the end of each month.
constexpr int32_t kMonthEnds[12] = {31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

// Sums and products that wrap around instead of overflowing.
int64_t subtractWrapped(int64_t a, int64_t b) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}
int64_t multiplyAndAddWrapped(int64_t a, int64_t b, int64_t c) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b) +
                                static_cast<uint64_t>(c));
}

// `year` counts from 1900.
bool isLeapYear(int64_t year) {
    const int64_t y = year + 1900;
    return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0);
}

int64_t remainderFromZero(int64_t value, int64_t divisor) {
    const int64_t r = value % divisor;
    return r < 0 ? r + divisor : r;
}

int64_t secondsFromDays(int64_t second, int64_t minute, int64_t hour, int64_t yearDay, int64_t year) {
    // Quirk: the divisions cut toward zero and the centuries are counted from 1969, so that some years begin
    // a day early: those from 1869 to 1900 and from 2069 to 2100.
    const int64_t days =
        (year - 70) * 365 + (year + 1903) / 4 - (year + 1931) / 100 + (year + 1931) / 400 - 478 + yearDay;
    return multiplyAndAddWrapped(days, kSecondsOfDay, (hour * 60 + minute) * 60 + second);
}

// The fields that a rule of the time zone compares, from the largest on.
struct SeasonPoint {
    explicit SeasonPoint(const SYSTEMTIME& date)
        : parts{date.wMonth - 1, date.wDay, date.wHour, date.wMinute, date.wSecond} {}
    explicit SeasonPoint(const DateFields& f) : parts{f.month, f.day, f.hour, f.minute, f.second} {}

    bool isAtOrAfter(const SeasonPoint& other) const {
        for (int i = 0; i < 5; ++i) {
            if (parts[i] != other.parts[i]) return parts[i] > other.parts[i];
        }
        return true;
    }

    int32_t parts[5];
};

}  // namespace

int64_t secondsFromFields(int32_t second, int32_t minute, int32_t hour, int32_t day, int32_t month,
                          int32_t year) {
    int64_t wholeYear = year;
    if (month > 12) {
        wholeYear += month / 12;
        month %= 12;
    }
    int64_t yearDay = int64_t{day} - 1;
    if (month > 0) yearDay += kMonthEnds[month - 1];
    if (month > 1 && isLeapYear(wholeYear)) ++yearDay;
    return secondsFromDays(second, minute, hour, yearDay, wholeYear);
}

int64_t secondsFromFields(const DateFields& f) {
    return secondsFromFields(f.second, f.minute, f.hour, f.day, f.month, f.year);
}

DateFields fieldsFromSeconds(int64_t seconds) {
    DateFields f;
    const int64_t dayStart = subtractWrapped(seconds, remainderFromZero(seconds, kSecondsOfDay));
    f.weekDay = static_cast<int32_t>(remainderFromZero(dayStart / kSecondsOfDay + 4, 7));

    // A first estimate of the year, as if all were common and the count began in 1968.
    int64_t rest = remainderFromZero(seconds, kSecondsOfCommonYear);
    int64_t year = subtractWrapped(seconds, rest) / kSecondsOfCommonYear + 68;
    f.second = static_cast<int32_t>(rest % 60);
    rest /= 60;
    f.minute = static_cast<int32_t>(rest % 60);
    rest /= 60;
    f.hour = static_cast<int32_t>(rest % 24);
    int64_t yearDay = rest / 24;
    const int64_t estimate = secondsFromDays(f.second, f.minute, f.hour, yearDay, year);
    yearDay += subtractWrapped(seconds, estimate) / kSecondsOfDay;

    // Far from 1968 the estimate lies many years too early; four hundred of them always have the same days.
    constexpr int64_t kDaysOfFourCenturies = 146097;
    if (yearDay > kDaysOfFourCenturies + 366) {
        const int64_t cycles = (yearDay - 366) / kDaysOfFourCenturies;
        yearDay -= cycles * kDaysOfFourCenturies;
        year += cycles * 400;
    }
    while (yearDay >= 365) {
        const int64_t daysOfYear = isLeapYear(year) ? 366 : 365;
        if (yearDay < daysOfYear) break;
        yearDay -= daysOfYear;
        ++year;
    }

    // Quirk: the search looks for a month end below the day, not at it, so the first day of a month is
    // reported as the day behind the last one of the month before: 1 February is day 32 of January.
    // `secondsFromFields` turns either into the same moment.
    const bool isLeap = isLeapYear(year);
    const auto daysThrough = [isLeap](int32_t month) {
        return kMonthEnds[month] + (month > 0 && isLeap ? 1 : 0);
    };
    while (yearDay > daysThrough(f.month)) ++f.month;
    f.day = static_cast<int32_t>(yearDay + 1 - (f.month > 0 ? daysThrough(f.month - 1) : 0));
    f.year = static_cast<int32_t>(year);
    f.yearDay = static_cast<int32_t>(yearDay);
    return f;
}

DateFields localFields(int64_t seconds) {
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    const auto shifted = [seconds](int64_t minutes) {
        return fieldsFromSeconds(subtractWrapped(seconds, minutes * 60));
    };

    const DateFields f = shifted(zone.Bias);
    // Quirk: in a zone without seasons the bias of its standard time is left out.
    if (zone.StandardDate.wMonth == 0 || zone.DaylightDate.wMonth == 0) return f;

    // Quirk: the days of the rules are compared as they stand. That they name a week of the month is not
    // decoded.
    const SeasonPoint now(f);
    const SeasonPoint standard(zone.StandardDate);
    const SeasonPoint daylight(zone.DaylightDate);
    const bool isDaylight =
        now.isAtOrAfter(standard) != (now.isAtOrAfter(daylight) != daylight.isAtOrAfter(standard));
    DateFields local = shifted(int64_t{zone.Bias} + (isDaylight ? zone.DaylightBias : zone.StandardBias));
    local.isDaylight = isDaylight ? 1 : 0;
    return local;
}

int64_t presentSeconds() {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    return secondsFromFields(now.wSecond, now.wMinute, now.wHour, now.wDay, now.wMonth - 1, now.wYear - 1900);
}

double utcValue(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute, int32_t second) {
    return static_cast<double>(secondsFromFields(second, minute, hour, day, month, yearField(year))) * 1000.0;
}

}  // namespace quorvelin
