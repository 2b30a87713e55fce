#include "stdlib/date/date_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "host/clock.h"
#include "stdlib/date/calendar.h"

namespace quorvelin {
namespace {

class DateParserTest : public testing::Test {
  protected:
    void SetUp() override {
        stopClock(1784116800);
        TIME_ZONE_INFORMATION zone{};
        zone.Bias = -120;
        replaceTimeZone(&zone, TIME_ZONE_ID_UNKNOWN);
    }
    void TearDown() override {
        startClock();
        replaceTimeZone(nullptr);
    }

    // The clock of the zone above, as if it were UTC.
    static constexpr double kPresent = (1784116800.0 + 7200.0) * 1000.0;

    // `month` from 1.
    static double at(int32_t year, int32_t month, int32_t day, int32_t hour = 0, int32_t minute = 0,
                     int32_t second = 0) {
        return utcValue(year, month - 1, day, hour, minute, second);
    }
};

TEST_F(DateParserTest, AMonthNameAndTwoNumbers) {
    EXPECT_EQ(parseDateText(u"Nov 14 2026"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"14 nOV, 2026"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"Sat 14 Nov 2026"), at(2026, 11, 14));
}

TEST_F(DateParserTest, EveryMonthName) {
    const char16_t* const names[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                     u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    for (int32_t i = 0; i < 12; ++i) EXPECT_EQ(parseDateText(names[i]), at(1970, i + 1, 1)) << i;
}

TEST_F(DateParserTest, NumbersBySizeAndOrder) {
    EXPECT_EQ(parseDateText(u"11/14/2026"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"14/11/2026"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"2026-11-14"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"1 2 3"), at(1903, 1, 2));
    EXPECT_EQ(parseDateText(u"20 21 22"), at(1922, 21, 20));
    EXPECT_EQ(parseDateText(u"5"), at(1970, 5, 1));
    EXPECT_EQ(parseDateText(u"13"), at(1970, 1, 13));
}

TEST_F(DateParserTest, QuirkALongMonthNameIsIgnored) {
    EXPECT_EQ(parseDateText(u"14 November 2026"), at(2026, 1, 14));
    EXPECT_EQ(parseDateText(u"No 14 2026"), at(2026, 1, 14));
}

TEST_F(DateParserTest, QuirkAColonBehindDigitsIsNotSeen) {
    EXPECT_EQ(parseDateText(u"Nov 14 2026 10:30:15"), at(2026, 11, 14, 15, 30, 0));
    EXPECT_EQ(parseDateText(u"12:30"), at(1970, 12, 30));
}

TEST_F(DateParserTest, AColonOnItsOwnMovesTheNumberBefore) {
    EXPECT_EQ(parseDateText(u"14 Nov 2026 10 :30"), at(2026, 11, 14, 10, 0, 0) + 0);
    EXPECT_EQ(parseDateText(u"10 :11 :14 Nov 2026"), at(2026, 11, 14, 10, 11, 0));
    EXPECT_EQ(parseDateText(u"10 ::14 Nov 2026"), at(2026, 11, 14, 10, 0, 0));
    EXPECT_EQ(parseDateText(u":5"), at(1970, 5, 1));
    // A word between takes the connection away.
    EXPECT_EQ(parseDateText(u"10 x :14 2026"), at(2026, 10, 14));
}

TEST_F(DateParserTest, NumbersBeyondTheLists) {
    EXPECT_EQ(parseDateText(u"11 14 2026 1 2 3 4 5"), at(2026, 11, 14, 1, 2, 3));
    EXPECT_EQ(parseDateText(u"11 14 2026 30 40 50"), at(2026, 11, 14, 0, 30, 40));
    EXPECT_EQ(parseDateText(u"11 14 2026 30 5 50"), at(2026, 11, 14, 5, 30, 50));
}

TEST_F(DateParserTest, QuirkNoPivotForShortYears) {
    EXPECT_EQ(parseDateText(u"Jan 1 99"), at(1999, 1, 1));
    EXPECT_EQ(parseDateText(u"Jan 2 04"), at(1904, 1, 2));
    EXPECT_EQ(parseDateText(u"Jan 1 1899"), at(3799, 1, 1));
    EXPECT_EQ(parseDateText(u"Jan 1 1900"), at(1900, 1, 1));
}

TEST_F(DateParserTest, MissingPartsHaveDefaults) {
    EXPECT_EQ(parseDateText(u"Jan"), at(1970, 1, 1));
}

TEST_F(DateParserTest, QuirkWithoutAnyPartItIsTheLocalClockReadAsUtc) {
    for (const char16_t* text : {u"", u"hello", u"   ", u":", u"GMT+0130", u"Monday"}) {
        EXPECT_EQ(parseDateText(text), kPresent);
    }
}

TEST_F(DateParserTest, Zones) {
    const double noon = at(2026, 11, 14);
    EXPECT_EQ(parseDateText(u"Nov 14 2026 GMT"), noon);
    EXPECT_EQ(parseDateText(u"Nov 14 2026 GMT+0130"), noon - 90 * 60000.0);
    EXPECT_EQ(parseDateText(u"Nov 14 2026 utc-0500"), noon + 300 * 60000.0);
    EXPECT_EQ(parseDateText(u"Nov 14 2026 Gmt  -  0500"), noon + 300 * 60000.0);
    EXPECT_EQ(parseDateText(u"UTC 0100 Nov 14 2026"), noon - 3600000.0);
    EXPECT_EQ(parseDateText(u"UTC5 Nov 14 2026"), noon - 5 * 60000.0);
    EXPECT_EQ(parseDateText(u"GMT+1/11/14/2026"), noon - 60000.0);
    EXPECT_EQ(parseDateText(u"GMT"), kPresent);
}

TEST_F(DateParserTest, QuirkZoneMinusOneIsNone) {
    EXPECT_EQ(parseDateText(u"Nov 14 2026 GMT-1"), at(2026, 11, 14));
    EXPECT_EQ(parseDateText(u"Nov 14 2026 GMT-2"), at(2026, 11, 14) + 120000.0);
}

TEST_F(DateParserTest, QuirkALeadingZeroMakesANumberOctal) {
    EXPECT_EQ(parseDateText(u"010 1 2000"), at(2000, 8, 1));
    EXPECT_EQ(parseDateText(u"08 1 2000"), at(2000, 0, 1));
    EXPECT_EQ(parseDateText(u"0000000000000000000000000000000000000000000010 1 2000"), at(2000, 8, 1));
}

TEST_F(DateParserTest, HugeNumbersAreCut) {
    EXPECT_EQ(parseDateText(u"1 1 200000000"), at(200000000, 1, 1));
    // The largest year lies beyond 64 bits of milliseconds.
    EXPECT_EQ(parseDateText(u"1 1 99999999999999999999999999999999999999999"),
              static_cast<double>(INT64_MIN / 1000) * 1000.0);
}

TEST_F(DateParserTest, WithoutAZoneATextIsReadAsUtc) {
    EXPECT_EQ(parseDateText(u"Jan 1 1970"), 0);
}

}  // namespace
}  // namespace quorvelin
