// A row's values in the bytes of the file format.
#include "bancada/recuperacao/Record.h"

#include <gtest/gtest.h>
#include <string>

namespace bancada::recuperacao
{
namespace
{

std::string Bytes(std::initializer_list<int> bytes)
{
    std::string text;
    for (const int byte : bytes) {
        text += static_cast<char>(byte);
    }
    return text;
}

// The values, each by its kind; "none" for bytes that are no row.
std::string Values(std::initializer_list<int> bytes)
{
    const std::string payload = Bytes(bytes);
    const auto values = ReadRecord(payload);
    if (!values) {
        return "none";
    }
    std::string text;
    for (const Value& value : *values) {
        text += text.empty() ? "" : " ";
        switch (value.kind) {
        case Kind::NOTHING:
            text += "NULL";
            break;
        case Kind::INTEGER:
            text += std::to_string(value.integer);
            break;
        case Kind::REAL:
            text += "real " + std::to_string(value.real);
            break;
        case Kind::TEXT:
            text += "text " + std::string(value.bytes);
            break;
        case Kind::BLOB:
            text += "blob " + std::string(value.bytes);
            break;
        }
    }
    return text;
}

TEST(ReadRecord, ReadsEveryKindOfValue)
{
    EXPECT_EQ(Values({3, 0, 0}), "NULL NULL");
    EXPECT_EQ(Values({3, 8, 9}), "0 1");
    EXPECT_EQ(Values({2, 1, 0x7F}), "127");
    EXPECT_EQ(Values({2, 1, 0x80}), "-128");
    EXPECT_EQ(Values({2, 2, 0x01, 0x02}), "258");
    EXPECT_EQ(Values({2, 3, 0xFF, 0xFF, 0xFE}), "-2");
    EXPECT_EQ(Values({2, 4, 0, 1, 0, 0}), "65536");
    EXPECT_EQ(Values({2, 5, 0, 1, 0, 0, 0, 0}), "4294967296");
    EXPECT_EQ(Values({2, 6, 0x80, 0, 0, 0, 0, 0, 0, 0}), "-9223372036854775808");
    EXPECT_EQ(Values({2, 7, 0x3F, 0xF8, 0, 0, 0, 0, 0, 0}), "real 1.500000");
    EXPECT_EQ(Values({3, 17, 14, 'a', 'b', 'c'}), "text ab blob c");
    EXPECT_EQ(Values({1}), "");
}

TEST(ReadRecord, WhatDoesNotTakeUpItsBytesIsNoRow)
{
    EXPECT_EQ(Values({}), "none");
    EXPECT_EQ(Values({2}), "none") << "a header longer than the row";
    EXPECT_EQ(Values({0}), "none") << "a header shorter than itself";
    EXPECT_EQ(Values({2, 10}), "none") << "a kind that there is not";
    EXPECT_EQ(Values({2, 11}), "none");
    EXPECT_EQ(Values({2, 1}), "none") << "a value behind the end";
    EXPECT_EQ(Values({2, 17, 'a'}), "none");
    EXPECT_EQ(Values({2, 1, 5, 5}), "none") << "bytes behind the last value";
    EXPECT_EQ(Values({2, 0x81}), "none") << "a kind that is cut short";
}

} // namespace
} // namespace bancada::recuperacao
