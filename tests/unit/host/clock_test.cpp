#include "host/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace quorvelin {
namespace {

constexpr std::int64_t january2026 = 1768478400;  // 15 January 2026, 12:00 UTC
constexpr std::int64_t july2026 = 1784116800;     // 15 July 2026, 12:00 UTC

class ClockTest : public testing::Test {
  protected:
    void SetUp() override {
        const char* zone = std::getenv("TZ");
        hadZone = zone != nullptr;
        oldZone = hadZone ? zone : "";
        stopClock(january2026);
    }

    void TearDown() override {
        if (hadZone) {
            setenv("TZ", oldZone.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        startClock();
        replaceTimeZone(nullptr);
    }

    // The zone that TZ=`variable` gives at the moment of the clock.
    TIME_ZONE_INFORMATION zoneOf(const char* variable) {
        setenv("TZ", variable, 1);
        TIME_ZONE_INFORMATION zone{};
        zone.Bias = 12345;
        id = GetTimeZoneInformation(&zone);
        return zone;
    }

    std::uint32_t id = 99;

  private:
    bool hadZone = false;
    std::string oldZone;
};

// A rule as "month week day-of-week hour:minute:second".
std::string text(const SYSTEMTIME& rule) {
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%d.%d.%d %02d:%02d:%02d", rule.wMonth, rule.wDay, rule.wDayOfWeek,
                  rule.wHour, rule.wMinute, rule.wSecond);
    return rule.wYear == 0 ? buffer : std::string("with a year: ") + buffer;
}

std::string text(const char16_t (&name)[32]) {
    std::string narrow;
    for (const char16_t* c = name; *c != 0; ++c) {
        narrow += static_cast<char>(*c);
    }
    return narrow;
}

TEST_F(ClockTest, RunningClockAgreesWithTheSystem) {
    startClock();
    const std::time_t before = std::time(nullptr);
    SYSTEMTIME time{};
    GetSystemTime(&time);
    const std::time_t after = std::time(nullptr);
    std::tm fields{};
    fields.tm_year = time.wYear - 1900;
    fields.tm_mon = time.wMonth - 1;
    fields.tm_mday = time.wDay;
    fields.tm_hour = time.wHour;
    fields.tm_min = time.wMinute;
    fields.tm_sec = time.wSecond;
    const std::time_t moment = timegm(&fields);
    EXPECT_GE(moment, before - 1);
    EXPECT_LE(moment, after);
    EXPECT_LT(time.wMilliseconds, 1000);
}

TEST_F(ClockTest, StoppedClockGivesUtcFieldsInAnyZone) {
    setenv("TZ", "XXX-5", 1);
    stopClock(1163494773, 250);
    SYSTEMTIME time{};
    GetSystemTime(&time);
    EXPECT_EQ(time.wYear, 2006);
    EXPECT_EQ(time.wMonth, 11);
    EXPECT_EQ(time.wDayOfWeek, 2);
    EXPECT_EQ(time.wDay, 14);
    EXPECT_EQ(time.wHour, 8);
    EXPECT_EQ(time.wMinute, 59);
    EXPECT_EQ(time.wSecond, 33);
    EXPECT_EQ(time.wMilliseconds, 250);
}

TEST_F(ClockTest, UtcHasNoSeasons) {
    const TIME_ZONE_INFORMATION zone = zoneOf("UTC");
    EXPECT_EQ(id, TIME_ZONE_ID_UNKNOWN);
    EXPECT_EQ(zone.Bias, 0);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, 0);
    EXPECT_EQ(zone.StandardDate.wMonth, 0);
    EXPECT_EQ(zone.DaylightDate.wMonth, 0);
}

TEST_F(ClockTest, ZoneWithoutSeasonsKeepsItsOffset) {
    const TIME_ZONE_INFORMATION zone = zoneOf("IST-5:30");
    EXPECT_EQ(id, TIME_ZONE_ID_UNKNOWN);
    EXPECT_EQ(zone.Bias, -330);
    EXPECT_EQ(zone.StandardDate.wMonth, 0);
    EXPECT_EQ(zone.DaylightDate.wMonth, 0);
    EXPECT_EQ(text(zone.StandardName), "IST");
}

TEST_F(ClockTest, CentralEuropeChangesOnLastSundays) {
    const TIME_ZONE_INFORMATION zone = zoneOf("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(id, TIME_ZONE_ID_STANDARD);
    EXPECT_EQ(zone.Bias, -60);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, -60);
    EXPECT_EQ(text(zone.DaylightDate), "3.5.0 02:00:00");
    EXPECT_EQ(text(zone.StandardDate), "10.5.0 03:00:00");
    EXPECT_EQ(text(zone.StandardName), "CET");
    EXPECT_EQ(text(zone.DaylightName), "CEST");
}

TEST_F(ClockTest, SummerIsDaylightTimeInTheNorth) {
    stopClock(july2026);
    const TIME_ZONE_INFORMATION zone = zoneOf("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(id, TIME_ZONE_ID_DAYLIGHT);
    EXPECT_EQ(zone.Bias, -60);
}

TEST_F(ClockTest, WestOfGreenwichBiasIsPositive) {
    const TIME_ZONE_INFORMATION zone = zoneOf("EST5EDT,M3.2.0,M11.1.0");
    EXPECT_EQ(zone.Bias, 300);
    EXPECT_EQ(zone.DaylightBias, -60);
    EXPECT_EQ(text(zone.DaylightDate), "3.2.0 02:00:00");
    EXPECT_EQ(text(zone.StandardDate), "11.1.0 02:00:00");
}

TEST_F(ClockTest, SouthernHemisphereHasDaylightTimeOverTheNewYear) {
    const TIME_ZONE_INFORMATION zone = zoneOf("AEST-10AEDT,M10.1.0,M4.1.0/3");
    EXPECT_EQ(id, TIME_ZONE_ID_DAYLIGHT);
    EXPECT_EQ(zone.Bias, -600);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, -60);
    EXPECT_EQ(text(zone.DaylightDate), "10.1.0 02:00:00");
    EXPECT_EQ(text(zone.StandardDate), "4.1.0 03:00:00");
    EXPECT_EQ(text(zone.StandardName), "AEST");
    EXPECT_EQ(text(zone.DaylightName), "AEDT");
    stopClock(july2026);
    zoneOf("AEST-10AEDT,M10.1.0,M4.1.0/3");
    EXPECT_EQ(id, TIME_ZONE_ID_STANDARD);
}

TEST_F(ClockTest, SeasonsMayDifferByHalfAnHour) {
    const TIME_ZONE_INFORMATION zone = zoneOf("LHST-10:30LHDT-11,M10.1.0,M4.1.0");
    EXPECT_EQ(zone.Bias, -630);
    EXPECT_EQ(zone.DaylightBias, -30);
}

TEST_F(ClockTest, FourthWeekIsToldFromLastWeek) {
    // In 2026 the fourth Sunday of September, the 27th, is the last one too.
    EXPECT_EQ(text(zoneOf("XXX-3YYY,M3.5.0,M9.4.0").StandardDate), "9.4.0 02:00:00");
    EXPECT_EQ(text(zoneOf("XXX-3YYY,M3.5.0,M9.5.0").StandardDate), "9.5.0 02:00:00");
}

TEST_F(ClockTest, ChangeOnAnotherDayOfTheWeekWithMinutes) {
    const TIME_ZONE_INFORMATION zone = zoneOf("XXX-2YYY,M4.3.5/00:30,M10.2.4/23:59:59");
    EXPECT_EQ(text(zone.DaylightDate), "4.3.5 00:30:00");
    EXPECT_EQ(text(zone.StandardDate), "10.2.4 23:59:59");
}

TEST_F(ClockTest, ChangeOfTheVariableIsFollowed) {
    EXPECT_EQ(zoneOf("AAA-1").Bias, -60);
    EXPECT_EQ(zoneOf("BBB-2").Bias, -120);
    EXPECT_EQ(zoneOf("AAA-1").Bias, -60);
}

TEST_F(ClockTest, RepeatedQuestionGivesSameRules) {
    const TIME_ZONE_INFORMATION first = zoneOf("CET-1CEST,M3.5.0,M10.5.0/3");
    const TIME_ZONE_INFORMATION second = zoneOf("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(text(first.StandardDate), text(second.StandardDate));
    EXPECT_EQ(first.Bias, second.Bias);
}

TEST_F(ClockTest, ReplacedZoneIsGivenAsItIs) {
    TIME_ZONE_INFORMATION wanted{};
    wanted.Bias = 77;
    wanted.DaylightBias = -5;
    wanted.StandardDate.wMonth = 2;
    replaceTimeZone(&wanted, TIME_ZONE_ID_DAYLIGHT);
    const TIME_ZONE_INFORMATION zone = zoneOf("AAA-1");
    EXPECT_EQ(id, TIME_ZONE_ID_DAYLIGHT);
    EXPECT_EQ(zone.Bias, 77);
    EXPECT_EQ(zone.DaylightBias, -5);
    EXPECT_EQ(zone.StandardDate.wMonth, 2);
    replaceTimeZone(nullptr);
    EXPECT_EQ(zoneOf("AAA-1").Bias, -60);
}

}  // namespace
}  // namespace quorvelin
