// Texts that came from outside, for a terminal.
#include "bancada/Printable.h"
#include "bancada/relatorio/DisplayText.h"

#include <gtest/gtest.h>
#include <string>

using bancada::Printable;

TEST(Printable, OrdinaryTextsStay)
{
    for (const char* text : {"", "abc \\x1B", "ação", "€", "\xF0\x9F\x98\x80", "~",
                             "\xF4\x8F\xBF\xBF", "\xE2\x80\xA7", "\xE2\x80\xAF", "\xE2\x81\xA5",
                             "\xE2\x81\xAA", "\xC2\xA0", "\xF0\x90\x80\x80", "\xE0\xA0\x80"}) {
        EXPECT_EQ(Printable(text), text);
    }
}

TEST(Printable, WhatSteersATerminalIsEscaped)
{
    EXPECT_EQ(Printable("\x1B[2J"), "\\x1B[2J");
    EXPECT_EQ(Printable(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(Printable("a\rb\tc\x7F"), "a\\x0Db\\x09c\\x7F");
    EXPECT_EQ(Printable("a\nb"), "a\\x0Ab");
    EXPECT_EQ(Printable("a\nb\x07", true), "a\nb\\x07");
    EXPECT_EQ(Printable("\xC2\x9B"
                        "2J"),
              "\\xC2\\x9B2J"); // a control character of two bytes
    EXPECT_EQ(Printable("a\xE2\x80\xAE"
                        "b"),
              "a\\xE2\\x80\\xAE"
              "b"); // turns the line round
    EXPECT_EQ(Printable("\xE2\x81\xA6"), "\\xE2\\x81\\xA6");
}

TEST(Printable, WhatIsShownOnPaperAsNoneIsEscapedInAMessage)
{
    // One rule for both, each in its own form.
    for (const char* text :
         {"\xEF\xBB\xBF", "\x1B", "\xE2\x80\xA8", "\xD8\x9C", "\xFF", "\xC2\x9B"}) {
        EXPECT_NE(Printable(text), text);
        EXPECT_EQ(bancada::relatorio::Disarmed(text), "\xEF\xBF\xBD") << Printable(text);
    }
    EXPECT_EQ(Printable("\xEF\xBB\xBF"), "\\xEF\\xBB\\xBF");
}

TEST(Printable, BytesThatAreNoCharacterAreEscapedOneByOne)
{
    EXPECT_EQ(Printable("a\xFF"
                        "b"),
              "a\\xFF"
              "b");
    EXPECT_EQ(Printable("\xC3"), "\\xC3");
    EXPECT_EQ(Printable("\xC3("), "\\xC3(");
    EXPECT_EQ(Printable("\xE2\x82"), "\\xE2\\x82");
    EXPECT_EQ(Printable("\xC0\x9B"), "\\xC0\\x9B");          // too long a form
    EXPECT_EQ(Printable("\xE0\x9F\xBF"), "\\xE0\\x9F\\xBF"); // likewise
    EXPECT_EQ(Printable("\xED\xA0\x80"), "\\xED\\xA0\\x80"); // half of a pair
    EXPECT_EQ(Printable("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");
    EXPECT_EQ(Printable("\xF8\x88\x80\x80\x80"), "\\xF8\\x88\\x80\\x80\\x80");
}
