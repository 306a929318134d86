// Cancellation of an item, of the receipt in issue and of the receipt issued last.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroCancelamentos : public RegistroTest
{
};

TEST_F(RegistroCancelamentos, ItemMovesItsNetValueToTheCancellations)
{
    AbreCupom();
    VendeItem("10.00");
    VendeItem("5.00");
    AjustaItem(ByValor(DESCONTO, "2.00"), 1);
    AjustaItem(ByValor(ACRESCIMO, "0.50"), 1);
    CancelaItem(1);
    EXPECT_EQ(Text(registro.Cupom_GetSubTotal()), "5.00");
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 2);
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "8.50");
    EXPECT_EQ(TotalT(1), "5.00");
    EXPECT_EQ(Cancelamentos(), "8.50");
    EXPECT_EQ(Descontos(), "2.00");
    EXPECT_EQ(Acrescimos(), "0.50");
    EXPECT_EQ(GT(), "15.50");
}

TEST_F(RegistroCancelamentos, ItemThatIsNotThereIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckCancelaItem(1, Now())), "no receipt is open");
    AbreCupom();
    VendeItem("10.00");
    EXPECT_EQ(Reason(registro.CheckCancelaItem(0, Now())), "the receipt has no item 0");
    EXPECT_EQ(Reason(registro.CheckCancelaItem(2, Now())), "the receipt has no item 2");
    CancelaItem(1);
    EXPECT_EQ(Reason(registro.CheckCancelaItem(1, Now())), "item 1 is cancelled");
}

TEST_F(RegistroCancelamentos, ReceiptWithoutItemsLeftCanOnlyBeCancelled)
{
    AbreCupom();
    VendeItem("10.00");
    CancelaItem(1);
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("1.00"), Now())),
              "the receipt has no item");
    EXPECT_EQ(Reason(registro.CheckFechaCupom("", Now())),
              "the receipt has no item: cancel it instead");
    EXPECT_EQ(Reason(registro.CheckAjustaSubtotal(ByValor(ACRESCIMO, "1.00"), Now())),
              "the receipt has no item");
    CancelaCupomEmEmissao();
}

TEST_F(RegistroCancelamentos, InIssueKeepsTheNumberAndTheType)
{
    AbreCupom();
    VendeItem("10.00", "1", "S", 1);
    AjustaSubtotal(ByValor(DESCONTO, "1.00"));
    EfetuaPagamento(DINHEIRO, "5.00");
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
    EXPECT_EQ(Reason(registro.CheckCancelaCupomEmEmissao(Now())), "no receipt is open");
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())),
              "the last receipt, COO 1, is cancelled");
}

TEST_F(RegistroCancelamentos, IssuedReceiptTakesItsPaymentsAndChangeOut)
{
    EmiteCupom("3.00", CARTAO);
    AbreCupom();
    VendeItem("10.00");
    AjustaSubtotal(ByValor(ACRESCIMO, "1.00"));
    EfetuaPagamento(CARTAO, "4.00");
    EfetuaPagamento(DINHEIRO, "10.00");
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
    VendeItemNF(3, "10.00");
    EfetuaPagamento(DINHEIRO, "10.00");
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
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())), "no receipt was issued");
    EmiteCupom("10.00");
    EmiteCupom("20.00");
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(1, Now())),
              "only the receipt issued last can be cancelled: it is COO 2, not 1");
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(2, Now())), "");
    CancelaCupom();
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(2, Now())),
              "the last receipt, COO 2, is cancelled");
}

TEST_F(RegistroCancelamentos, AReadingInBetweenDoesNotMatterAMovementOfTheTillDoes)
{
    EmiteCupom("10.00");
    registro.LeituraX(IMPRESSAO, Now());
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(1, Now())), "");
    MovimentaCaixa(SANGRIA, "5.00");
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())),
              "the last receipt, COO 3, is a Sangria or a Fundo de Troco");
}

TEST_F(RegistroCancelamentos, AReceiptOfAClosedDayCannotBeCancelled)
{
    EmiteCupom("10.00");
    ReducaoZ();
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())),
              "the day of the last receipt, COO 1, was closed by its Redução Z");
}

TEST_F(RegistroCancelamentos, AReceiptWithAVoucherCannotBeCancelledBeforeItsReversal)
{
    EmiteCupom("10.00", CARTAO);
    AbreCCD(CARTAO);
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())),
              "a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckCancelaCupom(0, Now())),
              "the receipt has a Comprovante de Crédito ou Débito: reverse it first");
    registro.AbreEstornoCCD(Now());
    FechaCCDGerencial();
    CancelaCupom();
    EXPECT_EQ(Meio(CARTAO), "0.00");
}

} // namespace
} // namespace bancada
