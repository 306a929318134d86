// The item of a fiscal receipt: its total, its texts, what is refused.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroCupomFiscal : public RegistroTest
{
  protected:
    std::string Total(const char* quantidade, const char* preco, bool arredonda)
    {
        if (registro.CheckAbreCupom({}, RtcAbsoluteTime(now)) == std::nullopt) {
            AbreCupom();
        }
        VendeItem(Item(preco, quantidade, "T", 1, arredonda));
        return Text(registro.Cupom_GetItemValorTotal(registro.Cupom_GetQuantidadeDeItens() - 1));
    }
};

TEST_F(RegistroCupomFiscal, TotalIsTruncatedToCents)
{
    EXPECT_EQ(Total("1", "2.50", false), "2.50");
    EXPECT_EQ(Total("3", "0.333", false), "0.99");
    EXPECT_EQ(Total("0.755", "10.99", false), "8.29"); // 8.29745
    EXPECT_EQ(Total("1.5", "0.99", false), "1.48");    // 1.485
    EXPECT_EQ(Total("1.999", "1.999", false), "3.99"); // 3.996001
}

TEST_F(RegistroCupomFiscal, TotalIsRoundedHalfUpWhenAsked)
{
    EXPECT_EQ(Total("1", "2.50", true), "2.50");
    EXPECT_EQ(Total("0.755", "10.99", true), "8.30");
    EXPECT_EQ(Total("1.5", "0.99", true), "1.49"); // 1.485, exactly half
    EXPECT_EQ(Total("0.5", "0.03", true), "0.02"); // 0.015, exactly half
    EXPECT_EQ(Total("1.484", "1.00", true), "1.48");
    EXPECT_EQ(Total("1.000", "1.994", true), "1.99");
}

TEST_F(RegistroCupomFiscal, TheLargestFactorsAreMultipliedExactly)
{
    EXPECT_EQ(Total("9999999.999", "99.999", false), "999989999.90"); // 999989999.900001
    EXPECT_EQ(Total("1", "999999999.99", false), "999999999.99");
}

TEST_F(RegistroCupomFiscal, ATotalBeyondTheMaximumIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("100", "9999999.99"), Now())), "");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("101", "9999999.99"), Now())),
              "the item's total is more than the register takes (999999999.99)");
}

TEST_F(RegistroCupomFiscal, QuantityAndPriceAreTextsAsTheyWereGiven)
{
    AbreCupom();
    VendeItem("2.99", "1.500");
    VendeItem("0.009", "12");
    char text[32];
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, text, sizeof text), "1,500");
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(0, text, sizeof text), "2,99");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(1, text, sizeof text), "12");
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(1, text, sizeof text), "0,009");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(2, text, sizeof text), "");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(-1, text, sizeof text), "");
}

TEST_F(RegistroCupomFiscal, LargeQuantitiesAreNotGrouped)
{
    AbreCupom();
    VendeItem("0.01", "1234567.5");
    char text[32];
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, text, sizeof text), "1234567,5");
}

TEST_F(RegistroCupomFiscal, IsBookedOnItsTotalizerAndInTheGrandTotal)
{
    AbreCupom();
    VendeItem("10.00", "1", "T", 1);
    VendeItem("20.00", "1", "T", 2);
    VendeItem("4.00", "1", "S", 1);
    VendeItem("3.00", "1", "F", 1);
    VendeItem("2.00", "1", "FS", 1);
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(TotalT(2), "20.00");
    EXPECT_EQ(TotalS(1), "4.00");
    EXPECT_EQ(TotalT(31), "3.00");
    EXPECT_EQ(TotalS(31), "2.00");
    EXPECT_EQ(GT(), "39.00");
    EXPECT_EQ(Text(registro.Cupom_GetSubTotal()), "39.00");
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "39.00");
}

TEST_F(RegistroCupomFiscal, WithoutAnOpenReceiptIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00"), Now())), "no Cupom Fiscal is open");
    AbreCNF();
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00"), Now())), "no Cupom Fiscal is open");
}

TEST_F(RegistroCupomFiscal, OnATotalizerThatIsNotProgrammedIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "1", "T", 3), Now())),
              "the totalizer T3 is not programmed");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "1", "F", 2), Now())),
              "the totalizer F2 is not programmed");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "1", "T", 31), Now())),
              "there is no totalizer T31");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "1", "T", 0), Now())),
              "there is no totalizer T0");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "1", "X", 1), Now())),
              "there is no totalizer X1");
}

TEST_F(RegistroCupomFiscal, ZeroQuantityPriceOrTotalIsRefused)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00", "0.000"), Now())),
              "the quantity must be above zero");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.00"), Now())),
              "the unit price must be above zero");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.01", "0.999"), Now())),
              "the item's total must be above zero");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.01", "0.999", "T", 1, true), Now())), "");
}

TEST_F(RegistroCupomFiscal, MoreDecimalsOrDigitsThanTheRegisterTakesAreRefused)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.0000"), Now())),
              "the unit price has more than 3 decimals");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.01", "10000000"), Now())),
              "the quantity has more than 7 integer digits");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.01", "9999999.999"), Now())), "");
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1000000000.00", "0.001"), Now())),
              "the unit price has more than 9 integer digits");
}

TEST_F(RegistroCupomFiscal, WithoutCodeOrDescriptionIsRefused)
{
    AbreCupom();
    VendaItem venda = Item("1.00");
    venda.codigo.clear();
    EXPECT_EQ(Reason(registro.CheckVendeItem(venda, Now())),
              "an item needs a code and a description");
}

TEST_F(RegistroCupomFiscal, TheThousandthIsRefused)
{
    AbreCupom();
    for (int i = 0; i < 999; ++i) {
        VendeItem("0.01");
    }
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 999);
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("0.01"), Now())),
              "the receipt is full: it has 999 items");
}

} // namespace
} // namespace bancada
