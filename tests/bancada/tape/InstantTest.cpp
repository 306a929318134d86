// Instants as the tape writes them.
#include "bancada/tape/Instant.h"

#include <gtest/gtest.h>

using bancada::ParseInstant;

namespace
{

bool IsInstant(const char* text)
{
    RtcAbsoluteTime instant;
    return ParseInstant(text, instant);
}

UINT32 Seconds(const char* text)
{
    RtcAbsoluteTime instant;
    return ParseInstant(text, instant) ? instant.s : 0;
}

TEST(TapeInstant, KnownInstants)
{
    EXPECT_EQ(Seconds("1970-01-01 00:00:01"), 1U);
    EXPECT_EQ(Seconds("1970-01-02 00:00:00"), 86400U);
    EXPECT_EQ(Seconds("2000-02-29 12:00:00"), 951825600U);
    EXPECT_EQ(Seconds("2000-03-01 00:00:00"), 951868800U);
    EXPECT_EQ(Seconds("2026-12-31 23:59:59"), 1798761599U);
    EXPECT_EQ(Seconds("2100-03-01 00:00:00"), 4107542400U);
    EXPECT_EQ(Seconds("2106-02-07 06:28:15"), 4294967295U);
}

TEST(TapeInstant, TheClocksOwnTextReadsBack)
{
    // Every day from 1970 to 2106, by the clock's writer.
    for (UINT32 day = 1; day < 49700; ++day) {
        const RtcAbsoluteTime instant(day * 86400 + day % 86400);
        char text[20];
        instant.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", text);
        ASSERT_EQ(Seconds(text), instant.s) << text;
    }
}

TEST(TapeInstant, OutsideTheClockIsNone)
{
    EXPECT_FALSE(IsInstant("1970-01-01 00:00:00")); // stands for never
    EXPECT_FALSE(IsInstant("1969-12-31 23:59:59"));
    EXPECT_FALSE(IsInstant("0000-01-01 00:00:01"));
    EXPECT_FALSE(IsInstant("2106-02-07 06:28:16"));
    EXPECT_FALSE(IsInstant("9999-12-31 23:59:59"));
}

TEST(TapeInstant, DaysAndTimesThatDoNotExistAreNone)
{
    EXPECT_FALSE(IsInstant("2026-00-01 00:00:00"));
    EXPECT_FALSE(IsInstant("2026-13-01 00:00:00"));
    EXPECT_FALSE(IsInstant("2026-01-00 00:00:00"));
    EXPECT_TRUE(IsInstant("2026-01-31 00:00:00"));
    EXPECT_FALSE(IsInstant("2026-01-32 00:00:00"));
    EXPECT_TRUE(IsInstant("2026-02-28 00:00:00"));
    EXPECT_FALSE(IsInstant("2026-02-29 00:00:00"));
    EXPECT_TRUE(IsInstant("2024-02-29 00:00:00"));
    EXPECT_FALSE(IsInstant("2100-02-29 00:00:00"));
    EXPECT_FALSE(IsInstant("2026-04-31 00:00:00"));
    EXPECT_TRUE(IsInstant("2026-04-30 23:59:59"));
    EXPECT_FALSE(IsInstant("2026-04-30 24:00:00"));
    EXPECT_FALSE(IsInstant("2026-04-30 23:60:00"));
    EXPECT_FALSE(IsInstant("2026-04-30 23:59:60"));
}

TEST(TapeInstant, AnyOtherFormIsNone)
{
    for (const char* text : {"", "2026-03-02", "2026-03-02T08:00:00", "2026-03-02 08:00",
                             "2026-03-02 08:00:00 ", " 2026-03-02 08:00:00", "2026-3-2 08:00:00",
                             "2026/03/02 08:00:00", "2026-03-02 08:00:0x", "+026-03-02 08:00:00"}) {
        EXPECT_FALSE(IsInstant(text)) << text;
    }
}

} // namespace
