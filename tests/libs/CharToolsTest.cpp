#include "libs/CharTools.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

namespace
{

std::string Removed(const char* text, char c)
{
    char work[64];
    std::strcpy(work, text);
    CharRemove(work, c);
    return work;
}

std::string Replaced(const char* text, char from, char to)
{
    char work[64];
    std::strcpy(work, text);
    CharReplace(work, from, to);
    return work;
}

TEST(CharRemove, ClosesTheGapAtTheFrontInTheMiddleAndAtTheEnd)
{
    EXPECT_EQ(Removed(".ab", '.'), "ab");
    EXPECT_EQ(Removed("a.b", '.'), "ab");
    EXPECT_EQ(Removed("ab.", '.'), "ab");
}

TEST(CharRemove, RemovesEveryOccurrence)
{
    EXPECT_EQ(Removed("1.234.567,89", '.'), "1234567,89");
    EXPECT_EQ(Removed("..a..b..", '.'), "ab");
}

TEST(CharRemove, LeavesNothingOfATextOfThatCharacterAlone)
{
    EXPECT_EQ(Removed("'", '\''), "");
    EXPECT_EQ(Removed("''''", '\''), "");
}

TEST(CharRemove, LeavesATextWithoutTheCharacterAsItIs)
{
    EXPECT_EQ(Removed("", '.'), "");
    EXPECT_EQ(Removed("0,00", '.'), "0,00");
}

TEST(CharRemove, RemovesBytesAboveAscii)
{
    EXPECT_EQ(Removed("a\xC7"
                      "b\xC7",
                      '\xC7'),
              "ab");
}

TEST(CharRemove, StopsAtTheTerminator)
{
    std::array<char, 8> work = {'a', '.', 'b', '\0', '.', 'c', '.', '\0'};
    CharRemove(work.data(), '.');
    EXPECT_STREQ(work.data(), "ab");
    EXPECT_STREQ(work.data() + 4, ".c.");
}

TEST(CharReplace, ReplacesEveryOccurrenceAndKeepsTheLength)
{
    EXPECT_EQ(Replaced("1234,56", ',', '.'), "1234.56");
    EXPECT_EQ(Replaced(",a,,b,", ',', '.'), ".a..b.");
    EXPECT_EQ(Replaced("D'AGUA", '\'', '`'), "D`AGUA");
    EXPECT_EQ(Replaced("'", '\'', ' '), " ");
}

TEST(CharReplace, LeavesATextWithoutTheCharacterAsItIs)
{
    EXPECT_EQ(Replaced("", ',', '.'), "");
    EXPECT_EQ(Replaced("a.b", ',', '.'), "a.b");
}

TEST(CharReplace, ByItselfChangesNothing)
{
    EXPECT_EQ(Replaced("a,b", ',', ','), "a,b");
}

TEST(CharReplace, StopsAtTheTerminator)
{
    std::array<char, 6> work = {',', 'b', '\0', ',', 'c', '\0'};
    CharReplace(work.data(), ',', '.');
    EXPECT_STREQ(work.data(), ".b");
    EXPECT_STREQ(work.data() + 3, ",c");
}

TEST(CharTools, MoneyTextLosesItsGroupingAndGetsAPoint)
{
    char work[] = "-1.234.567,89";
    CharRemove(work, '.');
    CharReplace(work, ',', '.');
    EXPECT_STREQ(work, "-1234567.89");
}

TEST(CharLength, EndsWithTheTextOrWithTheArray)
{
    const char text[6] = {'a', 'b', 'c', '\0', 'd', 'e'};
    EXPECT_EQ(CharLength(text, 6), 3u);
    EXPECT_EQ(CharLength(text, 4), 3u);
    EXPECT_EQ(CharLength(text, 3), 3u);
    EXPECT_EQ(CharLength(text, 2), 2u);
    EXPECT_EQ(CharLength(text, 0), 0u);
    EXPECT_EQ(CharLength(text + 3, 3), 0u);
}

TEST(CharReplaceInAnArray, ReplacesUpToTheEndOfTheTextAndAnswersItsLength)
{
    char text[8] = "'a''b'";
    EXPECT_EQ(CharReplace(text, sizeof text, '\'', ' '), 6u);
    EXPECT_STREQ(text, " a  b ");

    char behind[6] = {'\'', 'b', '\0', '\'', '\'', '\''};
    EXPECT_EQ(CharReplace(behind, sizeof behind, '\'', '`'), 2u);
    EXPECT_EQ(std::string(behind, 6), std::string("`b\0'''", 6));
}

TEST(CharReplaceInAnArray, WithoutATerminatorTheTextEndsWithTheArray)
{
    char bytes[4] = {'\'', 'b', '\'', '\''};
    EXPECT_EQ(CharReplace(bytes, 3, '\'', '`'), 3u);
    EXPECT_EQ(std::string(bytes, 4), "`b`'");
}

} // namespace
