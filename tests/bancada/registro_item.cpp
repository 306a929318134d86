// The item of a fiscal receipt: its total, its texts, what is refused.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroItem : public RegistroTeste
{
  protected:
    std::string Total(const char* quantidade, const char* preco, bool arredonda)
    {
        if (registro.CheckAbreCupom({}, RtcAbsoluteTime(agora)) == std::nullopt) {
            AbreCupom();
        }
        Vende(Venda(preco, quantidade, "T", 1, arredonda));
        return Texto(registro.Cupom_GetItemValorTotal(registro.Cupom_GetQuantidadeDeItens() - 1));
    }
};

TEST_F(RegistroItem, TotalIsTruncatedToCents)
{
    EXPECT_EQ(Total("1", "2.50", false), "2.50");
    EXPECT_EQ(Total("3", "0.333", false), "0.99");
    EXPECT_EQ(Total("0.755", "10.99", false), "8.29"); // 8.29745
    EXPECT_EQ(Total("1.5", "0.99", false), "1.48");    // 1.485
    EXPECT_EQ(Total("1.999", "1.999", false), "3.99"); // 3.996001
}

TEST_F(RegistroItem, TotalIsRoundedHalfUpWhenAsked)
{
    EXPECT_EQ(Total("1", "2.50", true), "2.50");
    EXPECT_EQ(Total("0.755", "10.99", true), "8.30");
    EXPECT_EQ(Total("1.5", "0.99", true), "1.49"); // 1.485, exactly half
    EXPECT_EQ(Total("0.5", "0.03", true), "0.02"); // 0.015, exactly half
    EXPECT_EQ(Total("1.484", "1.00", true), "1.48");
    EXPECT_EQ(Total("1.000", "1.994", true), "1.99");
}

TEST_F(RegistroItem, TheLargestFactorsAreMultipliedExactly)
{
    EXPECT_EQ(Total("9999999.999", "99.999", false), "999989999.90"); // 999989999.900001
    EXPECT_EQ(Total("1", "999999999.99", false), "999999999.99");
}

TEST_F(RegistroItem, ATotalBeyondTheMaximumIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("100", "9999999.99"), Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("101", "9999999.99"), Agora())),
              "the item's total is more than the register takes (999999999.99)");
}

TEST_F(RegistroItem, QuantityAndPriceAreTextsAsTheyWereGiven)
{
    AbreCupom();
    Vende("2.99", "1.500");
    Vende("0.009", "12");
    char texto[32];
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, texto, sizeof texto), "1,500");
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(0, texto, sizeof texto), "2,99");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(1, texto, sizeof texto), "12");
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(1, texto, sizeof texto), "0,009");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(2, texto, sizeof texto), "");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(-1, texto, sizeof texto), "");
}

TEST_F(RegistroItem, LargeQuantitiesAreNotGrouped)
{
    AbreCupom();
    Vende("0.01", "1234567.5");
    char texto[32];
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, texto, sizeof texto), "1234567,5");
}

TEST_F(RegistroItem, IsBookedOnItsTotalizerAndInTheGrandTotal)
{
    AbreCupom();
    Vende("10.00", "1", "T", 1);
    Vende("20.00", "1", "T", 2);
    Vende("4.00", "1", "S", 1);
    Vende("3.00", "1", "F", 1);
    Vende("2.00", "1", "FS", 1);
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(TotalT(2), "20.00");
    EXPECT_EQ(TotalS(1), "4.00");
    EXPECT_EQ(TotalT(31), "3.00");
    EXPECT_EQ(TotalS(31), "2.00");
    EXPECT_EQ(GT(), "39.00");
    EXPECT_EQ(Texto(registro.Cupom_GetSubTotal()), "39.00");
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "39.00");
}

TEST_F(RegistroItem, WithoutAnOpenReceiptIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00"), Agora())), "no Cupom Fiscal is open");
    AbreCNF();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00"), Agora())), "no Cupom Fiscal is open");
}

TEST_F(RegistroItem, OnATotalizerThatIsNotProgrammedIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "1", "T", 3), Agora())),
              "the totalizer T3 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "1", "F", 2), Agora())),
              "the totalizer F2 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "1", "T", 31), Agora())),
              "there is no totalizer T31");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "1", "T", 0), Agora())),
              "there is no totalizer T0");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "1", "X", 1), Agora())),
              "there is no totalizer X1");
}

TEST_F(RegistroItem, ZeroQuantityPriceOrTotalIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00", "0.000"), Agora())),
              "the quantity must be above zero");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.00"), Agora())),
              "the unit price must be above zero");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.01", "0.999"), Agora())),
              "the item's total must be above zero");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.01", "0.999", "T", 1, true), Agora())), "");
}

TEST_F(RegistroItem, MoreDecimalsOrDigitsThanTheRegisterTakesAreRefused)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.0000"), Agora())),
              "the unit price has more than 3 decimals");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.01", "10000000"), Agora())),
              "the quantity has more than 7 integer digits");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.01", "9999999.999"), Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1000000000.00", "0.001"), Agora())),
              "the unit price has more than 9 integer digits");
}

TEST_F(RegistroItem, WithoutCodeOrDescriptionIsRefused)
{
    AbreCupom();
    VendaItem venda = Venda("1.00");
    venda.codigo.clear();
    EXPECT_EQ(Motivo(registro.CheckVendeItem(venda, Agora())),
              "an item needs a code and a description");
}

TEST_F(RegistroItem, TheThousandthIsRefused)
{
    AbreCupom();
    for (int i = 0; i < 999; ++i) {
        Vende("0.01");
    }
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 999);
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("0.01"), Agora())),
              "the receipt is full: it has 999 items");
}

} // namespace
} // namespace bancada
