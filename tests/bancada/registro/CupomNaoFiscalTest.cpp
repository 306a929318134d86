// The non-fiscal receipt and the movements of the till.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroCupomNaoFiscal : public RegistroTest
{
};

TEST_F(RegistroCupomNaoFiscal, ReceiptMovesItsCountersTotalizersAndMeans)
{
    AbreCNF();
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_CCF), 0);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), COMPROVANTE_NAO_FISCAL);
    VendeItemNF(3, "1.50");
    VendeItemNF(4, "100.00");
    char text[32];
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(0, text, sizeof text), "1,50");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, text, sizeof text), "1");
    EXPECT_EQ(Text(registro.Cupom_GetSubTotal()), "101.50");
    EfetuaPagamento(DINHEIRO, "110.00");
    FechaCNF();
    EXPECT_EQ(TotalNF(3), "1.50");
    EXPECT_EQ(TotalNF(4), "100.00");
    EXPECT_EQ(Meio(DINHEIRO), "110.00");
    EXPECT_EQ(Troco(), "8.50");
    EXPECT_EQ(GT(), "0.00");
}

TEST_F(RegistroCupomNaoFiscal, CancelledItemLeavesItsTotalizer)
{
    AbreCNF();
    VendeItemNF(3, "1.50");
    VendeItemNF(3, "2.00");
    CancelaItem(1);
    EXPECT_EQ(TotalNF(3), "2.00");
    EXPECT_EQ(Text(registro.Cupom_GetTotal()), "2.00");
    CancelaCupomEmEmissao();
    EXPECT_EQ(TotalNF(3), "0.00");
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
}

TEST_F(RegistroCupomNaoFiscal, ItemOnAReservedOrUnprogrammedTotalizerIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(3, Money("1.00"), Now())),
              "no Comprovante Não Fiscal is open");
    AbreCNF();
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(1, Money("1.00"), Now())),
              "the non-fiscal totalizer 1 is reserved for the till's floats and withdrawals");
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(2, Money("1.00"), Now())),
              "the non-fiscal totalizer 2 is reserved for the till's floats and withdrawals");
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(5, Money("1.00"), Now())),
              "the non-fiscal totalizer 5 is not programmed");
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(40, Money("1.00"), Now())),
              "the non-fiscal totalizer 40 is not programmed");
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(0, Money("1.00"), Now())),
              "the non-fiscal totalizer 0 is not programmed");
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(3, Money("0.00"), Now())),
              "the item's value must be above zero");
}

TEST_F(RegistroCupomNaoFiscal, FloatAndWithdrawalMoveTheirTotalizers)
{
    MovimentaCaixa(FUNDO_TROCO, "100.00");
    EXPECT_EQ(Text(registro.Cupom_GetItemValorTotal(0)), "100.00");
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 1);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), COMPROVANTE_NAO_FISCAL);
    MovimentaCaixa(SANGRIA, "30.00");
    EXPECT_EQ(TotalNF(1), "100.00");
    EXPECT_EQ(TotalNF(2), "30.00");
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 2);
    EXPECT_EQ(Meio(DINHEIRO), "100.00"); // a withdrawal is no payment
    EXPECT_EQ(Text(registro.BaseFormasPagamento_GetTrocoTotal()), "0.00");
    char nome[32];
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 0, nome, sizeof nome),
                 "FUNDO DE TROCO");
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 1, nome, sizeof nome),
                 "SANGRIA");
}

TEST_F(RegistroCupomNaoFiscal, AFloatIsPutInAMeansThatGivesChange)
{
    registro.MovimentaCaixa(FUNDO_TROCO, Money("7.00"), Now(), CHEQUE);
    EXPECT_EQ(Meio(CHEQUE), "7.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(FUNDO_TROCO, Money("1.00"), Now(), CARTAO)),
              "Meio de Pagamento 2 gives no change: a float is not put in it");
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(FUNDO_TROCO, Money("1.00"), Now(), 9)),
              "Meio de Pagamento 9 is not programmed");
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(SANGRIA, Money("1.00"), Now(), DINHEIRO)),
              "a withdrawal is no payment: it has no Meio de Pagamento");
}

TEST_F(RegistroCupomNaoFiscal, TheFirstMeansThatGivesChangeIsTheCash)
{
    Registro other;
    other.MovimentaCaixa(FUNDO_TROCO, Money("5.00"), Now()); // no means is programmed
    EXPECT_TRUE(other.GetMemoria().cupom.pagamentos.empty());
    other.ProgramaMeioPagamento(1, "CARTAO", COM_CCD);
    other.ProgramaMeioPagamento(3, "DINHEIRO", SEM_CCD);
    other.ProgramaMeioPagamento(4, "CHEQUE", SEM_CCD);
    other.MovimentaCaixa(FUNDO_TROCO, Money("6.00"), Now());
    EXPECT_EQ(Text(other.BaseFormasPagamento_GetFPTotal(2)), "6.00");
    EXPECT_EQ(Text(other.BaseFormasPagamento_GetFPTotal(0)), "0.00");
    EXPECT_EQ(Text(other.BaseFormasPagamento_GetFPTotal(3)), "0.00");
}

TEST_F(RegistroCupomNaoFiscal, MovementOfTheTillNeedsAnAmountAndNothingOpen)
{
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(SANGRIA, Money("0.00"), Now())),
              "the amount must be above zero");
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(SANGRIA, Money("1.00"), Now())),
              "a Cupom Fiscal is open: COO 1");
}

TEST_F(RegistroCupomNaoFiscal, ConsumerNumbersAreChecked)
{
    EXPECT_EQ(Reason(registro.CheckAbreCNF({"12345678909", "", ""}, Now())), "");
    EXPECT_EQ(Reason(registro.CheckAbreCNF({"12345678900", "", ""}, Now())),
              "the CPF 12345678900 is wrong");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({"12345678000195", "", ""}, Now())), "");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({"12345678000194", "", ""}, Now())),
              "the CNPJ 12345678000194 is wrong");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({"11111111111", "", ""}, Now())),
              "the CPF 11111111111 is wrong");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({"123", "", ""}, Now())),
              "a CPF has 11 digits and a CNPJ 14, without punctuation: 123");
}

} // namespace
} // namespace bancada
