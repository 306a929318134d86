// Cancellation of an item, of the receipt in issue and of the receipt issued last.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroCancelamentos : public RegistroTeste
{
};

TEST_F(RegistroCancelamentos, ItemMovesItsNetValueToTheCancellations)
{
    AbreCupom();
    Vende("10.00");
    Vende("5.00");
    AjustaItem(PorValor(DESCONTO, "2.00"), 1);
    AjustaItem(PorValor(ACRESCIMO, "0.50"), 1);
    CancelaItem(1);
    EXPECT_EQ(Texto(registro.Cupom_GetSubTotal()), "5.00");
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 2);
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "8.50");
    EXPECT_EQ(TotalT(1), "5.00");
    EXPECT_EQ(Cancelamentos(), "8.50");
    EXPECT_EQ(Descontos(), "2.00");
    EXPECT_EQ(Acrescimos(), "0.50");
    EXPECT_EQ(GT(), "15.50");
}

TEST_F(RegistroCancelamentos, ItemThatIsNotThereIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(1, Agora())), "no receipt is open");
    AbreCupom();
    Vende("10.00");
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(0, Agora())), "the receipt has no item 0");
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(2, Agora())), "the receipt has no item 2");
    CancelaItem(1);
    EXPECT_EQ(Motivo(registro.CheckCancelaItem(1, Agora())), "item 1 is cancelled");
}

TEST_F(RegistroCancelamentos, ReceiptWithoutItemsLeftCanOnlyBeCancelled)
{
    AbreCupom();
    Vende("10.00");
    CancelaItem(1);
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("1.00"), Agora())),
              "the receipt has no item");
    EXPECT_EQ(Motivo(registro.CheckFechaCupom("", Agora())),
              "the receipt has no item: cancel it instead");
    EXPECT_EQ(Motivo(registro.CheckAjustaSubtotal(PorValor(ACRESCIMO, "1.00"), Agora())),
              "the receipt has no item");
    CancelaCupomEmEmissao();
}

TEST_F(RegistroCancelamentos, InIssueKeepsTheNumberAndTheType)
{
    AbreCupom();
    Vende("10.00", "1", "S", 1);
    AjustaSubtotal(PorValor(DESCONTO, "1.00"));
    Paga(DINHEIRO, "5.00");
    CancelaCupomEmEmissao();
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_CCF), 1);
    EXPECT_EQ(Contador(COUNTER_CFC), 1);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), CUPOM_FISCAL);
    EXPECT_EQ(registro.Cupom_GetCOO(), 1);
    EXPECT_EQ(TotalS(1), "0.00");
    EXPECT_EQ(Cancelamentos(1), "9.00");
    EXPECT_EQ(Descontos(1), "1.00");
    EXPECT_EQ(GT(), "10.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Motivo(registro.CheckCancelaCupomEmEmissao(Agora())), "no receipt is open");
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())),
              "the last receipt, COO 1, is cancelled");
}

TEST_F(RegistroCancelamentos, IssuedReceiptTakesItsPaymentsAndChangeOut)
{
    Cupom1("3.00", CARTAO);
    AbreCupom();
    Vende("10.00");
    AjustaSubtotal(PorValor(ACRESCIMO, "1.00"));
    Paga(CARTAO, "4.00");
    Paga(DINHEIRO, "10.00");
    FechaCupom();
    EXPECT_EQ(Troco(), "3.00");
    CancelaCupom();
    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_CCF), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 0);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), CUPOM_FISCAL);
    EXPECT_EQ(registro.Cupom_GetCOO(), 2);
    EXPECT_EQ(TotalT(1), "3.00");
    EXPECT_EQ(Cancelamentos(), "11.00");
    EXPECT_EQ(GT(), "14.00");
    EXPECT_EQ(Meio(CARTAO), "3.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Troco(), "0.00");
}

TEST_F(RegistroCancelamentos, IssuedNonFiscalReceiptIsADocumentOfItsOwn)
{
    AbreCNF();
    VendeNF(3, "10.00");
    Paga(DINHEIRO, "10.00");
    FechaCNF();
    EXPECT_EQ(TotalNF(3), "10.00");
    CancelaCupom();
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 2);
    EXPECT_EQ(Contador(COUNTER_NFC), 1);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), COMPROVANTE_NAO_FISCAL);
    EXPECT_EQ(TotalNF(3), "0.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
}

TEST_F(RegistroCancelamentos, OnlyTheReceiptIssuedLastCanBeCancelled)
{
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())), "no receipt was issued");
    Cupom1("10.00");
    Cupom1("20.00");
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(1, Agora())),
              "only the receipt issued last can be cancelled: it is COO 2, not 1");
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(2, Agora())), "");
    CancelaCupom();
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(2, Agora())),
              "the last receipt, COO 2, is cancelled");
}

TEST_F(RegistroCancelamentos, AReadingInBetweenDoesNotMatterAMovementOfTheTillDoes)
{
    Cupom1("10.00");
    registro.LeituraX(IMPRESSAO, Agora());
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(1, Agora())), "");
    MovimentaCaixa(SANGRIA, "5.00");
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())),
              "the last receipt, COO 3, is a Sangria or a Fundo de Troco");
}

TEST_F(RegistroCancelamentos, AReceiptOfAClosedDayCannotBeCancelled)
{
    Cupom1("10.00");
    ReducaoZ();
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())),
              "the day of the last receipt, COO 1, was closed by its Redução Z");
}

TEST_F(RegistroCancelamentos, AReceiptWithAVoucherCannotBeCancelledBeforeItsReversal)
{
    Cupom1("10.00", CARTAO);
    AbreCCD(CARTAO);
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())),
              "a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    EXPECT_EQ(Motivo(registro.CheckCancelaCupom(0, Agora())),
              "the receipt has a Comprovante de Crédito ou Débito: reverse it first");
    registro.AbreEstornoCCD(Agora());
    FechaCCDGerencial();
    CancelaCupom();
    EXPECT_EQ(Meio(CARTAO), "0.00");
}

} // namespace
} // namespace bancada
