// When the commands of a tape start.
#include "bancada/tape/TapeClock.h"

#include <gtest/gtest.h>

using namespace bancada;

namespace
{

TapeCommand At(UINT32 second)
{
    TapeCommand command;
    command.place = {"t", 4, 1};
    command.em = RtcAbsoluteTime(second);
    return command;
}

TEST(TapeClock, ACommandWithoutInstantComesOneSecondLater)
{
    TapeCommand unsaid;
    TapeClock clock;
    EXPECT_EQ(clock.Next(At(1000)).s, 1000U);
    EXPECT_EQ(clock.Next(unsaid).s, 1001U);
    EXPECT_EQ(clock.Next(unsaid).s, 1002U);
    EXPECT_EQ(clock.Next(At(500)).s, 500U);
    EXPECT_EQ(clock.Next(unsaid).s, 501U);
}

TEST(TapeClock, ACommandWithoutInstantComesOneSecondAfterTheEndOfTheOneBefore)
{
    TapeCommand unsaid;
    TapeCommand ends = At(1000);
    ends.fim = RtcAbsoluteTime(1010);
    TapeClock clock;
    EXPECT_EQ(clock.Next(ends).s, 1000U);
    EXPECT_EQ(clock.Last().s, 1010U);
    EXPECT_EQ(clock.Next(unsaid).s, 1011U);
    ends = unsaid;
    ends.fim = RtcAbsoluteTime(1012); // the second at which it starts
    EXPECT_EQ(clock.Next(ends).s, 1012U);
    EXPECT_EQ(clock.Next(unsaid).s, 1013U);
}

TEST(TapeClock, NoCommandEndsBeforeItStarts)
{
    TapeCommand command = At(1000);
    command.fim = RtcAbsoluteTime(999);
    command.fimPlace = {"t", 4, 30};
    TapeClock clock;
    EXPECT_EQ(clock.Next(At(900)).s, 900U);
    try {
        static_cast<void>(clock.Next(command));
        FAIL();
    } catch (const TapeError& error) {
        EXPECT_STREQ(error.what(), "t:4:30: field \"fim\": the command ends before it starts");
    }
    EXPECT_EQ(clock.Last().s, 900U);
}

TEST(TapeClock, TheFirstCommandSaysWhen)
{
    TapeCommand unsaid;
    unsaid.place = {"t", 4, 1};
    TapeClock clock;
    try {
        static_cast<void>(clock.Next(unsaid));
        FAIL();
    } catch (const TapeError& error) {
        EXPECT_STREQ(error.what(), "t:4:1: the first command of a tape needs the field \"em\"");
    }
}

TEST(TapeClock, TheClockEnds)
{
    TapeCommand unsaid;
    TapeClock clock;
    EXPECT_EQ(clock.Next(At(0xFFFFFFFEU)).s, 0xFFFFFFFEU);
    EXPECT_EQ(clock.Next(unsaid).s, 0xFFFFFFFFU);
    EXPECT_THROW(static_cast<void>(clock.Next(unsaid)), TapeError);
}

} // namespace
