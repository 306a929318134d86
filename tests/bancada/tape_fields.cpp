// The fields of a command: filled from a line, and described.
#include "bancada/fita/FieldTable.h"
#include "bancada/fita/LineParser.h"
#include "bancada/fita/TapeFields.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

using namespace bancada;

namespace
{

// A command with one field of each kind.
struct Sample {
    char array[5] = "abc";
    std::string text = "t";
    int integer = 7;
    bool flag = true;
    Financial money = Financial::FromCents(150);
    Decimal quantity{1500, 3};
    int percent = 1050;
    int choice = 20;

    void Fields(FieldVisitor& fields, Presence presence)
    {
        fields.Text("array", array, presence, "an array", "xy");
        fields.Text("text", text, 10, presence, "a text", "say \"hi\"");
        fields.Integer("integer", integer, -1, 20, presence, "an integer", "3");
        fields.Flag("flag", flag, presence, "a flag", "false");
        fields.Money("money", money, presence, "an amount", "12.50");
        fields.Quantity("quantity", quantity, 3, presence, "a quantity | weight", "0.250");
        fields.Percent("percent", percent, presence, "a percentage", "18.00");
        fields.Choice("choice", choice, {{"one", 10}, {"two", 20}}, presence, "a choice", "one");
    }
};

TapeCommand Command(const std::string& text)
{
    TapeLine line = ParseLine(text, "t", 1);
    TapeCommand command;
    command.place = line.place;
    command.name = "sample";
    command.fields = line.fields;
    return command;
}

std::string ErrorOf(const std::string& text, Presence presence = Presence::OPTIONAL)
{
    const TapeCommand command = Command(text);
    Sample sample;
    TapeFields fields(command);
    try {
        sample.Fields(fields, presence);
        fields.Finish();
    } catch (const TapeError& error) {
        return error.what();
    }
    return "no error";
}

Sample Fill(const std::string& text)
{
    const TapeCommand command = Command(text);
    Sample sample;
    TapeFields fields(command);
    sample.Fields(fields, Presence::OPTIONAL);
    fields.Finish();
    return sample;
}

TEST(TapeFields, EveryKindIsFilled)
{
    const Sample sample =
        Fill(R"({"array":"wxyz","text":"1234567890","integer":-1,"flag":false,"money":"12.5",)"
             R"("quantity":"0.250","percent":"7","choice":"one"})");
    EXPECT_STREQ(sample.array, "wxyz");
    EXPECT_EQ(sample.text, "1234567890");
    EXPECT_EQ(sample.integer, -1);
    EXPECT_FALSE(sample.flag);
    EXPECT_TRUE(sample.money == Financial::FromCents(1250));
    EXPECT_EQ(sample.quantity.unscaled, 250);
    EXPECT_EQ(sample.quantity.decimals, 3);
    EXPECT_EQ(sample.percent, 700);
    EXPECT_EQ(sample.choice, 10);
}

TEST(TapeFields, AbsentOptionalFieldsKeepTheirDefaults)
{
    const Sample sample = Fill("{}");
    EXPECT_STREQ(sample.array, "abc");
    EXPECT_EQ(sample.text, "t");
    EXPECT_EQ(sample.integer, 7);
    EXPECT_TRUE(sample.flag);
    EXPECT_TRUE(sample.money == Financial::FromCents(150));
    EXPECT_EQ(sample.quantity.unscaled, 1500);
    EXPECT_EQ(sample.percent, 1050);
    EXPECT_EQ(sample.choice, 20);
}

TEST(TapeFields, AShorterTextLeavesNothingOfTheDefault)
{
    EXPECT_STREQ(Fill(R"({"array":""})").array, "");
    EXPECT_STREQ(Fill(R"({"array":"x"})").array, "x");
}

TEST(TapeFields, TextsAreNeverCut)
{
    EXPECT_EQ(ErrorOf(R"({"array":"vwxyz"})"),
              R"(t:1:10: field "array": a text of at most 4 bytes is due, not 5)");
    EXPECT_EQ(ErrorOf(R"({"text":"çççççx"})"),
              R"(t:1:9: field "text": a text of at most 10 bytes is due, not 11)");
    EXPECT_EQ(Fill(R"({"text":"ççççç"})").text, "ççççç");
}

TEST(TapeFields, IntegersHaveTheirRange)
{
    EXPECT_EQ(Fill(R"({"integer":20})").integer, 20);
    EXPECT_EQ(ErrorOf(R"({"integer":21})"),
              R"(t:1:12: field "integer": an integer from -1 to 20 is due, not 21)");
    EXPECT_EQ(ErrorOf(R"({"integer":-2})"),
              R"(t:1:12: field "integer": an integer from -1 to 20 is due, not -2)");
    EXPECT_EQ(ErrorOf(R"({"integer":4294967296})"),
              R"(t:1:12: field "integer": an integer from -1 to 20 is due, not 4294967296)");
    EXPECT_EQ(ErrorOf(R"({"integer":1.0})"),
              R"(t:1:12: field "integer": an integer from -1 to 20 is due, )"
              "not a number that is no 64-bit integer");
    EXPECT_EQ(ErrorOf(R"({"integer":"3"})"),
              R"(t:1:12: field "integer": an integer from -1 to 20 is due, not a text)");
}

TEST(TapeFields, MoneyQuantitiesAndPercentagesAreTexts)
{
    EXPECT_EQ(ErrorOf(R"({"money":12.50})"),
              R"(t:1:10: field "money": a decimal text such as "12.50", )"
              "of up to 15 digits and 2 decimals is due, not a number that is no 64-bit integer");
    EXPECT_EQ(ErrorOf(R"({"money":12})"),
              R"(t:1:10: field "money": a decimal text such as "12.50", )"
              "of up to 15 digits and 2 decimals is due, not an integer");
    EXPECT_EQ(ErrorOf(R"({"money":"12.505"})"),
              R"(t:1:10: field "money": a decimal text such as "12.50", )"
              "of up to 15 digits and 2 decimals is due");
    EXPECT_EQ(ErrorOf(R"({"quantity":"1.5000"})"),
              R"(t:1:13: field "quantity": a decimal text such as "0.250", )"
              "of up to 12 digits and 3 decimals is due");
    EXPECT_EQ(ErrorOf(R"({"percent":"-1"})"),
              R"(t:1:12: field "percent": a decimal text such as "18.00", )"
              "of up to 5 digits and 2 decimals is due");
}

TEST(TapeFields, TheLargestNumbersFit)
{
    EXPECT_TRUE(Fill(R"({"money":"999999999999999.99"})").money ==
                Financial::FromCents(99999999999999999));
    EXPECT_EQ(Fill(R"({"quantity":"999999999999.999"})").quantity.unscaled, 999999999999999);
    EXPECT_EQ(Fill(R"({"percent":"99999.99"})").percent, 9999999);
}

TEST(TapeFields, FlagsAreTrueOrFalse)
{
    EXPECT_EQ(ErrorOf(R"({"flag":1})"),
              R"(t:1:9: field "flag": true or false is due, not an integer)");
    EXPECT_EQ(ErrorOf(R"({"flag":"true"})"),
              R"(t:1:9: field "flag": true or false is due, not a text)");
}

TEST(TapeFields, AChoiceNamesWhatCanBeChosen)
{
    EXPECT_EQ(ErrorOf(R"({"choice":"three"})"),
              R"(t:1:11: field "choice": one of "one", "two" is due)");
    EXPECT_EQ(ErrorOf(R"({"choice":1})"),
              R"(t:1:11: field "choice": one of "one", "two" is due, not an integer)");
}

TEST(TapeFields, AFieldThatNobodyAskedForIsRefused)
{
    EXPECT_EQ(ErrorOf(R"({"flag":true, "flg":true})"),
              R"(t:1:15: sample has no field "flg"; its fields are array, text, integer, flag, )"
              "money, quantity, percent, choice");
    const TapeCommand command = Command(R"({"x":1})");
    TapeFields fields(command);
    EXPECT_THROW(fields.Finish(), TapeError);
}

TEST(TapeFields, AMissingFieldIsToldAtTheLine)
{
    EXPECT_EQ(ErrorOf(R"( {"array":"x","text":"y","integer":1})", Presence::REQUIRED),
              R"(t:1:2: sample needs the field "flag")");
}

TEST(TapeFields, AMistypedNameIsToldBeforeTheFieldThatItLeavesMissing)
{
    EXPECT_EQ(ErrorOf(R"({"arrai":"x"})", Presence::REQUIRED).substr(0, 33),
              R"(t:1:2: sample has no field "arrai)");
}

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

} // namespace
