// Readings, vouchers, reports, reprints, interventions, and how the counters move with them.
#include "tests/bancada/registro/RegistroTest.h"

#include "bancada/registro/Contadores.h"

namespace bancada
{
namespace
{

class RegistroDocumentos : public RegistroTest
{
};

TEST_F(RegistroDocumentos, PrintedReadingsMoveTheCOO)
{
    registro.LeituraX(IMPRESSAO, Now());
    registro.LeituraMF(Now());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    registro.LeituraX(ARQUIVO, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    registro.LeituraX(ARQUIVO_DLL, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_GNF), 0);
}

TEST_F(RegistroDocumentos, ReadingsAreRefusedWhileAReceiptIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckLeituraX(IMPRESSAO, Now())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Reason(registro.CheckLeituraMF(Now())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Reason(registro.CheckAbreGerencial(Now())), "a Cupom Fiscal is open: COO 1");
    EXPECT_EQ(Reason(registro.CheckReimprimeMFD(1, 1, Now())), "a Cupom Fiscal is open: COO 1");
}

TEST_F(RegistroDocumentos, VoucherBelongsToAPaymentOfTheLastReceipt)
{
    EXPECT_EQ(Reason(registro.CheckAbreCCD(CARTAO, Now())), "no receipt was issued");
    AbreCupom();
    VendeItem("10.00");
    EfetuaPagamento(CARTAO, "6.00");
    EfetuaPagamento(DINHEIRO, "4.00");
    FechaCupom();
    EXPECT_EQ(Reason(registro.CheckAbreCCD(DINHEIRO, Now())),
              "Meio de Pagamento 1 is not tied to a Comprovante de Crédito ou Débito");
    EXPECT_EQ(Reason(registro.CheckAbreEstornoCCD(Now())),
              "the receipt COO 1 has no Comprovante de Crédito ou Débito");
    AbreCCD(CARTAO);
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_CDC), 1);
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())),
              "a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckAbreCCD(CARTAO, Now())),
              "the receipt COO 1 has no payment in Meio de Pagamento 2 without its Comprovante de "
              "Crédito ou Débito");
}

TEST_F(RegistroDocumentos, ReversedVoucherCanBeIssuedAgain)
{
    EmiteCupom("10.00", CARTAO);
    AbreCCD(CARTAO);
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(CARTAO, DINHEIRO, Money("10.00"), Now())),
              "only 0.00 of the receipt COO 1 can be moved from Meio de Pagamento 2");
    ExpectAccepted(registro.CheckAbreEstornoCCD(Now()));
    registro.AbreEstornoCCD(Now());
    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_GNF), 2);
    EXPECT_EQ(Contador(COUNTER_CDC), 1);
    EXPECT_EQ(Reason(registro.CheckLeituraX(IMPRESSAO, Now())),
              "a reversal of a Comprovante de Crédito ou Débito is open");
    FechaCCDGerencial();
    ExpectAccepted(registro.CheckAbreCCD(CARTAO, Now()));
    EstornaMeioPagamento(CARTAO, DINHEIRO, "10.00");
    EXPECT_EQ(Meio(CARTAO), "0.00");
}

TEST_F(RegistroDocumentos, TheVoucherIssuedLastIsReversedFirst)
{
    registro.ProgramaMeioPagamento(5, "CARTAO B", COM_CCD);
    AbreCupom();
    VendeItem("10.00");
    EfetuaPagamento(CARTAO, "6.00");
    EfetuaPagamento(5, "4.00");
    FechaCupom();
    AbreCCD(5);
    FechaCCDGerencial();
    AbreCCD(CARTAO);
    FechaCCDGerencial();
    registro.AbreEstornoCCD(Now());
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckAbreCCD(CARTAO, Now())), "");
    EXPECT_EQ(Reason(registro.CheckAbreCCD(5, Now())),
              "the receipt COO 1 has no payment in Meio de Pagamento 5 without its Comprovante de "
              "Crédito ou Débito");
    registro.AbreEstornoCCD(Now());
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckAbreCCD(5, Now())), "");
    EXPECT_EQ(Reason(registro.CheckAbreEstornoCCD(Now())),
              "the receipt COO 1 has no Comprovante de Crédito ou Débito");
}

TEST_F(RegistroDocumentos, ReportMovesGNFAndGRG)
{
    registro.AbreGerencial(Now());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Contador(COUNTER_GRG), 1);
    EXPECT_EQ(Reason(registro.CheckAbreCNF({}, Now())), "a Relatório Gerencial is open");
    FechaCCDGerencial();
    EXPECT_EQ(Reason(registro.CheckFechaCCDGerencial(Now())),
              "no Comprovante de Crédito ou Débito and no Relatório Gerencial is open");
}

TEST_F(RegistroDocumentos, ReprintCountsOnceItIsConcluded)
{
    EmiteCupom("1.00");
    ExpectAccepted(registro.CheckReimprimeMFD(1, 1, Now()));
    registro.ReimprimeMFD(1, 1, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_CFD), 0);
    registro.FinishReimprimeMFD();
    EXPECT_EQ(Contador(COUNTER_CFD), 1);
}

TEST_F(RegistroDocumentos, ReprintOfDocumentsThatAreNotThereIsRefused)
{
    registro.LeituraX(IMPRESSAO, Now());
    EXPECT_EQ(Reason(registro.CheckReimprimeMFD(0, 1, Now())),
              "a reprint goes from a first to a last COO, both above zero");
    EXPECT_EQ(Reason(registro.CheckReimprimeMFD(2, 1, Now())),
              "a reprint goes from a first to a last COO, both above zero");
    EXPECT_EQ(Reason(registro.CheckReimprimeMFD(1, 2, Now())),
              "the last document is COO 1: there is no 2");
}

} // namespace
} // namespace bancada
