#include "host/local_time_zone.h"

#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>
#include <vector>

namespace quorvelin {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr int kDaysPerWeek = 7;
constexpr std::uint16_t kLastWeek = 5;

std::tm localFields(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm fields{};
    localtime_r(&time, &fields);
    return fields;
}

long localOffset(std::int64_t seconds) {
    return localFields(seconds).tm_gmtoff;
}

int yearOf(std::int64_t seconds) {
    return calendarFields(seconds).wYear;
}

std::int64_t startOfYear(int year) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mday = 1;
    return timegm(&fields);
}

int daysOfMonth(const SYSTEMTIME& date) {
    std::tm fields{};
    fields.tm_year = date.wYear - 1900;
    fields.tm_mon = date.wMonth;  // the month after, of which day 0 is wanted
    fields.tm_mday = 0;
    timegm(&fields);
    return fields.tm_mday;
}

// A change of the local offset. `moment` is the first second of the new one.
struct Change {
    std::int64_t moment;
    long before;
    long after;

    // What the local clock shows when the change comes, before it is set.
    SYSTEMTIME localDate() const { return calendarFields(moment + before); }
};

std::vector<Change> changesOfYear(int year) {
    std::vector<Change> changes;
    const std::int64_t end = startOfYear(year + 1);
    std::int64_t day = startOfYear(year);
    long before = localOffset(day);
    for (; day < end; day += kSecondsPerDay) {
        const long after = localOffset(day + kSecondsPerDay);
        if (after == before) {
            continue;
        }
        std::int64_t low = day;
        std::int64_t high = day + kSecondsPerDay;
        while (high - low > 1) {
            const std::int64_t middle = low + (high - low) / 2;
            (localOffset(middle) == before ? low : high) = middle;
        }
        changes.push_back({high, before, after});
        before = after;
    }
    return changes;
}

// Which week of the month a date may stand for: by counting from the start, by being the last one, or both.
struct Weeks {
    std::uint16_t counted;
    bool isLast;

    explicit Weeks(const SYSTEMTIME& date)
        : counted(static_cast<std::uint16_t>((date.wDay - 1) / kDaysPerWeek + 1)),
          isLast(date.wDay + kDaysPerWeek > daysOfMonth(date)) {}
};

// The change as a rule for every year. A fourth Sunday may also be the last one: the years that follow tell.
SYSTEMTIME ruleOf(const Change& change) {
    constexpr int kYearsAhead = 6;
    SYSTEMTIME rule = change.localDate();
    const Weeks weeks(rule);
    std::uint16_t week = weeks.isLast ? kLastWeek : weeks.counted;
    if (weeks.isLast && weeks.counted < kLastWeek) {
        for (int year = rule.wYear + 1; year <= rule.wYear + kYearsAhead; ++year) {
            for (const Change& later : changesOfYear(year)) {
                const SYSTEMTIME date = later.localDate();
                const bool sameRule = later.before == change.before && date.wMonth == rule.wMonth &&
                                      date.wDayOfWeek == rule.wDayOfWeek;
                if (sameRule && !Weeks(date).isLast) {
                    week = weeks.counted;
                }
            }
        }
    }
    rule.wYear = 0;
    rule.wDay = week;
    return rule;
}

std::int32_t biasOf(long offset) {
    return static_cast<std::int32_t>(-offset / 60);
}

void copyName(std::int64_t moment, char16_t (&name)[32]) {
    const std::tm fields = localFields(moment);
    const char* source = fields.tm_zone != nullptr ? fields.tm_zone : "";
    for (int i = 0; i < 31 && source[i] != '\0'; ++i) {
        name[i] = static_cast<unsigned char>(source[i]);
    }
}

// The zone of one year, with what is needed to tell the season of a moment in it.
struct YearZone {
    TIME_ZONE_INFORMATION zone{};
    bool hasSeasons = false;
    bool daylightInBetween = false;  // between the two changes, as in the north, or outside of them
    std::int64_t firstChange = 0;
    std::int64_t secondChange = 0;

    std::uint32_t idAt(std::int64_t moment) const {
        if (!hasSeasons) {
            return TIME_ZONE_ID_UNKNOWN;
        }
        const bool inBetween = moment >= firstChange && moment < secondChange;
        return inBetween == daylightInBetween ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD;
    }
};

YearZone fixedZone(std::int64_t moment) {
    YearZone result;
    result.zone.Bias = biasOf(localOffset(moment));
    copyName(moment, result.zone.StandardName);
    copyName(moment, result.zone.DaylightName);
    return result;
}

YearZone zoneWithSeasons(const Change& first, const Change& second) {
    YearZone result;
    result.hasSeasons = true;
    result.daylightInBetween = first.after > first.before;
    result.firstChange = first.moment;
    result.secondChange = second.moment;
    const Change& toDaylight = result.daylightInBetween ? first : second;
    const Change& toStandard = result.daylightInBetween ? second : first;
    result.zone.Bias = biasOf(toStandard.after);
    result.zone.DaylightBias = biasOf(toDaylight.after) - result.zone.Bias;
    result.zone.StandardDate = ruleOf(toStandard);
    result.zone.DaylightDate = ruleOf(toDaylight);
    copyName(toStandard.moment, result.zone.StandardName);
    copyName(toDaylight.moment, result.zone.DaylightName);
    return result;
}

// Finding the changes takes hundreds of questions to the C library, so the answer for a year is kept.
struct Cache {
    bool valid = false;
    bool hasVariable = false;
    std::string variable;  // TZ, when it is set
    int year = 0;
    YearZone answer;
};

}  // namespace

SYSTEMTIME calendarFields(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm fields{};
    gmtime_r(&time, &fields);
    const auto narrow = [](int value) { return static_cast<std::uint16_t>(value); };
    return {narrow(fields.tm_year + 1900), narrow(fields.tm_mon + 1),
            narrow(fields.tm_wday),        narrow(fields.tm_mday),
            narrow(fields.tm_hour),        narrow(fields.tm_min),
            narrow(fields.tm_sec),         0};
}

std::uint32_t localTimeZone(std::int64_t now, TIME_ZONE_INFORMATION& zone) {
    static std::mutex mutex;
    static Cache cache;
    const std::lock_guard lock(mutex);

    const char* variable = std::getenv("TZ");
    const bool sameVariable =
        cache.hasVariable == (variable != nullptr) && (variable == nullptr || cache.variable == variable);
    const int year = yearOf(now);
    if (!cache.valid || !sameVariable || cache.year != year) {
        tzset();
        cache.hasVariable = variable != nullptr;
        cache.variable = variable != nullptr ? variable : "";
        cache.year = year;
        const std::vector<Change> changes = changesOfYear(year);
        if (changes.size() == 2 && changes[0].before == changes[1].after) {
            cache.answer = zoneWithSeasons(changes[0], changes[1]);
            cache.valid = true;
        } else {
            cache.answer = fixedZone(now);
            cache.valid = changes.empty();
        }
    }
    zone = cache.answer.zone;
    return cache.answer.idAt(now);
}

}  // namespace quorvelin
