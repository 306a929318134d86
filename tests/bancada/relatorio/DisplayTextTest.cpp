// Columns, wrapping and escaping of texts.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(DisplayText, AnAccentTakesOneColumn)
{
    EXPECT_EQ(ColumnCount("Maçã"), 4U);
    EXPECT_EQ(ColumnCount("Mac\xCC\xA7\x61\xCC\x83"), 4U); // the same with combining marks
    EXPECT_EQ(ColumnCount("\xF0\x9F\x8D\x8E"), 1U);
}

TEST(DisplayText, BytesThatAreNoUtf8BecomeOneSubstituteEach)
{
    EXPECT_EQ(Utf8(Characters("p\xE3o")), "p\xEF\xBF\xBDo");             // Latin-1
    EXPECT_EQ(Utf8(Characters("\xC0\xAF")), "\xEF\xBF\xBD\xEF\xBF\xBD"); // overlong
    EXPECT_EQ(ColumnCount("\xED\xA0\x80"), 3U);                          // half a surrogate pair
    EXPECT_EQ(ColumnCount("\xF4\x90\x80\x80"), 4U); // beyond the last character
    EXPECT_EQ(ColumnCount("a\xC3"), 2U);            // cut short
}

TEST(DisplayText, ControlsDoNotReachATerminal)
{
    EXPECT_EQ(Utf8(Characters("\x1B[2J")), "\xEF\xBF\xBD[2J");
    EXPECT_EQ(Utf8(Characters("a\nb\tc\rd")), "a b c d");
    EXPECT_EQ(Utf8(Characters("\xE2\x80\xAE"
                              "abc")),
              "\xEF\xBF\xBD"
              "abc"); // right to left
    EXPECT_EQ(Utf8(Characters("\xC2\x9B"
                              "2J")),
              "\xEF\xBF\xBD"
              "2J"); // an 8-bit escape
    EXPECT_EQ(Utf8(Characters(std::string("a\0b", 3))), "a\xEF\xBF\xBD"
                                                        "b");
}

TEST(DisplayText, WrapsAtBlanks)
{
    EXPECT_THAT(Wrap("pão de queijo", 6), ElementsAre("pão de", "queijo"));
    EXPECT_THAT(Wrap("pão de queijo", 7), ElementsAre("pão de", "queijo"));
    EXPECT_THAT(Wrap("  a   b  ", 3), ElementsAre("a", "b"));
    EXPECT_THAT(Wrap("açúcar", 6), ElementsAre("açúcar"));
}

TEST(DisplayText, CutsAWordThatIsTooLong)
{
    EXPECT_THAT(Wrap("abcdefgh", 3), ElementsAre("abc", "def", "gh"));
    EXPECT_THAT(Wrap("x abcdefgh", 3), ElementsAre("x", "abc", "def", "gh"));
}

TEST(DisplayText, ABlankTextHasNoLines)
{
    EXPECT_THAT(Wrap("", 10), IsEmpty());
    EXPECT_THAT(Wrap(" \n ", 10), IsEmpty());
}

TEST(DisplayText, FormatsCpfAndCnpj)
{
    EXPECT_EQ(FormatCpfCnpj("12345678909"), "123.456.789-09");
    EXPECT_EQ(FormatCpfCnpj("12345678000195"), "12.345.678/0001-95");
    EXPECT_EQ(FormatCpfCnpj("1234567890"), "1234567890");
    EXPECT_EQ(FormatCpfCnpj("123.456.789-0"), "123.456.789-0");
}

TEST(DisplayText, FormatsInstants)
{
    EXPECT_EQ(FormatDateTime("2024-03-15 09:12:44"), "15/03/2024 09:12:44");
    EXPECT_EQ(FormatDateTime("2024-03-15"), "15/03/2024");
    EXPECT_EQ(FormatDateTime("2024-3-15"), "2024-3-15");
    EXPECT_EQ(FormatDateTime(""), "");
}

TEST(DisplayText, EscapesHtml)
{
    EXPECT_EQ(EscapeHtml("<b a=\"1\" c='2'>&amp;"),
              "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;");
}

// A mark stands over the letter before it, also where the text is cut.
TEST(DisplayText, ACombiningMarkTakesNoColumn)
{
    for (const char* mark : {"\xCC\x80", "\xCD\xAF", "\xE2\x80\x8B", "\xE2\x80\x8C", "\xE2\x80\x8D",
                             "\xEF\xB8\x80", "\xEF\xB8\x8F"}) {
        const std::string text = std::string("a") + mark + "b";
        if (Disarmed(text) == text) {
            EXPECT_EQ(ColumnCount(text), 2U) << text;
            EXPECT_EQ(Cut(text, 1), std::string("a") + mark);
            EXPECT_EQ(Cut(text, 2), text);
        }
    }
    EXPECT_EQ(ColumnCount("a\xCC\x80"), 1U);
    EXPECT_EQ(ColumnCount("\xEF\xB8\x90"), 1U);
    EXPECT_EQ(ColumnCount("\xCB\xBF"), 1U);
    EXPECT_EQ(ColumnCount("\xCD\xB0"), 1U);
}

TEST(DisplayText, CharactersOfEveryLengthComeBack)
{
    for (const char* text : {"a", "\xC3\xA3", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(Disarmed(text), text);
    }
}

TEST(DisplayText, CapitalsAreFoldedAndTheSignOfMultiplicationIsNoLetter)
{
    EXPECT_EQ(Utf8(Folded("AZ\xC3\x80\xC3\x9E\xC3\x97@[")), "az\xC3\xA0\xC3\xBE\xC3\x97@[");
}

TEST(DisplayText, ANumberBelowZeroGetsNoZeros)
{
    EXPECT_EQ(WithZeros(-5, 6), "-5");
    EXPECT_EQ(WithZeros(5, 6), "000005");
    EXPECT_EQ(WithZeros(1234567, 6), "1234567");
}

} // namespace
} // namespace bancada::relatorio
