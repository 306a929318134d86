// The fields of a command, described.
#include "bancada/tape/FieldTable.h"
#include "tests/bancada/tape/SampleFields.h"

#include <gtest/gtest.h>
#include <string>

using namespace bancada;
using namespace bancada_test;

namespace
{

TEST(FieldTable, DescribesEveryKindWithItsDefault)
{
    Sample sample;
    FieldTable table;
    sample.Fields(table, Presence::OPTIONAL);
    EXPECT_EQ(MarkdownTable(table.Fields()),
              "| Field | Value | Without it | Meaning |\n"
              "|---|---|---|---|\n"
              "| `array` | text, at most 4 bytes | `\"abc\"` | an array |\n"
              "| `text` | text, at most 10 bytes | `\"t\"` | a text |\n"
              "| `integer` | integer, -1 to 20 | `7` | an integer |\n"
              "| `flag` | true or false | `true` | a flag |\n"
              "| `money` | money: decimal text, up to 15 digits and 2 decimals | `\"1.50\"` | an "
              "amount |\n"
              "| `quantity` | decimal text, up to 12 digits and 3 decimals | `\"1.500\"` | a "
              "quantity \\| weight |\n"
              "| `percent` | percentage: decimal text, up to 5 digits and 2 decimals | "
              "`\"10.50\"` | a percentage |\n"
              "| `choice` | \"one\" or \"two\" | `\"two\"` | a choice |\n");
}

TEST(FieldTable, RequiredFieldsHaveNoDefault)
{
    Sample sample;
    FieldTable table;
    sample.Fields(table, Presence::REQUIRED);
    for (const FieldDescription& field : table.Fields()) {
        EXPECT_EQ(field.byDefault, "") << field.name;
    }
    EXPECT_NE(MarkdownTable(table.Fields()).find("| `flag` | true or false | required | a flag |"),
              std::string::npos);
}

TEST(FieldTable, TheExampleIsALineThatTheCommandReads)
{
    Sample sample;
    FieldTable table;
    sample.Fields(table, Presence::REQUIRED);
    const std::string line = ExampleLine("sample", table.Fields());
    EXPECT_EQ(line, R"({"cmd": "sample", "array": "xy", "text": "say \"hi\"", "integer": 3, )"
                    R"("flag": false, "money": "12.50", "quantity": "0.250", "percent": "18.00", )"
                    R"("choice": "one"})");
    EXPECT_EQ(Fill("{" + line.substr(line.find("\"array\""))).text, "say \"hi\"");
}

TEST(FieldTable, SmallDecimalsKeepTheirZeros)
{
    Decimal quantity{5, 3};
    int percent = 7;
    FieldTable table;
    table.Quantity("q", quantity, 3, Presence::OPTIONAL, "", "1");
    table.Percent("p", percent, Presence::OPTIONAL, "", "1");
    EXPECT_EQ(table.Fields()[0].byDefault, "\"0.005\"");
    EXPECT_EQ(table.Fields()[1].byDefault, "\"0.07\"");
}

TEST(FieldTable, AnArrayShorterThanTheLawsFieldSaysSo)
{
    char array[4] = "z";
    FieldTable table;
    table.ShortText("nome", array, sizeof array, 40, Presence::OPTIONAL, "a name", "ab");
    EXPECT_EQ(MarkdownTable(table.Fields()),
              "| Field | Value | Without it | Meaning |\n|---|---|---|---|\n"
              "| `nome` | text, at most 3 bytes; the law's field has 40 | `\"z\"` | a name |\n");
}

} // namespace
