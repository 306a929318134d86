// Discounts and surcharges on items and on the subtotal, and their cancellation.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroAjustes : public RegistroTeste
{
};

TEST_F(RegistroAjustes, ItemDiscountByValueGoesFromTheTotalizerToTheDiscounts)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(DESCONTO, "1.50"), 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorDesc(0)), "1.50");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "8.50");
    EXPECT_EQ(Texto(registro.Cupom_GetSubTotal()), "8.50");
    EXPECT_EQ(TotalT(1), "8.50");
    EXPECT_EQ(Descontos(), "1.50");
    EXPECT_EQ(GT(), "10.00");
}

TEST_F(RegistroAjustes, ItemSurchargeGrowsTotalizerSurchargesAndGrandTotal)
{
    AbreCupom();
    Vende("10.00", "1", "S", 1);
    AjustaItem(PorValor(ACRESCIMO, "0.75"), 0);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorAcr(0)), "0.75");
    EXPECT_EQ(TotalS(1), "10.75");
    EXPECT_EQ(Acrescimos(1), "0.75");
    EXPECT_EQ(Acrescimos(0), "0.00");
    EXPECT_EQ(GT(), "10.75");
}

TEST_F(RegistroAjustes, PercentageIsOfTheItemAsItStandsAndTruncated)
{
    AbreCupom();
    Vende("9.99");
    AjustaItem(PorPercentual(ACRESCIMO, 1000), 1); // 0.999
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorAcr(0)), "0.99");
    AjustaItem(PorPercentual(DESCONTO, 1050), 1); // 10.5 % of 10.98 = 1.1529
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorDesc(0)), "1.15");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "9.83");
}

TEST_F(RegistroAjustes, ItemZeroIsTheLastOne)
{
    AbreCupom();
    Vende("10.00");
    Vende("20.00");
    AjustaItem(PorValor(DESCONTO, "1.00"), 0);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorDesc(1)), "1.00");
}

TEST_F(RegistroAjustes, CancelledItemDiscountIsTakenOutOfTheDiscounts)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(DESCONTO, "1.50"), 1);
    CancelaAjusteItem(DESCONTO, 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
    EXPECT_EQ(GT(), "10.00");
}

TEST_F(RegistroAjustes, CancelledItemSurchargeGoesToTheCancellations)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(ACRESCIMO, "1.50"), 1);
    CancelaAjusteItem(ACRESCIMO, 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Acrescimos(), "1.50");
    EXPECT_EQ(Cancelamentos(), "1.50");
    EXPECT_EQ(GT(), "11.50");
}

TEST_F(RegistroAjustes, AnItemCarriesOneOfEachKindAtATime)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(DESCONTO, "1.00"), 1);
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 1, Agora())),
              "item 1 already carries a discount");
    AjustaItem(PorValor(ACRESCIMO, "2.00"), 1);
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(ACRESCIMO, "1.00"), 1, Agora())),
              "item 1 already carries a surcharge");
    CancelaAjusteItem(DESCONTO, 1);
    AjustaItem(PorValor(DESCONTO, "3.00"), 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "9.00");
}

TEST_F(RegistroAjustes, ADiscountLeavesAtLeastOneCent)
{
    AbreCupom();
    Vende("10.00");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "10.00"), 1, Agora())),
              "the discount must be smaller than what it is taken from");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorPercentual(DESCONTO, 10000), 1, Agora())),
              "the discount must be smaller than what it is taken from");
    EXPECT_EQ(Motivo(registro.CheckAjustaSubtotal(PorValor(DESCONTO, "10.00"), Agora())),
              "the discount must be smaller than what it is taken from");
    AjustaItem(PorValor(DESCONTO, "9.99"), 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "0.01");
}

TEST_F(RegistroAjustes, ASurchargeStaysWhileTheDiscountNeedsIt)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(ACRESCIMO, "5.00"), 1);
    AjustaItem(PorValor(DESCONTO, "12.00"), 1);
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteItem(ACRESCIMO, 1, Agora())),
              "without the surcharge the discount on item 1 would not leave anything: cancel the "
              "discount first");
    CancelaAjusteItem(DESCONTO, 1);
    CancelaAjusteItem(ACRESCIMO, 1);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "10.00");
}

TEST_F(RegistroAjustes, AnAmountThatIsNothingIsRefused)
{
    AbreCupom();
    Vende("0.05");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorPercentual(DESCONTO, 1000), 1, Agora())),
              "the discount must be above zero"); // 0.005, truncated
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(ACRESCIMO, "0.00"), 1, Agora())),
              "the surcharge must be above zero");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(ACRESCIMO, "0.015"), 1, Agora())),
              "the surcharge has more than two decimals");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorPercentual(ACRESCIMO, 0), 1, Agora())),
              "the percentage must be above zero and at most 999.99");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorPercentual(ACRESCIMO, 100000), 1, Agora())),
              "the percentage must be above zero and at most 999.99");
}

TEST_F(RegistroAjustes, AnItemThatIsNotThereIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 1, Agora())),
              "no receipt is open");
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 0, Agora())),
              "the receipt has no item 0");
    Vende("10.00");
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 2, Agora())),
              "the receipt has no item 2");
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteItem(DESCONTO, 0, Agora())),
              "the receipt has no item 0");
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteItem(DESCONTO, 1, Agora())),
              "item 1 carries no discount");
    CancelaItem(1);
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 1, Agora())),
              "item 1 is cancelled");
}

TEST_F(RegistroAjustes, SubtotalDiscountIsApportionedToTheTotalizersOfBothTaxes)
{
    AbreCupom();
    Vende("30.00", "1", "T", 1);
    Vende("60.00", "1", "T", 2);
    Vende("10.00", "1", "S", 1);
    AjustaSubtotal(PorPercentual(DESCONTO, 1000));
    EXPECT_EQ(Texto(registro.Cupom_GetSubTotal()), "100.00");
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "90.00");
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorDescAcr()), "10.00");
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorCanceladoDescAcr()), "0.00");
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
    Vende("10.00");
    AjustaSubtotal(PorValor(DESCONTO, "3.00"));
    CancelaAjusteSubtotal(DESCONTO);
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "10.00");
    EXPECT_EQ(registro.Cupom_GetSTDescAplicado(), 0);
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorDescAcr()), "3.00");
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorCanceladoDescAcr()), "3.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
}

TEST_F(RegistroAjustes, CancelledSubtotalSurchargeGoesToTheCancellations)
{
    AbreCupom();
    Vende("10.00");
    AjustaSubtotal(PorValor(ACRESCIMO, "3.00"));
    EXPECT_EQ(registro.Cupom_GetSTAcrAplicado(), 1);
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "13.00");
    EXPECT_EQ(GT(), "13.00");
    CancelaAjusteSubtotal(ACRESCIMO);
    EXPECT_EQ(registro.Cupom_GetSTAcrAplicado(), 0);
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "10.00");
    EXPECT_EQ(TotalT(1), "10.00");
    EXPECT_EQ(Acrescimos(), "3.00");
    EXPECT_EQ(Cancelamentos(), "3.00");
    EXPECT_EQ(GT(), "13.00");
}

TEST_F(RegistroAjustes, AfterACancelledAdjustmentAnotherMayFollow)
{
    AbreCupom();
    Vende("10.00");
    AjustaSubtotal(PorValor(ACRESCIMO, "3.00"));
    CancelaAjusteSubtotal(ACRESCIMO);
    AjustaSubtotal(PorValor(DESCONTO, "1.00"));
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorDescAcr()), "1.00");
    EXPECT_EQ(Texto(registro.Cupom_GetSTValorCanceladoDescAcr()), "0.00");
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "9.00");
}

TEST_F(RegistroAjustes, WhileTheSubtotalIsAdjustedTheItemsStand)
{
    AbreCupom();
    Vende("10.00");
    AjustaItem(PorValor(ACRESCIMO, "1.00"), 1);
    AjustaSubtotal(PorValor(DESCONTO, "3.00"));
    const std::string motivo =
        "the subtotal carries a discount: cancel it before anything else changes";
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00"), Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(1, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckAjustaItem(PorValor(DESCONTO, "1.00"), 1, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteItem(ACRESCIMO, 1, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckAjustaSubtotal(PorValor(ACRESCIMO, "1.00"), Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteSubtotal(ACRESCIMO, Agora())),
              "the subtotal carries no surcharge");
}

TEST_F(RegistroAjustes, OncePaidNothingChanges)
{
    AbreCupom();
    Vende("10.00");
    AjustaSubtotal(PorValor(DESCONTO, "3.00"));
    Paga(DINHEIRO, "1.00");
    const std::string motivo = "the receipt is being paid: its items and its subtotal stand";
    EXPECT_EQ(Motivo(registro.CheckVendeItem(Venda("1.00"), Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckCancelaAjusteSubtotal(DESCONTO, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(1, Agora())), motivo);
}

TEST_F(RegistroAjustes, OnANonFiscalReceiptMoveItsTotalizersAlone)
{
    AbreCNF();
    VendeNF(3, "10.00");
    VendeNF(4, "30.00");
    AjustaItem(PorValor(DESCONTO, "2.00"), 1);
    AjustaItem(PorPercentual(ACRESCIMO, 1000), 2);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "8.00");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(1)), "33.00");
    AjustaSubtotal(PorValor(DESCONTO, "4.10"));
    EXPECT_EQ(TotalNF(3), "7.20");
    EXPECT_EQ(TotalNF(4), "29.70");
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "36.90");
    EXPECT_EQ(GT(), "0.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Acrescimos(), "0.00");
}

} // namespace
} // namespace bancada
