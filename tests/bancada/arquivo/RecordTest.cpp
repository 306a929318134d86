// What a field's positions may hold.
#include "bancada/arquivo/Record.h"

#include <gtest/gtest.h>

namespace bancada::arquivo
{
namespace
{

// What is said of the text in a field of that form.
std::string Fault(Form form, std::string_view text)
{
    Field field{};
    field.form = form;
    return FaultOf(field, text);
}

TEST(FaultOf, ADateIsOneThatThereIsOrNone)
{
    for (const char* good :
         {"00000000", "20240229", "20000229", "20230228", "20241231", "20240430", "00010101"}) {
        EXPECT_EQ(Fault(Form::D, good), "") << good;
    }
    for (const char* bad : {"00000101", "20240001", "20241301", "20240100", "20240132", "20230229",
                            "21000229", "20240230", "20240431", "00000100", "00000001"}) {
        EXPECT_EQ(Fault(Form::D, bad), "a date AAAAMMDD is due") << bad;
    }
    EXPECT_EQ(Fault(Form::D, "2024010x"), "digits are due");
    EXPECT_EQ(Fault(Form::D, "2024010/"), "digits are due");
}

TEST(FaultOf, ATimeIsOneThatThereIs)
{
    EXPECT_EQ(Fault(Form::H, "000000"), "");
    EXPECT_EQ(Fault(Form::H, "235959"), "");
    for (const char* bad : {"240000", "006000", "000060"}) {
        EXPECT_EQ(Fault(Form::H, bad), "a time HHMMSS is due") << bad;
    }
}

TEST(FaultOf, ATextIsOfAsciiLetters)
{
    EXPECT_EQ(Fault(Form::X, " ~"), "");
    EXPECT_EQ(Fault(Form::X, "\x1F"), "ASCII letters are due");
    EXPECT_EQ(Fault(Form::X, "\x7F"), "ASCII letters are due");
    EXPECT_EQ(Fault(Form::X, "\xC3\xA3"), "ASCII letters are due");
}

} // namespace
} // namespace bancada::arquivo
