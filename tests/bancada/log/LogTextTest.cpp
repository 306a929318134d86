// The form of a text within a record of the firmware log.
#include "bancada/log/LogText.h"

#include <gtest/gtest.h>
#include <string>

namespace bancada
{
namespace
{

std::string Escaped(const std::string& text)
{
    std::string out = "before ";
    AppendEscaped(out, text);
    return out;
}

TEST(LogText, WhatWouldBreakTheLineIsEscaped)
{
    EXPECT_EQ(Escaped("a\\b\nc\rd\te"), "before a\\\\b\\nc\\rd\\te");
    EXPECT_EQ(Escaped(std::string("\0\x1F\x7F", 3)), "before \\x00\\x1F\\x7F");
    EXPECT_EQ(Escaped(" ~\x80\xFF ção"), "before  ~\x80\xFF ção");
}

TEST(LogText, IsTurnedBack)
{
    std::string text = "something else";
    EXPECT_TRUE(Unescape("a\\\\b\\nc\\rd\\te\\x00\\x1F\\xAF", text));
    EXPECT_EQ(text, std::string("a\\b\nc\rd\te\0\x1F\xAF", 12));
    EXPECT_TRUE(Unescape("", text));
    EXPECT_EQ(text, "");
}

TEST(LogText, ABackslashThatBeginsNothingIsNone)
{
    std::string text;
    for (const char* escaped :
         {"\\", "a\\", "\\q", "\\N", "\\x", "\\x4", "\\x4g", "\\xg4", "\\xaf"}) {
        EXPECT_FALSE(Unescape(escaped, text)) << escaped;
    }
}

} // namespace
} // namespace bancada
