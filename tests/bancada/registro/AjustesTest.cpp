// Discounts and surcharges on items and on the subtotal, and their cancellation.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroAjustes : public RegistroTest
{
};

TEST_F(RegistroAjustes, ItemDiscountByValueGoesFromTheTotalizerToTheDiscounts)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(DESCONTO, "1.50"), 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorDesc(0)), "1.50");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "8.50");
    EXPECT_EQ(Text(registro.Cupom_GetSubTotal()), "8.50");
    EXPECT_EQ(TotalT(1), "8.50");
    EXPECT_EQ(Descontos(), "1.50");
    EXPECT_EQ(GT(), "10.00");
}

TEST_F(RegistroAjustes, ItemSurchargeGrowsTotalizerSurchargesAndGrandTotal)
{
    AbreCupom();
    VendeItem("10.00", "1", "S", 1);
    AjustaItem(ByValor(ACRESCIMO, "0.75"), 0);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorAcr(0)), "0.75");
    EXPECT_EQ(TotalS(1), "10.75");
    EXPECT_EQ(Acrescimos(1), "0.75");
    EXPECT_EQ(Acrescimos(0), "0.00");
    EXPECT_EQ(GT(), "10.75");
}

TEST_F(RegistroAjustes, PercentageIsOfTheItemAsItStandsAndTruncated)
{
    AbreCupom();
    VendeItem("9.99");
    AjustaItem(ByPercentual(ACRESCIMO, 1000), 1); // 0.999
    EXPECT_EQ(Text(registro.Cupom_GetItemValorAcr(0)), "0.99");
    AjustaItem(ByPercentual(DESCONTO, 1050), 1); // 10.5 % of 10.98 = 1.1529
    EXPECT_EQ(Text(registro.Cupom_GetItemValorDesc(0)), "1.15");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "9.83");
}

TEST_F(RegistroAjustes, ItemZeroIsTheLastOne)
{
    AbreCupom();
    VendeItem("10.00");
    VendeItem("20.00");
    AjustaItem(ByValor(DESCONTO, "1.00"), 0);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorDesc(1)), "1.00");
}

TEST_F(RegistroAjustes, CancelledItemDiscountIsTakenOutOfTheDiscounts)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(DESCONTO, "1.50"), 1);
    CancelaAjusteItem(DESCONTO, 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
    EXPECT_EQ(GT(), "10.00");
}

TEST_F(RegistroAjustes, CancelledItemSurchargeGoesToTheCancellations)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(ACRESCIMO, "1.50"), 1);
    CancelaAjusteItem(ACRESCIMO, 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Acrescimos(), "1.50");
    EXPECT_EQ(Cancelamentos(), "1.50");
    EXPECT_EQ(GT(), "11.50");
}

TEST_F(RegistroAjustes, AnItemCarriesOneOfEachKindAtATime)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(DESCONTO, "1.00"), 1);
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 1, Now())),
              "item 1 already carries a discount");
    AjustaItem(ByValor(ACRESCIMO, "2.00"), 1);
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(ACRESCIMO, "1.00"), 1, Now())),
              "item 1 already carries a surcharge");
    CancelaAjusteItem(DESCONTO, 1);
    AjustaItem(ByValor(DESCONTO, "3.00"), 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "9.00");
}

TEST_F(RegistroAjustes, ADiscountLeavesAtLeastOneCent)
{
    AbreCupom();
    VendeItem("10.00");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "10.00"), 1, Now())),
              "the discount must be smaller than what it is taken from");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByPercentual(DESCONTO, 10000), 1, Now())),
              "the discount must be smaller than what it is taken from");
    EXPECT_EQ(Reason(registro.CheckAjustaSubtotal(ByValor(DESCONTO, "10.00"), Now())),
              "the discount must be smaller than what it is taken from");
    AjustaItem(ByValor(DESCONTO, "9.99"), 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "0.01");
}

TEST_F(RegistroAjustes, ASurchargeStaysWhileTheDiscountNeedsIt)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(ACRESCIMO, "5.00"), 1);
    AjustaItem(ByValor(DESCONTO, "12.00"), 1);
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteItem(ACRESCIMO, 1, Now())),
              "without the surcharge the discount on item 1 would not leave anything: cancel the "
              "discount first");
    CancelaAjusteItem(DESCONTO, 1);
    CancelaAjusteItem(ACRESCIMO, 1);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "10.00");
}

TEST_F(RegistroAjustes, AnAmountThatIsNothingIsRefused)
{
    AbreCupom();
    VendeItem("0.05");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByPercentual(DESCONTO, 1000), 1, Now())),
              "the discount must be above zero"); // 0.005, truncated
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(ACRESCIMO, "0.00"), 1, Now())),
              "the surcharge must be above zero");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(ACRESCIMO, "0.015"), 1, Now())),
              "the surcharge has more than two decimals");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByPercentual(ACRESCIMO, 0), 1, Now())),
              "the percentage must be above zero and at most 999.99");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByPercentual(ACRESCIMO, 100000), 1, Now())),
              "the percentage must be above zero and at most 999.99");
}

TEST_F(RegistroAjustes, AnItemThatIsNotThereIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 1, Now())),
              "no receipt is open");
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 0, Now())),
              "the receipt has no item 0");
    VendeItem("10.00");
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 2, Now())),
              "the receipt has no item 2");
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteItem(DESCONTO, 0, Now())),
              "the receipt has no item 0");
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteItem(DESCONTO, 1, Now())),
              "item 1 carries no discount");
    CancelaItem(1);
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 1, Now())),
              "item 1 is cancelled");
}

TEST_F(RegistroAjustes, SubtotalDiscountIsApportionedToTheTotalizersOfBothTaxes)
{
    AbreCupom();
    VendeItem("30.00", "1", "T", 1);
    VendeItem("60.00", "1", "T", 2);
    VendeItem("10.00", "1", "S", 1);
    AjustaSubtotal(ByPercentual(DESCONTO, 1000));
    EXPECT_EQ(Text(registro.Cupom_GetSubTotal()), "100.00");
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "90.00");
    EXPECT_EQ(Text(registro.Cupom_GetSTValorDescAcr()), "10.00");
    EXPECT_EQ(Text(registro.Cupom_GetSTValorCanceladoDescAcr()), "0.00");
    EXPECT_EQ(registro.Cupom_GetSTDescAplicado(), 1);
    EXPECT_EQ(registro.Cupom_GetSTAcrAplicado(), 0);
    EXPECT_EQ(TotalT(1), "27.00");
    EXPECT_EQ(TotalT(2), "54.00");
    EXPECT_EQ(TotalS(1), "9.00");
    EXPECT_EQ(Descontos(0), "9.00");
    EXPECT_EQ(Descontos(1), "1.00");
    EXPECT_EQ(GT(), "100.00");
}

TEST_F(RegistroAjustes, CancelledSubtotalDiscountLeavesNothingBehind)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaSubtotal(ByValor(DESCONTO, "3.00"));
    CancelaAjusteSubtotal(DESCONTO);
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "10.00");
    EXPECT_EQ(registro.Cupom_GetSTDescAplicado(), 0);
    EXPECT_EQ(Text(registro.Cupom_GetSTValorDescAcr()), "3.00");
    EXPECT_EQ(Text(registro.Cupom_GetSTValorCanceladoDescAcr()), "3.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
}

TEST_F(RegistroAjustes, CancelledSubtotalSurchargeGoesToTheCancellations)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaSubtotal(ByValor(ACRESCIMO, "3.00"));
    EXPECT_EQ(registro.Cupom_GetSTAcrAplicado(), 1);
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "13.00");
    EXPECT_EQ(GT(), "13.00");
    CancelaAjusteSubtotal(ACRESCIMO);
    EXPECT_EQ(registro.Cupom_GetSTAcrAplicado(), 0);
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Acrescimos(), "3.00");
    EXPECT_EQ(Cancelamentos(), "3.00");
    EXPECT_EQ(GT(), "13.00");
}

TEST_F(RegistroAjustes, AfterACancelledAdjustmentAnotherMayFollow)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaSubtotal(ByValor(ACRESCIMO, "3.00"));
    CancelaAjusteSubtotal(ACRESCIMO);
    AjustaSubtotal(ByValor(DESCONTO, "1.00"));
    EXPECT_EQ(Text(registro.Cupom_GetSTValorDescAcr()), "1.00");
    EXPECT_EQ(Text(registro.Cupom_GetSTValorCanceladoDescAcr()), "0.00");
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "9.00");
}

TEST_F(RegistroAjustes, WhileTheSubtotalIsAdjustedTheItemsStand)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaItem(ByValor(ACRESCIMO, "1.00"), 1);
    AjustaSubtotal(ByValor(DESCONTO, "3.00"));
    const std::string reason =
        "the subtotal carries a discount: cancel it before anything else changes";
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00"), Now())), reason);
    EXPECT_EQ(Reason(registro.CheckCancelaItem(1, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckAjustaItem(ByValor(DESCONTO, "1.00"), 1, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteItem(ACRESCIMO, 1, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckAjustaSubtotal(ByValor(ACRESCIMO, "1.00"), Now())), reason);
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteSubtotal(ACRESCIMO, Now())),
              "the subtotal carries no surcharge");
}

TEST_F(RegistroAjustes, OncePaidNothingChanges)
{
    AbreCupom();
    VendeItem("10.00");
    AjustaSubtotal(ByValor(DESCONTO, "3.00"));
    EfetuaPagamento(DINHEIRO, "1.00");
    const std::string reason = "the receipt is being paid: its items and its subtotal stand";
    EXPECT_EQ(Reason(registro.CheckVendeItem(Item("1.00"), Now())), reason);
    EXPECT_EQ(Reason(registro.CheckCancelaAjusteSubtotal(DESCONTO, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckCancelaItem(1, Now())), reason);
}

TEST_F(RegistroAjustes, OnANonFiscalReceiptMoveItsTotalizersAlone)
{
    AbreCNF();
    VendeItemNF(3, "10.00");
    VendeItemNF(4, "30.00");
    AjustaItem(ByValor(DESCONTO, "2.00"), 1);
    AjustaItem(ByPercentual(ACRESCIMO, 1000), 2);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "8.00");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(1)), "33.00");
    AjustaSubtotal(ByValor(DESCONTO, "4.10"));
    EXPECT_EQ(TotalNF(3), "7.20");
    EXPECT_EQ(TotalNF(4), "29.70");
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "36.90");
    EXPECT_EQ(GT(), "0.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Acrescimos(), "0.00");
}

} // namespace
} // namespace bancada
