// Readings, vouchers, reports, reprints, interventions, and how the counters move with them.
#include "tests/bancada/RegistroTeste.h"

#include "bancada/registro/Contadores.h"

namespace bancada
{
namespace
{

class RegistroDocumentos : public RegistroTeste
{
};

TEST_F(RegistroDocumentos, PrintedReadingsMoveTheCOO)
{
    registro.LeituraX(IMPRESSAO, Agora());
    registro.LeituraMF(Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    registro.LeituraX(ARQUIVO, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    registro.LeituraX(ARQUIVO_DLL, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_GNF), 0);
}

TEST_F(RegistroDocumentos, ReadingsAreRefusedWhileAReceiptIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckLeituraX(IMPRESSAO, Agora())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Motivo(registro.CheckLeituraMF(Agora())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Motivo(registro.CheckAbreGerencial(Agora())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Motivo(registro.CheckReimprimeMFD(1, 1, Agora())), "a Cupom Fiscal is open: COO 1");
}

TEST_F(RegistroDocumentos, VoucherBelongsToAPaymentOfTheLastReceipt)
{
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(CARTAO, Agora())), "no receipt was issued");
    AbreCupom();
    Vende("10.00");
    Paga(CARTAO, "6.00");
    Paga(DINHEIRO, "4.00");
    FechaCupom();
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(DINHEIRO, Agora())),
              "Meio de Pagamento 1 is not tied to a Comprovante de Crédito ou Débito");
    EXPECT_EQ(Motivo(registro.CheckAbreEstornoCCD(Agora())),
              "the receipt COO 1 has no Comprovante de Crédito ou Débito");
    AbreCCD(CARTAO);
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_CDC), 1);
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())),
              "a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(CARTAO, Agora())),
              "the receipt COO 1 has no payment in Meio de Pagamento 2 without its Comprovante de "
              "Crédito ou Débito");
}

TEST_F(RegistroDocumentos, ReversedVoucherCanBeIssuedAgain)
{
    Cupom1("10.00", CARTAO);
    AbreCCD(CARTAO);
    FechaCCDGerencial();
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(CARTAO, DINHEIRO, Dinheiro("10.00"), Agora())),
        "only 0.00 of the receipt COO 1 can be moved from Meio de Pagamento 2");
    Accept(registro.CheckAbreEstornoCCD(Agora()));
    registro.AbreEstornoCCD(Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_GNF), 2);
    EXPECT_EQ(Contador(COUNTER_CDC), 1);
    EXPECT_EQ(Motivo(registro.CheckLeituraX(IMPRESSAO, Agora())),
              "a reversal of a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    Accept(registro.CheckAbreCCD(CARTAO, Agora()));
    Estorna(CARTAO, DINHEIRO, "10.00");
    EXPECT_EQ(Meio(CARTAO), "0.00");
}

TEST_F(RegistroDocumentos, TheVoucherIssuedLastIsReversedFirst)
{
    registro.ProgramaMeioPagamento(5, "CARTAO B", COM_CCD);
    AbreCupom();
    Vende("10.00");
    Paga(CARTAO, "6.00");
    Paga(5, "4.00");
    FechaCupom();
    AbreCCD(5);
    FechaCCDGerencial();
    AbreCCD(CARTAO);
    FechaCCDGerencial();
    registro.AbreEstornoCCD(Agora());
    FechaCCDGerencial();
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(CARTAO, Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(5, Agora())),
              "the receipt COO 1 has no payment in Meio de Pagamento 5 without its Comprovante de "
              "Crédito ou Débito");
    registro.AbreEstornoCCD(Agora());
    FechaCCDGerencial();
    EXPECT_EQ(Motivo(registro.CheckAbreCCD(5, Agora())), "");
    EXPECT_EQ(Motivo(registro.CheckAbreEstornoCCD(Agora())),
              "the receipt COO 1 has no Comprovante de Crédito ou Débito");
}

TEST_F(RegistroDocumentos, ReportMovesGNFAndGRG)
{
    registro.AbreGerencial(Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_GRG), 1);
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({}, Agora())), "a Relatório Gerencial is open");
    FechaCCDGerencial();
    EXPECT_EQ(Motivo(registro.CheckFechaCCDGerencial(Agora())),
              "no Comprovante de Crédito ou Débito and no Relatório Gerencial is open");
}

TEST_F(RegistroDocumentos, ReprintCountsOnceItIsConcluded)
{
    Cupom1("1.00");
    Accept(registro.CheckReimprimeMFD(1, 1, Agora()));
    registro.ReimprimeMFD(1, 1, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_CFD), 0);
    registro.FinishReimprimeMFD();
    EXPECT_EQ(Contador(COUNTER_CFD), 1);
}

TEST_F(RegistroDocumentos, ReprintOfDocumentsThatAreNotThereIsRefused)
{
    registro.LeituraX(IMPRESSAO, Agora());
    EXPECT_EQ(Motivo(registro.CheckReimprimeMFD(0, 1, Agora())),
              "a reprint goes from a first to a last COO, both above zero");
    EXPECT_EQ(Motivo(registro.CheckReimprimeMFD(2, 1, Agora())),
              "a reprint goes from a first to a last COO, both above zero");
    EXPECT_EQ(Motivo(registro.CheckReimprimeMFD(1, 2, Agora())),
              "the last document is COO 1: there is no 2");
}

TEST_F(RegistroDocumentos, ModeLPrintsAReadingEnteringAndLeaving)
{
    registro.EntraIntervencao(EModoIntervencao::MIL, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())),
              "the register is in intervention mode L: leave it first");
    EXPECT_EQ(Motivo(registro.CheckSaiIntervencao(EModoIntervencao::MIT, Agora())),
              "the register is not in intervention mode T");
    Accept(registro.CheckLeituraX(IMPRESSAO, Agora()));
    Accept(registro.CheckSaiIntervencao(EModoIntervencao::MIL, Agora()));
    registro.SaiIntervencao(EModoIntervencao::MIL, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_CRO), 0);
}

TEST_F(RegistroDocumentos, LeavingModeTIsARestartOfOperation)
{
    registro.EntraIntervencao(EModoIntervencao::MIT, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 0);
    EXPECT_EQ(Contador(COUNTER_CRO), 0);
    EXPECT_EQ(Motivo(registro.CheckEntraIntervencao(EModoIntervencao::MIL, Agora())),
              "the register is in intervention mode T: leave it first");
    EXPECT_EQ(Motivo(registro.CheckReducaoZ(Agora())),
              "the register is in intervention mode T: leave it first");
    EXPECT_EQ(Motivo(registro.CheckAbreGerencial(Agora())),
              "the register is in intervention mode T: leave it first");
    registro.SaiIntervencao(EModoIntervencao::MIT, Agora());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_CRO), 1);
    EXPECT_EQ(Motivo(registro.CheckSaiIntervencao(EModoIntervencao::MIL, Agora())),
              "the register is not in intervention mode L");
}

TEST_F(RegistroDocumentos, InterventionIsRefusedWhileAReceiptIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckEntraIntervencao(EModoIntervencao::MIT, Agora())),
              "a Cupom Fiscal is open: COO 1");
}

TEST(RegistroContadores, StartOverAtOneAfterSixDigits)
{
    Memoria memoria;
    memoria.contadores[COUNTER_COO] = 999998;
    EXPECT_EQ(AdvanceContador(memoria, COUNTER_COO), 999999);
    EXPECT_EQ(AdvanceContador(memoria, COUNTER_COO), 1);
    EXPECT_EQ(memoria.contadores[COUNTER_COO], 1);
    EXPECT_EQ(memoria.contadores[COUNTER_CCF], 0);
}

} // namespace
} // namespace bancada
