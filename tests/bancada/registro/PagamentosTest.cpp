// Payments, change, closing and the reversal of a payment.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroPagamentos : public RegistroTest
{
};

TEST_F(RegistroPagamentos, ChangeIsWhatWasPaidBeyondTheTotal)
{
    AbreCupom();
    VendeItem("7.35");
    EfetuaPagamento(DINHEIRO, "10.00");
    EXPECT_EQ(Text(registro.Cupom_GetTroco()), "2.65");
    FechaCupom();
    EXPECT_EQ(Text(registro.Cupom_GetTroco()), "2.65");
    EXPECT_EQ(Meio(DINHEIRO), "10.00");
    EXPECT_EQ(Troco(), "2.65");
}

TEST_F(RegistroPagamentos, AreBookedWhenTheReceiptIsClosed)
{
    AbreCupom();
    VendeItem("10.00");
    EfetuaPagamento(CARTAO, "4.00");
    EfetuaPagamento(DINHEIRO, "6.00");
    EXPECT_EQ(Meio(CARTAO), "0.00");
    FechaCupom();
    EXPECT_EQ(Meio(CARTAO), "4.00");
    EXPECT_EQ(Meio(DINHEIRO), "6.00");
    EXPECT_EQ(Troco(), "0.00");
}

TEST_F(RegistroPagamentos, AMeansWithVoucherGivesNoChange)
{
    AbreCupom();
    VendeItem("10.00");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(CARTAO, Money("10.01"), Now())),
              "Meio de Pagamento 2 gives no change: only 10.00 is due");
    EfetuaPagamento(DINHEIRO, "4.00");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(CARTAO, Money("6.01"), Now())),
              "Meio de Pagamento 2 gives no change: only 6.00 is due");
    EfetuaPagamento(CARTAO, "6.00");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("0.01"), Now())),
              "the receipt is already paid");
}

TEST_F(RegistroPagamentos, WhatCannotBePaidIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("1.00"), Now())),
              "no receipt is open");
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("1.00"), Now())),
              "the receipt has no item");
    VendeItem("10.00");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(4, Money("1.00"), Now())),
              "Meio de Pagamento 4 is not programmed");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(0, Money("1.00"), Now())),
              "Meio de Pagamento 0 is not programmed");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(21, Money("1.00"), Now())),
              "Meio de Pagamento 21 is not programmed");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("0.00"), Now())),
              "the payment must be above zero");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("1.005"), Now())),
              "the payment has more than two decimals");
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("1000000000000.00"), Now())),
              "the payment is more than the register takes (999999999999.99)");
}

TEST_F(RegistroPagamentos, TheThirtyFirstIsRefused)
{
    AbreCupom();
    VendeItem("10.00");
    for (int i = 0; i < 30; ++i) {
        EfetuaPagamento(DINHEIRO, "0.01");
    }
    EXPECT_EQ(Reason(registro.CheckEfetuaPagamento(DINHEIRO, Money("9.70"), Now())),
              "the receipt already has 30 payments");
}

TEST_F(RegistroPagamentos, ClosingBeforePaidIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckFechaCupom("", Now())), "no Cupom Fiscal is open");
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckFechaCupom("", Now())),
              "the receipt has no item: cancel it instead");
    VendeItem("10.00");
    EfetuaPagamento(DINHEIRO, "9.99");
    EXPECT_EQ(Reason(registro.CheckFechaCupom("", Now())), "0.01 is still to be paid");
    EXPECT_EQ(Reason(registro.CheckFechaCNF(Now())), "no Comprovante Não Fiscal is open");
}

TEST_F(RegistroPagamentos, ReversalOnTheOpenReceiptIsNoDocument)
{
    AbreCupom();
    VendeItem("10.00");
    EfetuaPagamento(DINHEIRO, "10.00");
    const int coo = Contador(COUNTER_COO);
    EstornaMeioPagamento(DINHEIRO, CARTAO, "4.00");
    FechaCupom();
    EXPECT_EQ(Contador(COUNTER_COO), coo);
    EXPECT_EQ(Contador(COUNTER_GNF), 0);
    EXPECT_EQ(Meio(DINHEIRO), "6.00");
    EXPECT_EQ(Meio(CARTAO), "4.00");
}

TEST_F(RegistroPagamentos, ReversalOnTheIssuedReceiptIsADocumentAndMovesTheMeans)
{
    EmiteCupom("10.00", DINHEIRO);
    const int coo = Contador(COUNTER_COO);
    EstornaMeioPagamento(DINHEIRO, CHEQUE, "10.00");
    EXPECT_EQ(registro.Cupom_GetCOO(), coo);
    EXPECT_EQ(Contador(COUNTER_COO), coo + 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Meio(CHEQUE), "10.00");
    EstornaMeioPagamento(CHEQUE, DINHEIRO, "1.00");
    EXPECT_EQ(Meio(CHEQUE), "9.00");
}

TEST_F(RegistroPagamentos, ReversalTakesFromSeveralPaymentsOfTheMeans)
{
    AbreCupom();
    VendeItem("10.00");
    EfetuaPagamento(DINHEIRO, "3.00");
    EfetuaPagamento(DINHEIRO, "7.00");
    FechaCupom();
    EstornaMeioPagamento(DINHEIRO, CARTAO, "5.00");
    EXPECT_EQ(Meio(DINHEIRO), "5.00");
    EXPECT_EQ(Meio(CARTAO), "5.00");
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CARTAO, Money("5.01"), Now())),
              "only 5.00 of the receipt COO 1 can be moved from Meio de Pagamento 1");
}

TEST_F(RegistroPagamentos, ReversalLeavesTheChangeCovered)
{
    AbreCupom();
    VendeItem("7.00");
    EfetuaPagamento(DINHEIRO, "10.00");
    FechaCupom();
    EXPECT_EQ(
        Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CARTAO, Money("7.01"), Now())),
        "the change of 3.00 was given out of the means that give change: they must keep as much");
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Money("7.01"), Now())),
              "");
    EstornaMeioPagamento(DINHEIRO, CARTAO, "7.00");
    EXPECT_EQ(Meio(DINHEIRO), "3.00");
    EXPECT_EQ(Troco(), "3.00");
}

TEST_F(RegistroPagamentos, ReversalThatMovesNothingIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Money("1.00"), Now())),
              "no receipt was issued");
    EmiteCupom("10.00", DINHEIRO);
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, DINHEIRO, Money("1.00"), Now())),
              "a payment is moved from one Meio de Pagamento to another");
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(CHEQUE, DINHEIRO, Money("1.00"), Now())),
              "only 0.00 of the receipt COO 1 can be moved from Meio de Pagamento 3");
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, 9, Money("1.00"), Now())),
              "Meio de Pagamento 9 is not programmed");
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Money("0.00"), Now())),
              "the amount must be above zero");
    CancelaCupom();
    EXPECT_EQ(Reason(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Money("1.00"), Now())),
              "the last receipt, COO 1, is cancelled");
}

} // namespace
} // namespace bancada
