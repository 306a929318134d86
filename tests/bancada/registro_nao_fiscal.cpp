// The non-fiscal receipt and the movements of the till.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroNaoFiscal : public RegistroTeste
{
};

TEST_F(RegistroNaoFiscal, ReceiptMovesItsCountersTotalizersAndMeans)
{
    AbreCNF();
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_CCF), 0);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), COMPROVANTE_NAO_FISCAL);
    VendeNF(3, "1.50");
    VendeNF(4, "100.00");
    char texto[32];
    EXPECT_STREQ(registro.Cupom_GetItemValorUnitarioStr(0, texto, sizeof texto), "1,50");
    EXPECT_STREQ(registro.Cupom_GetItemQtdeStr(0, texto, sizeof texto), "1");
    EXPECT_EQ(Texto(registro.Cupom_GetSubTotal()), "101.50");
    Paga(DINHEIRO, "110.00");
    FechaCNF();
    EXPECT_EQ(TotalNF(3), "1.50");
    EXPECT_EQ(TotalNF(4), "100.00");
    EXPECT_EQ(Meio(DINHEIRO), "110.00");
    EXPECT_EQ(Troco(), "8.50");
    EXPECT_EQ(GT(), "0.00");
}

TEST_F(RegistroNaoFiscal, CancelledItemLeavesItsTotalizer)
{
    AbreCNF();
    VendeNF(3, "1.50");
    VendeNF(3, "2.00");
    CancelaItem(1);
    EXPECT_EQ(TotalNF(3), "2.00");
    EXPECT_EQ(Texto(registro.Cupom_GetTotal()), "2.00");
    CancelaCupomEmEmissao();
    EXPECT_EQ(TotalNF(3), "0.00");
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
}

TEST_F(RegistroNaoFiscal, ItemOnAReservedOrUnprogrammedTotalizerIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(3, Dinheiro("1.00"), Agora())),
              "no Comprovante Não Fiscal is open");
    AbreCNF();
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(1, Dinheiro("1.00"), Agora())),
              "the non-fiscal totalizer 1 is reserved for the till's floats and withdrawals");
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(2, Dinheiro("1.00"), Agora())),
              "the non-fiscal totalizer 2 is reserved for the till's floats and withdrawals");
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(5, Dinheiro("1.00"), Agora())),
              "the non-fiscal totalizer 5 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(40, Dinheiro("1.00"), Agora())),
              "the non-fiscal totalizer 40 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(0, Dinheiro("1.00"), Agora())),
              "the non-fiscal totalizer 0 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckVendeItemNF(3, Dinheiro("0.00"), Agora())),
              "the item's value must be above zero");
}

TEST_F(RegistroNaoFiscal, FloatAndWithdrawalMoveTheirTotalizersAndNoMeans)
{
    MovimentaCaixa(FUNDO_TROCO, "100.00");
    EXPECT_EQ(Texto(registro.Cupom_GetItemValorTotal(0)), "100.00");
    EXPECT_EQ(registro.Cupom_GetQuantidadeDeItens(), 1);
    EXPECT_EQ(registro.Cupom_GetTipoCupom(), COMPROVANTE_NAO_FISCAL);
    MovimentaCaixa(SANGRIA, "30.00");
    EXPECT_EQ(TotalNF(1), "100.00");
    EXPECT_EQ(TotalNF(2), "30.00");
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 2);
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    char nome[32];
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 0, nome, sizeof nome),
                 "FUNDO DE TROCO");
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 1, nome, sizeof nome),
                 "SANGRIA");
}

TEST_F(RegistroNaoFiscal, MovementOfTheTillNeedsAnAmountAndNothingOpen)
{
    EXPECT_EQ(Motivo(registro.CheckMovimentaCaixa(SANGRIA, Dinheiro("0.00"), Agora())),
              "the amount must be above zero");
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckMovimentaCaixa(SANGRIA, Dinheiro("1.00"), Agora())),
              "a Cupom Fiscal is open: COO 1");
}

TEST_F(RegistroNaoFiscal, ConsumerNumbersAreChecked)
{
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({"12345678909", "", ""}, Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({"12345678900", "", ""}, Agora())),
              "the CPF 12345678900 is wrong");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({"12345678000195", "", ""}, Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({"12345678000194", "", ""}, Agora())),
              "the CNPJ 12345678000194 is wrong");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({"11111111111", "", ""}, Agora())),
              "the CPF 11111111111 is wrong");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({"123", "", ""}, Agora())),
              "a CPF has 11 digits and a CNPJ 14, without punctuation: 123");
}

} // namespace
} // namespace bancada
