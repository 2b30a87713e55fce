#include "stdlib/date/date_names.h"

#include "foundation/name.h"
#include "foundation/well_known_names.h"

namespace quorvelin {

namespace {

constexpr WellKnownName kMonths[12] = {
    WellKnownName::January,   WellKnownName::February, WellKnownName::March,    WellKnownName::April,
    WellKnownName::May,       WellKnownName::June,     WellKnownName::July,     WellKnownName::August,
    WellKnownName::September, WellKnownName::October,  WellKnownName::November, WellKnownName::December,
};

constexpr WellKnownName kDays[7] = {
    WellKnownName::Sunday,   WellKnownName::Monday, WellKnownName::Tuesday,  WellKnownName::Wednesday,
    WellKnownName::Thursday, WellKnownName::Friday, WellKnownName::Saturday,
};

int32_t fold(int32_t number, int32_t count) {
    return (number % count + count) % count;
}

}  // namespace

const BString& monthName(int32_t month) {
    return nameText(kMonths[fold(month, 12)]);
}

const BString& dayName(int32_t weekDay) {
    return nameText(kDays[fold(weekDay, 7)]);
}

}  // namespace quorvelin
