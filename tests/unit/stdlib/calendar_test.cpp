#include "stdlib/date/calendar.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <string>

#include "host/clock.h"

namespace quorvelin {
namespace {

// "year month day hour:minute:second weekDay yearDay", the year a full one.
std::string text(const DateFields& f) {
    char buffer[120];
    std::snprintf(buffer, sizeof buffer, "%lld %d %d %d:%d:%d %d %d", static_cast<long long>(f.year) + 1900,
                  f.month, f.day, f.hour, f.minute, f.second, f.weekDay, f.yearDay);
    return buffer;
}

int64_t seconds(int32_t year, int32_t month, int32_t day) {
    return secondsFromFields(0, 0, 0, day, month, year - 1900);
}

TEST(Calendar, TheEpoch) {
    EXPECT_EQ(text(fieldsFromSeconds(0)), "1970 0 1 0:0:0 4 0");
    EXPECT_EQ(secondsFromFields(0, 0, 0, 1, 0, 70), 0);
}

TEST(Calendar, QuirkTheFirstOfAMonthIsADayOfTheMonthBefore) {
    for (const int32_t year : {1970, 1999, 2000, 2004, 2026}) {
        EXPECT_EQ(text(fieldsFromSeconds(seconds(year, 1, 1))).substr(4, 5), " 0 32") << year;
    }
    EXPECT_EQ(text(fieldsFromSeconds(seconds(2023, 2, 1))).substr(0, 9), "2023 1 29");
    EXPECT_EQ(text(fieldsFromSeconds(seconds(2024, 2, 1))).substr(0, 9), "2024 1 30");
    EXPECT_EQ(text(fieldsFromSeconds(seconds(2024, 11, 1))).substr(0, 10), "2024 10 31");
    EXPECT_EQ(text(fieldsFromSeconds(seconds(2024, 0, 1))).substr(0, 8), "2024 0 1");
    EXPECT_EQ(text(fieldsFromSeconds(seconds(2024, 1, 2))).substr(0, 8), "2024 1 2");
}

TEST(Calendar, FieldsAgreeWithTheCLibraryButForTheFirst) {
    for (int64_t t = 0; t < 3124137600; t += 86400 * 7 + 12345) {  // until the end of 2068
        const time_t moment = static_cast<time_t>(t);
        std::tm expected{};
        gmtime_r(&moment, &expected);
        const DateFields f = fieldsFromSeconds(t);
        ASSERT_EQ(f.second, expected.tm_sec) << t;
        ASSERT_EQ(f.minute, expected.tm_min) << t;
        ASSERT_EQ(f.hour, expected.tm_hour) << t;
        ASSERT_EQ(f.weekDay, expected.tm_wday) << t;
        ASSERT_EQ(f.year, expected.tm_year) << t;
        ASSERT_EQ(f.yearDay, expected.tm_yday) << t;
        if (expected.tm_mday != 1 || expected.tm_mon == 0) {
            ASSERT_EQ(f.month, expected.tm_mon) << t;
            ASSERT_EQ(f.day, expected.tm_mday) << t;
        }
        ASSERT_EQ(f.isDaylight, 0);
        ASSERT_EQ(secondsFromFields(f), t);
    }
}

TEST(Calendar, FieldsGiveTheSameMomentAgain) {
    for (int64_t t = -1893456000; t < 3092601600; t += 86400 * 397 + 54321) {
        ASSERT_EQ(secondsFromFields(fieldsFromSeconds(t)), t) << t;
    }
}

TEST(Calendar, FieldsAreNotLimited) {
    EXPECT_EQ(secondsFromFields(0, 0, 0, 40, 0, 126), seconds(2026, 1, 9));
    EXPECT_EQ(secondsFromFields(-1, 0, 0, 1, 0, 70), -1);
    EXPECT_EQ(secondsFromFields(0, 61, 25, 0, 0, 70), (25 * 60 + 61) * 60 - 86400);
}

TEST(Calendar, ANegativeMonthIsTheFirst) {
    EXPECT_EQ(seconds(2004, -5, 7), seconds(2004, 0, 7));
}

TEST(Calendar, MonthsAboveTwelveGoOnInTheNextYears) {
    EXPECT_EQ(seconds(2004, 12, 1), seconds(2004, 0, 1) + 366 * 86400);
    EXPECT_EQ(seconds(2004, 13, 1), seconds(2005, 1, 1));
    EXPECT_EQ(seconds(2004, 24, 1), seconds(2006, 0, 1));
    EXPECT_EQ(seconds(2004, 25, 3), seconds(2006, 1, 3));
    EXPECT_EQ(secondsFromFields(0, 0, 0, 1, INT32_MAX, 70), secondsFromFields(0, 0, 0, 1, 7, 70 + 178956970));
}

TEST(Calendar, QuirkTheYearsFrom2069BeginADayEarly) {
    EXPECT_EQ(seconds(2068, 0, 1), 3092601600);
    EXPECT_EQ(seconds(2069, 0, 1), 3124224000 - 86400);
    EXPECT_EQ(seconds(2100, 0, 1), 4102444800 - 86400);
    EXPECT_EQ(seconds(2101, 0, 1), 4133980800);
}

TEST(Calendar, MomentsBefore1970) {
    EXPECT_EQ(text(fieldsFromSeconds(-1)), "1969 11 31 23:59:59 3 364");
    EXPECT_EQ(text(fieldsFromSeconds(-86400 * 365)), "1969 0 1 0:0:0 3 0");
    EXPECT_EQ(fieldsFromSeconds(-86400 * 366).weekDay, 2);
}

TEST(Calendar, TheEndsOfTheRangeDoNoHarm) {
    for (const int64_t t : {INT64_MIN, INT64_MIN + 1, INT64_MAX}) {
        const DateFields f = fieldsFromSeconds(t);
        EXPECT_LT(f.weekDay, 7);
        EXPECT_GE(f.weekDay, 0);
        EXPECT_LT(f.month, 12);
    }
    EXPECT_EQ(fieldsFromSeconds(INT64_MAX).second, 7);
}

// The estimate of the year is never corrected downwards: far in the future the day is what is left over.
TEST(Calendar, FarMomentsKeepTheEstimatedYear) {
    const DateFields f = fieldsFromSeconds(123456789012345678);
    EXPECT_EQ(static_cast<uint32_t>(f.year), static_cast<uint32_t>(123456789012345678 / 31536000 + 68));
    EXPECT_EQ(f.month, 0);
    EXPECT_LT(f.day, -900000000);
}

TEST(Calendar, QuirkYearsBelow1900CountFrom1900) {
    EXPECT_EQ(utcValue(76, 0, 1, 0, 0, 0), utcValue(1976, 0, 1, 0, 0, 0));
    EXPECT_EQ(utcValue(1800, 0, 1, 0, 0, 0), utcValue(3700, 0, 1, 0, 0, 0));
    EXPECT_EQ(utcValue(1900, 0, 1, 0, 0, 0), static_cast<double>(seconds(1900, 0, 1)) * 1000.0);
    EXPECT_EQ(utcValue(1970, 0, 1, 0, 0, 1), 1000);
    EXPECT_EQ(utcValue(INT32_MIN, 0, 1, 0, 0, 0),
              static_cast<double>(secondsFromFields(0, 0, 0, 1, 0, INT32_MIN)) * 1000.0);
}

class LocalFieldsTest : public testing::Test {
  protected:
    void TearDown() override {
        replaceTimeZone(nullptr);
        startClock();
    }

    // A zone whose seasons begin at the given month, day and hour.
    void setZone(int32_t bias, SYSTEMTIME standard, SYSTEMTIME daylight) {
        TIME_ZONE_INFORMATION zone{};
        zone.Bias = bias;
        zone.StandardDate = standard;
        zone.StandardBias = 0;
        zone.DaylightDate = daylight;
        zone.DaylightBias = -60;
        replaceTimeZone(&zone, TIME_ZONE_ID_STANDARD);
    }

    static SYSTEMTIME point(uint16_t month, uint16_t day, uint16_t hour) {
        SYSTEMTIME time{};
        time.wMonth = month;
        time.wDay = day;
        time.wHour = hour;
        return time;
    }
};

TEST_F(LocalFieldsTest, QuirkAZoneWithoutSeasonsShiftsByItsBiasOnly) {
    TIME_ZONE_INFORMATION zone{};
    zone.Bias = -90;
    zone.StandardBias = 30;
    zone.DaylightBias = -60;
    replaceTimeZone(&zone, TIME_ZONE_ID_UNKNOWN);
    const DateFields f = localFields(0);
    EXPECT_EQ(text(f), "1970 0 1 1:30:0 4 0");
    EXPECT_EQ(f.isDaylight, 0);

    zone.StandardDate.wMonth = 10;  // only one date: no seasons either
    replaceTimeZone(&zone, TIME_ZONE_ID_UNKNOWN);
    EXPECT_EQ(text(localFields(0)), "1970 0 1 1:30:0 4 0");
}

TEST_F(LocalFieldsTest, DaylightTimeInTheNorth) {
    setZone(-60, point(10, 5, 3), point(3, 5, 2));
    EXPECT_EQ(text(localFields(seconds(2026, 0, 15))), "2026 0 15 1:0:0 4 14");
    const DateFields july = localFields(seconds(2026, 6, 15));
    EXPECT_EQ(text(july).substr(0, 14), "2026 6 15 2:0:");
    EXPECT_EQ(july.isDaylight, 1);
    EXPECT_EQ(localFields(seconds(2026, 11, 15)).isDaylight, 0);
}

TEST_F(LocalFieldsTest, DaylightTimeInTheSouth) {
    setZone(-600, point(4, 1, 3), point(10, 1, 2));
    EXPECT_EQ(localFields(seconds(2026, 0, 15)).isDaylight, 1);
    EXPECT_EQ(localFields(seconds(2026, 6, 15)).isDaylight, 0);
    EXPECT_EQ(localFields(seconds(2026, 11, 15)).isDaylight, 1);
}

TEST_F(LocalFieldsTest, QuirkTheDayOfARuleIsComparedAsItStands) {
    // "The last week of March" begins on day 5 then, at two o'clock.
    setZone(0, point(10, 5, 2), point(3, 5, 2));
    EXPECT_EQ(localFields(seconds(2026, 2, 5) + 7199).isDaylight, 0);
    EXPECT_EQ(localFields(seconds(2026, 2, 5) + 7200).isDaylight, 1);
    EXPECT_EQ(localFields(seconds(2026, 9, 5) + 7199).isDaylight, 1);
    EXPECT_EQ(localFields(seconds(2026, 9, 5) + 7200).isDaylight, 0);
}

TEST_F(LocalFieldsTest, StandardBiasCountsInAZoneWithSeasons) {
    TIME_ZONE_INFORMATION zone{};
    zone.StandardDate = point(10, 1, 0);
    zone.StandardBias = -30;
    zone.DaylightDate = point(3, 1, 0);
    zone.DaylightBias = -60;
    replaceTimeZone(&zone, TIME_ZONE_ID_STANDARD);
    EXPECT_EQ(text(localFields(seconds(2026, 0, 15))).substr(0, 14), "2026 0 15 0:30");
}

TEST_F(LocalFieldsTest, ThePresentMoment) {
    stopClock(1784116800, 999);
    EXPECT_EQ(presentSeconds(), 1784116800);
    stopClock(-1);
    EXPECT_EQ(presentSeconds(), -1);
}

}  // namespace
}  // namespace quorvelin
