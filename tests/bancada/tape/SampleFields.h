// A command with a field of each kind.
#pragma once

#include "bancada/registro/Decimal.h"
#include "bancada/tape/FieldVisitor.h"
#include "bancada/tape/LineParser.h"
#include "bancada/tape/TapeFields.h"
#include "libs/Financial.h"

#include <string>

namespace bancada_test
{

struct Sample {
    char array[5] = "abc";
    std::string text = "t";
    int integer = 7;
    bool flag = true;
    Financial money = Financial::FromCents(150);
    bancada::Decimal quantity{1500, 3};
    int percent = 1050;
    int choice = 20;

    void Fields(bancada::FieldVisitor& fields, bancada::Presence presence)
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

// A line of the tape "t" that begins with `text`.
inline bancada::TapeCommand Command(const std::string& text)
{
    bancada::TapeLine line = bancada::ParseLine(text, "t", 1);
    bancada::TapeCommand command;
    command.place = line.place;
    command.name = "sample";
    command.fields = line.fields;
    return command;
}

inline Sample Fill(const std::string& text)
{
    const bancada::TapeCommand command = Command(text);
    Sample sample;
    bancada::TapeFields fields(command);
    sample.Fields(fields, bancada::Presence::OPTIONAL);
    fields.Finish();
    return sample;
}

} // namespace bancada_test
