#include "RtcClasses.h"

#include "tests/libs/GuardedText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <type_traits>

namespace
{

static_assert(std::is_base_of<RtcTime, RtcRelativeTime>::value, "a span is a count of seconds");
static_assert(std::is_base_of<RtcTime, RtcAbsoluteTime>::value, "an instant is one too");
static_assert(std::is_same<decltype(RtcAbsoluteTime() == RtcAbsoluteTime()), BOOL>::value,
              "the comparison of instants answers a BOOL");

std::string DateTimeText(UINT32 seconds, const char* date = "yyyy-mm-dd",
                         const char* time = "hh:mm:ss")
{
    char text[64];
    const RtcAbsoluteTime instant(seconds);
    EXPECT_EQ(instant.ToStrDateTime(date, time, text), text);
    return text;
}

std::string DateText(UINT32 seconds, const char* pattern = "yyyy-mm-dd")
{
    char text[64];
    const RtcAbsoluteTime instant(seconds);
    EXPECT_EQ(instant.ToStrDate(pattern, text), text);
    return text;
}

TEST(RtcTime, StartsAtZero)
{
    EXPECT_EQ(RtcTime().s, 0u);
    EXPECT_EQ(RtcRelativeTime().s, 0u);
    EXPECT_EQ(RtcAbsoluteTime().s, 0u);
}

TEST(RtcTime, ASpanAndAnInstantHoldTheSecondsGiven)
{
    EXPECT_EQ(RtcRelativeTime(1ul).s, 1u);
    EXPECT_EQ(RtcRelativeTime(0xFFFFFFFFul).s, 0xFFFFFFFFu);
    EXPECT_EQ(RtcAbsoluteTime(0xFFFFFFFFu).s, 0xFFFFFFFFu);
}

TEST(RtcTime, AssignmentCopiesTheSeconds)
{
    RtcRelativeTime span;
    EXPECT_EQ(&(span = RtcRelativeTime(93600)), &span);
    EXPECT_EQ(span.s, 93600u);
    RtcAbsoluteTime instant;
    EXPECT_EQ(&(instant = RtcAbsoluteTime(4294967295u)), &instant);
    EXPECT_EQ(instant.s, 4294967295u);
}

TEST(RtcTime, ComparisonOfInstantsAnswersOneOrZero)
{
    const RtcAbsoluteTime instant(0x80000000u);
    EXPECT_EQ(instant == RtcAbsoluteTime(0x80000000u), 1);
    EXPECT_EQ(instant == RtcAbsoluteTime(0x80000001u), 0);
    EXPECT_EQ(instant == RtcAbsoluteTime(0), 0);
    EXPECT_EQ(instant != RtcAbsoluteTime(0x80000000u), 0);
    EXPECT_EQ(instant != RtcAbsoluteTime(0x80000001u), 1);
}

TEST(RtcTime, AnInstantNeverSetHoldsTheMarkerOfUnset)
{
    EXPECT_EQ(matlong[0], 0u);
    EXPECT_EQ(RtcAbsoluteTime() == RtcAbsoluteTime(matlong[0]), 1);
    EXPECT_EQ(RtcAbsoluteTime(1) == RtcAbsoluteTime(matlong[0]), 0);
}

TEST(RtcTime, TheLongestFiscalDayIs26Hours)
{
    EXPECT_EQ(MAX_TEMPO_OPERACIONAL.s, 93600u);
}

TEST(DateTimeText, FirstAndLastInstant)
{
    EXPECT_EQ(DateTimeText(0), "1970-01-01 00:00:00");
    EXPECT_EQ(DateTimeText(4294967295u), "2106-02-07 06:28:15");
}

TEST(DateTimeText, AroundMidnight)
{
    EXPECT_EQ(DateTimeText(86399), "1970-01-01 23:59:59");
    EXPECT_EQ(DateTimeText(86400), "1970-01-02 00:00:00");
    EXPECT_EQ(DateTimeText(86401), "1970-01-02 00:00:01");
}

TEST(DateTimeText, AroundAnHourAndAMinute)
{
    EXPECT_EQ(DateTimeText(59), "1970-01-01 00:00:59");
    EXPECT_EQ(DateTimeText(60), "1970-01-01 00:01:00");
    EXPECT_EQ(DateTimeText(3599), "1970-01-01 00:59:59");
    EXPECT_EQ(DateTimeText(3600), "1970-01-01 01:00:00");
    EXPECT_EQ(DateTimeText(43200), "1970-01-01 12:00:00");
}

TEST(DateTimeText, Around2038)
{
    EXPECT_EQ(DateTimeText(2147483647u), "2038-01-19 03:14:07");
    EXPECT_EQ(DateTimeText(2147483648u), "2038-01-19 03:14:08");
}

TEST(DateTimeText, KnownInstants)
{
    EXPECT_EQ(DateTimeText(946684799u), "1999-12-31 23:59:59");
    EXPECT_EQ(DateTimeText(946684800u), "2000-01-01 00:00:00");
    EXPECT_EQ(DateTimeText(1234567890u), "2009-02-13 23:31:30");
    EXPECT_EQ(DateTimeText(1700000000u), "2023-11-14 22:13:20");
}

TEST(DateText, LeapDayOf2000)
{
    EXPECT_EQ(DateText(951782399u), "2000-02-28");
    EXPECT_EQ(DateText(951782400u), "2000-02-29");
    EXPECT_EQ(DateText(951868800u), "2000-03-01");
}

TEST(DateText, LeapDayOf2024)
{
    EXPECT_EQ(DateText(1709164799u), "2024-02-28");
    EXPECT_EQ(DateText(1709164800u), "2024-02-29");
    EXPECT_EQ(DateText(1709251200u), "2024-03-01");
}

TEST(DateText, The2023FebruaryHas28Days)
{
    EXPECT_EQ(DateText(1677628799u), "2023-02-28");
    EXPECT_EQ(DateText(1677628800u), "2023-03-01");
}

TEST(DateText, The2100FebruaryHas28Days)
{
    EXPECT_EQ(DateText(4107542399u), "2100-02-28");
    EXPECT_EQ(DateText(4107542400u), "2100-03-01");
}

TEST(DateText, FirstAndLastDayOfEveryMonthOf2026)
{
    const struct {
        UINT32 firstDay; // its first second
        const char* first;
        const char* lastBefore;
    } months[] = {
        {1767225600u, "2026-01-01", "2025-12-31"}, {1769904000u, "2026-02-01", "2026-01-31"},
        {1772323200u, "2026-03-01", "2026-02-28"}, {1775001600u, "2026-04-01", "2026-03-31"},
        {1777593600u, "2026-05-01", "2026-04-30"}, {1780272000u, "2026-06-01", "2026-05-31"},
        {1782864000u, "2026-07-01", "2026-06-30"}, {1785542400u, "2026-08-01", "2026-07-31"},
        {1788220800u, "2026-09-01", "2026-08-31"}, {1790812800u, "2026-10-01", "2026-09-30"},
        {1793491200u, "2026-11-01", "2026-10-31"}, {1796083200u, "2026-12-01", "2026-11-30"},
        {1798761600u, "2027-01-01", "2026-12-31"},
    };
    for (const auto& month : months) {
        EXPECT_EQ(DateText(month.firstDay), month.first);
        EXPECT_EQ(DateText(month.firstDay - 1), month.lastBefore);
    }
}

// Every day there is, against a calendar that counts days one by one.
TEST(DateText, EveryDayFrom1970To2106)
{
    int year = 1970;
    int month = 1;
    int day = 1;
    for (UINT32 number = 0; number <= 4294967295u / 86400; ++number) {
        char expected[32];
        std::snprintf(expected, sizeof(expected), "%04d-%02d-%02d", year, month, day);
        char text[32];
        RtcAbsoluteTime(number * 86400).ToStrDate("yyyy-mm-dd", text);
        ASSERT_STREQ(text, expected) << "day " << number;

        const bool leap = year % 4 == 0 && year != 2100;
        const int days[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        if (++day > days[month - 1]) {
            day = 1;
            if (++month > 12) {
                month = 1;
                ++year;
            }
        }
    }
    EXPECT_EQ(year, 2106);
}

TEST(DateTimeText, EverySecondOfADay)
{
    UINT32 second = 1709164800u;
    for (int h = 0; h < 24; ++h) {
        for (int m = 0; m < 60; ++m) {
            for (int s = 0; s < 60; ++s) {
                char expected[64];
                std::snprintf(expected, sizeof(expected), "2024-02-29 %02d:%02d:%02d", h, m, s);
                char text[64];
                RtcAbsoluteTime(second++).ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", text);
                ASSERT_STREQ(text, expected);
            }
        }
    }
}

// 2009-02-13 23:31:30
constexpr UINT32 INSTANT = 1234567890u;

TEST(TimePattern, TwoMeanTheMonthInADateAndTheMinuteInATime)
{
    EXPECT_EQ(DateTimeText(INSTANT, "mm", "mm"), "02 31");
    EXPECT_EQ(DateText(INSTANT, "mm"), "02");
}

TEST(TimePattern, FieldsStandInAnyOrderAndMayRepeat)
{
    EXPECT_EQ(DateTimeText(INSTANT, "dd/mm/yyyy", "ss-mm-hh"), "13/02/2009 30-31-23");
    EXPECT_EQ(DateTimeText(INSTANT, "ddmmyyyydd", "hhhh"), "1302200913 2323");
}

TEST(TimePattern, OtherCharactersAreCopied)
{
    EXPECT_EQ(DateTimeText(INSTANT, "AAAA em dd", "as hh'h'"), "AAAA em 13 as 23'h'");
    EXPECT_EQ(DateText(INSTANT, "YYYY MM DD hh:ss"), "YYYY MM DD hh:ss");
    EXPECT_EQ(DateTimeText(INSTANT, "", "yyyy-dd HH SS"), " yyyy-dd HH SS");
}

TEST(TimePattern, TooFewLettersAreCopiedAndLettersLeftOverToo)
{
    EXPECT_EQ(DateText(INSTANT, "y yy yyy"), "y yy yyy");
    EXPECT_EQ(DateText(INSTANT, "d-m"), "d-m");
    EXPECT_EQ(DateText(INSTANT, "yyyyy mmm ddd"), "2009y 02m 13d");
    EXPECT_EQ(DateTimeText(INSTANT, "d", "h m s hhh"), "d h m s 23h");
}

TEST(TimePattern, EmptyPatternsLeaveTheBlankBetween)
{
    EXPECT_EQ(DateTimeText(INSTANT, "", ""), " ");
    EXPECT_EQ(DateText(INSTANT, ""), "");
}

TEST(TimePattern, WritesNoByteBeyondTheText)
{
    GuardedText dateTime(20);
    RtcAbsoluteTime(INSTANT).ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", dateTime.Buffer());
    EXPECT_EQ(dateTime.Text(), "2009-02-13 23:31:30");
    EXPECT_TRUE(dateTime.GuardsAreWhole());

    GuardedText date(11);
    RtcAbsoluteTime(INSTANT).ToStrDate("yyyy-mm-dd", date.Buffer());
    EXPECT_EQ(date.Text(), "2009-02-13");
    EXPECT_TRUE(date.GuardsAreWhole());
}

} // namespace
