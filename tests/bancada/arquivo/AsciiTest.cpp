#include "bancada/arquivo/Ascii.h"

#include <gtest/gtest.h>

namespace bancada::arquivo
{
namespace
{

TEST(AsciiTest, ALetterLosesItsAccent)
{
    EXPECT_EQ(ToAscii("AÇÚCAR REFINADO É à ã ê õ ü ñ ý"), "ACUCAR REFINADO E a a e o u n y");
    EXPECT_EQ(ToAscii("ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖØÙÚÛÜÝ"), "AAAAAACEEEEIIIINOOOOOOUUUUY");
    EXPECT_EQ(ToAscii("àáâãäåçèéêëìíîïñòóôõöøùúûüýÿ"), "aaaaaaceeeeiiiinoooooouuuuyy");
    EXPECT_EQ(ToAscii("1ª e 2º"), "1a e 2o");
    EXPECT_EQ(ToAscii("cafe\xCC\x81 quente"), "cafe quente") << "an accent that stands by itself";
    EXPECT_EQ(ToAscii("a\xC2\xA0z"), "a z") << "a blank that does not break";
    EXPECT_EQ(ToAscii(""), "");
    EXPECT_EQ(ToAscii(" !~\"'"), " !~\"'");
}

TEST(AsciiTest, WhatHasNoFormIsNone)
{
    for (const char* text : {"\n", "\x1F", "\x7F", "\xC3", "\xC3(", "\xE2\x82\xAC", "\xFF", "×",
                             "÷", "ß", "æ", "©", "\xC5\x81"}) {
        EXPECT_FALSE(ToAscii(text)) << text;
    }
}

} // namespace
} // namespace bancada::arquivo
