// The check digits of the taxpayers' numbers.
#include "bancada/CheckDigits.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(CheckDigits, RightNumbersAreRight)
{
    EXPECT_TRUE(IsCPF("12345678909"));
    EXPECT_TRUE(IsCPF("52998224725"));
    EXPECT_TRUE(IsCNPJ("12345678000195"));
    EXPECT_TRUE(IsCNPJ("11222333000181"));
}

TEST(CheckDigits, EverySingleWrongDigitIsNoticed)
{
    const std::string cpf = "52998224725";
    const std::string cnpj = "11222333000181";
    for (std::size_t i = 0; i < cpf.size(); ++i) {
        for (char c = '0'; c <= '9'; ++c) {
            std::string other = cpf;
            other[i] = c;
            EXPECT_EQ(IsCPF(other), other == cpf) << other;
        }
    }
    for (std::size_t i = 0; i < cnpj.size(); ++i) {
        for (char c = '0'; c <= '9'; ++c) {
            std::string other = cnpj;
            other[i] = c;
            EXPECT_EQ(IsCNPJ(other), other == cnpj) << other;
        }
    }
}

TEST(CheckDigits, OtherTextsAreWrong)
{
    EXPECT_FALSE(IsCPF(""));
    EXPECT_FALSE(IsCPF("00000000000"));
    EXPECT_FALSE(IsCPF("123.456.789-09"));
    EXPECT_FALSE(IsCPF("12345678000195"));
    EXPECT_FALSE(IsCNPJ("00000000000000"));
    EXPECT_FALSE(IsCNPJ("1234567800019"));
    EXPECT_FALSE(IsCNPJ("1234567800019A"));
}

} // namespace
} // namespace bancada
