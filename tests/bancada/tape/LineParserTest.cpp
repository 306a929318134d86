// One line of a tape: what is no JSON object, and where.
#include "bancada/tape/LineParser.h"

#include <gtest/gtest.h>
#include <string>

using bancada::ParseLine;
using bancada::TapeError;
using bancada::TapeLine;
using bancada::TapeValue;

namespace
{

// The error of a line that stands on line 7 of "t".
std::string ErrorOf(const std::string& text)
{
    try {
        static_cast<void>(ParseLine(text, "t", 7));
    } catch (const TapeError& error) {
        return error.what();
    }
    return "no error";
}

TEST(TapeLine, EveryKindOfValueHasItsPlace)
{
    const TapeLine line =
        ParseLine(R"(  { "a" : "x\"y" , "bb":-12,"c":true, "d" :false,"e":1.5})", "t", 3);
    ASSERT_EQ(line.fields.size(), 5U);
    EXPECT_EQ(ToText(line.place), "t:3:3");

    EXPECT_EQ(line.fields[0].name, "a");
    EXPECT_EQ(line.fields[0].value.kind, TapeValue::Kind::TEXT);
    EXPECT_EQ(line.fields[0].value.text, "x\"y");
    EXPECT_EQ(ToText(line.fields[0].namePlace), "t:3:5");
    EXPECT_EQ(ToText(line.fields[0].valuePlace), "t:3:11");

    EXPECT_EQ(line.fields[1].value.kind, TapeValue::Kind::INTEGER);
    EXPECT_EQ(line.fields[1].value.integer, -12);
    EXPECT_EQ(ToText(line.fields[1].namePlace), "t:3:20");
    EXPECT_EQ(ToText(line.fields[1].valuePlace), "t:3:25");

    EXPECT_EQ(line.fields[2].value.kind, TapeValue::Kind::FLAG);
    EXPECT_TRUE(line.fields[2].value.flag);
    EXPECT_EQ(ToText(line.fields[2].valuePlace), "t:3:33");
    EXPECT_EQ(line.fields[3].value.kind, TapeValue::Kind::FLAG);
    EXPECT_FALSE(line.fields[3].value.flag);
    EXPECT_EQ(ToText(line.fields[3].valuePlace), "t:3:44");
    EXPECT_EQ(line.fields[4].value.kind, TapeValue::Kind::FRACTION);
    EXPECT_EQ(ToText(line.fields[4].namePlace), "t:3:50");
    EXPECT_EQ(ToText(line.fields[4].valuePlace), "t:3:54");
}

TEST(TapeLine, ColumnsCountBytes)
{
    const TapeLine line = ParseLine(R"({"a":"ção","b":1})", "t", 1);
    EXPECT_EQ(line.fields[0].value.text, "ção");
    EXPECT_EQ(ToText(line.fields[1].namePlace), "t:1:14");
}

TEST(TapeLine, EscapesAreResolved)
{
    const TapeLine line = ParseLine(R"({"a":"\u00e7\n\\","b":1})", "t", 1);
    EXPECT_EQ(line.fields[0].value.text, "ç\n\\");
    EXPECT_EQ(ToText(line.fields[1].valuePlace), "t:1:23");
}

TEST(TapeLine, AnEmptyObjectIsALine)
{
    EXPECT_TRUE(ParseLine("{}", "t", 1).fields.empty());
}

TEST(TapeLine, IntegersOf64BitsAreIntegers)
{
    EXPECT_EQ(ParseLine(R"({"a":9223372036854775807})", "t", 1).fields[0].value.integer,
              9223372036854775807);
    EXPECT_EQ(ParseLine(R"({"a":-9223372036854775808})", "t", 1).fields[0].value.kind,
              TapeValue::Kind::INTEGER);
    EXPECT_EQ(ParseLine(R"({"a":9223372036854775808})", "t", 1).fields[0].value.kind,
              TapeValue::Kind::FRACTION);
    EXPECT_EQ(ParseLine(R"({"a":99999999999999999999999})", "t", 1).fields[0].value.kind,
              TapeValue::Kind::FRACTION);
}

TEST(TapeLine, ANameGivenTwiceIsRefusedAtTheSecond)
{
    EXPECT_EQ(ErrorOf(R"({"a":1, "b":2, "a":1})"),
              R"(t:7:16: field "a" is given twice, first in column 2)");
}

TEST(TapeLine, OnlyAnObjectIsALine)
{
    EXPECT_EQ(ErrorOf("[1]"), "t:7:1: a line holds one JSON object, not an array");
    EXPECT_EQ(ErrorOf("  12"), "t:7:3: a line holds one JSON object, not a number");
    EXPECT_EQ(ErrorOf("\"x\""), "t:7:1: a line holds one JSON object, not a text");
    EXPECT_EQ(ErrorOf("true"), "t:7:1: a line holds one JSON object, not a flag");
    EXPECT_EQ(ErrorOf("null"), "t:7:1: a line holds one JSON object, not null");
}

TEST(TapeLine, AFieldHoldsNoFurtherStructure)
{
    EXPECT_EQ(ErrorOf(R"({"a":{"b":1}})"),
              R"(t:7:6: field "a" holds an object; a field holds a text, a number, true or false)");
    EXPECT_EQ(ErrorOf(R"({"x":1,"a": [1]})"),
              R"(t:7:13: field "a" holds an array; a field holds a text, a number, true or false)");
    EXPECT_EQ(ErrorOf(R"({"a":null})"),
              R"(t:7:6: field "a" holds null; a field holds a text, a number, true or false)");
}

TEST(TapeLine, ATruncatedLineIsToldAtItsEnd)
{
    EXPECT_EQ(ErrorOf(R"({"a":)"),
              "t:7:6: not JSON: syntax error while parsing value - unexpected end of input; "
              "expected '[', '{', or a literal");
    EXPECT_EQ(ErrorOf(R"({"a":"xy)").substr(0, 7), "t:7:9: ");
    EXPECT_EQ(ErrorOf(R"({"a":1)").substr(0, 7), "t:7:7: ");
    EXPECT_EQ(ErrorOf("{").substr(0, 7), "t:7:2: ");
}

TEST(TapeLine, WhatFollowsTheObjectIsRefused)
{
    EXPECT_EQ(ErrorOf(R"({"a":1} {})").substr(0, 17), "t:7:9: not JSON: ");
    EXPECT_EQ(ErrorOf(R"({"a":1},)").substr(0, 17), "t:7:8: not JSON: ");
}

TEST(TapeLine, JsonWithoutItsRulesIsRefused)
{
    EXPECT_NE(ErrorOf("{'a':1}"), "no error");
    EXPECT_NE(ErrorOf("{a:1}"), "no error");
    EXPECT_NE(ErrorOf(R"({"a":1,})"), "no error");
    EXPECT_NE(ErrorOf(R"({"a":01})"), "no error");
    EXPECT_NE(ErrorOf(R"({"a":1} // note)"), "no error");
    EXPECT_NE(ErrorOf(R"({"a":1e999})"), "no error");
    EXPECT_NE(ErrorOf(R"({"a":TRUE})"), "no error");
}

TEST(TapeLine, IllFormedUtf8IsRefused)
{
    EXPECT_EQ(ErrorOf("{\"a\":\"\xE7\xE3\"}").substr(0, 24), "t:7:8: not JSON: syntax ");
    EXPECT_NE(ErrorOf("{\"a\":\"\xC0\xAF\"}"), "no error");         // overlong
    EXPECT_NE(ErrorOf("{\"a\":\"\xED\xA0\x80\"}"), "no error");     // surrogate
    EXPECT_NE(ErrorOf("{\"a\":\"\xF4\x90\x80\x80\"}"), "no error"); // beyond U+10FFFF
    EXPECT_NE(ErrorOf(R"({"a":"\ud800"})"), "no error");            // half a pair
}

TEST(TapeLine, ANulIsRefusedHoweverWritten)
{
    EXPECT_EQ(ErrorOf(std::string("{\"a\":1}\0", 8)), "t:7:8: not JSON: a NUL byte");
    EXPECT_EQ(ErrorOf(R"({"a":"x\u0000y"})"), R"(t:7:6: field "a" holds a NUL character; )"
                                              "a field holds a text, a number, true or false");
}

TEST(TapeLine, AByteOrderMarkStandsOnTheFirstLineAlone)
{
    EXPECT_EQ(ToText(ParseLine("\xEF\xBB\xBF{\"a\":1}", "t", 1).fields[0].namePlace), "t:1:5");
    EXPECT_EQ(ErrorOf("\xEF\xBB\xBF{}"), "t:7:1: not JSON: a byte order mark after the first line");
}

TEST(TapeLine, DeepNestingIsRefusedAtOnce)
{
    EXPECT_EQ(ErrorOf("{\"a\":" + std::string(1000000, '[')).substr(0, 29),
              "t:7:6: field \"a\" holds an arr");
}

TEST(TapeLine, MessagesDoNotRepeatTheBytesOfTheLine)
{
    EXPECT_EQ(ErrorOf("\x01\x02\x80garbage"),
              "t:7:1: not JSON: syntax error while parsing value - invalid literal");
}

} // namespace
