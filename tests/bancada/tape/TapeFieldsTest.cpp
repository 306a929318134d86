// The fields of a command, filled from a line.
#include "bancada/tape/TapeFields.h"
#include "tests/bancada/tape/SampleFields.h"

#include <gtest/gtest.h>
#include <string>

using namespace bancada;
using namespace bancada_test;

namespace
{

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

TEST(TapeFields, AnArrayShorterThanTheLawsFieldSaysSo)
{
    const auto read = [](const std::string& text, char(&array)[4]) {
        const TapeCommand command = Command(text);
        TapeFields fields(command);
        fields.ShortText("nome", array, sizeof array, 40, Presence::OPTIONAL, "a name", "ab");
        fields.Finish();
    };
    char array[4] = "z";
    read("{}", array);
    EXPECT_STREQ(array, "z");
    read(R"({"nome":"abc"})", array);
    EXPECT_STREQ(array, "abc");
    try {
        read(R"({"nome":"abcd"})", array);
        FAIL();
    } catch (const TapeError& error) {
        EXPECT_STREQ(error.what(),
                     "t:1:9: field \"nome\": a text of at most 3 bytes is due, not 4: the command "
                     "has room for no more, the law's field for 40");
    }
}

} // namespace
