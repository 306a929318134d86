// Payments, change, closing and the reversal of a payment.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroPagamentos : public RegistroTeste
{
};

TEST_F(RegistroPagamentos, ChangeIsWhatWasPaidBeyondTheTotal)
{
    AbreCupom();
    Vende("7.35");
    Paga(DINHEIRO, "10.00");
    EXPECT_EQ(Texto(registro.Cupom_GetTroco()), "2.65");
    FechaCupom();
    EXPECT_EQ(Texto(registro.Cupom_GetTroco()), "2.65");
    EXPECT_EQ(Meio(DINHEIRO), "10.00");
    EXPECT_EQ(Troco(), "2.65");
}

TEST_F(RegistroPagamentos, AreBookedWhenTheReceiptIsClosed)
{
    AbreCupom();
    Vende("10.00");
    Paga(CARTAO, "4.00");
    Paga(DINHEIRO, "6.00");
    EXPECT_EQ(Meio(CARTAO), "0.00");
    FechaCupom();
    EXPECT_EQ(Meio(CARTAO), "4.00");
    EXPECT_EQ(Meio(DINHEIRO), "6.00");
    EXPECT_EQ(Troco(), "0.00");
}

TEST_F(RegistroPagamentos, AMeansWithVoucherGivesNoChange)
{
    AbreCupom();
    Vende("10.00");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(CARTAO, Dinheiro("10.01"), Agora())),
              "Meio de Pagamento 2 gives no change: only 10.00 is due");
    Paga(DINHEIRO, "4.00");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(CARTAO, Dinheiro("6.01"), Agora())),
              "Meio de Pagamento 2 gives no change: only 6.00 is due");
    Paga(CARTAO, "6.00");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("0.01"), Agora())),
              "the receipt is already paid");
}

TEST_F(RegistroPagamentos, WhatCannotBePaidIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("1.00"), Agora())),
              "no receipt is open");
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("1.00"), Agora())),
              "the receipt has no item");
    Vende("10.00");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(4, Dinheiro("1.00"), Agora())),
              "Meio de Pagamento 4 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(0, Dinheiro("1.00"), Agora())),
              "Meio de Pagamento 0 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(21, Dinheiro("1.00"), Agora())),
              "Meio de Pagamento 21 is not programmed");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("0.00"), Agora())),
              "the payment must be above zero");
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("1.005"), Agora())),
              "the payment has more than two decimals");
    EXPECT_EQ(
        Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("1000000000000.00"), Agora())),
        "the payment is more than the register takes (999999999999.99)");
}

TEST_F(RegistroPagamentos, TheThirtyFirstIsRefused)
{
    AbreCupom();
    Vende("10.00");
    for (int i = 0; i < 30; ++i) {
        Paga(DINHEIRO, "0.01");
    }
    EXPECT_EQ(Motivo(registro.CheckEfetuaPagamento(DINHEIRO, Dinheiro("9.70"), Agora())),
              "the receipt already has 30 payments");
}

TEST_F(RegistroPagamentos, ClosingBeforePaidIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckFechaCupom("", Agora())), "no Cupom Fiscal is open");
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckFechaCupom("", Agora())),
              "the receipt has no item: cancel it instead");
    Vende("10.00");
    Paga(DINHEIRO, "9.99");
    EXPECT_EQ(Motivo(registro.CheckFechaCupom("", Agora())), "0.01 is still to be paid");
    EXPECT_EQ(Motivo(registro.CheckFechaCNF(Agora())), "no Comprovante Não Fiscal is open");
}

TEST_F(RegistroPagamentos, ReversalOnTheOpenReceiptIsNoDocument)
{
    AbreCupom();
    Vende("10.00");
    Paga(DINHEIRO, "10.00");
    const int coo = Contador(COUNTER_COO);
    Estorna(DINHEIRO, CARTAO, "4.00");
    FechaCupom();
    EXPECT_EQ(Contador(COUNTER_COO), coo);
    EXPECT_EQ(Contador(COUNTER_GNF), 0);
    EXPECT_EQ(Meio(DINHEIRO), "6.00");
    EXPECT_EQ(Meio(CARTAO), "4.00");
}

TEST_F(RegistroPagamentos, ReversalOnTheIssuedReceiptIsADocumentAndMovesTheMeans)
{
    Cupom1("10.00", DINHEIRO);
    const int coo = Contador(COUNTER_COO);
    Estorna(DINHEIRO, CHEQUE, "10.00");
    EXPECT_EQ(registro.Cupom_GetCOO(), coo);
    EXPECT_EQ(Contador(COUNTER_COO), coo + 1);
    EXPECT_EQ(Contador(COUNTER_GNF), 1);
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Meio(CHEQUE), "10.00");
    Estorna(CHEQUE, DINHEIRO, "1.00");
    EXPECT_EQ(Meio(CHEQUE), "9.00");
}

TEST_F(RegistroPagamentos, ReversalTakesFromSeveralPaymentsOfTheMeans)
{
    AbreCupom();
    Vende("10.00");
    Paga(DINHEIRO, "3.00");
    Paga(DINHEIRO, "7.00");
    FechaCupom();
    Estorna(DINHEIRO, CARTAO, "5.00");
    EXPECT_EQ(Meio(DINHEIRO), "5.00");
    EXPECT_EQ(Meio(CARTAO), "5.00");
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CARTAO, Dinheiro("5.01"), Agora())),
        "only 5.00 of the receipt COO 1 can be moved from Meio de Pagamento 1");
}

TEST_F(RegistroPagamentos, ReversalLeavesTheChangeCovered)
{
    AbreCupom();
    Vende("7.00");
    Paga(DINHEIRO, "10.00");
    FechaCupom();
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CARTAO, Dinheiro("7.01"), Agora())),
        "the change of 3.00 was given out of the means that give change: they must keep as much");
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Dinheiro("7.01"), Agora())),
        "");
    Estorna(DINHEIRO, CARTAO, "7.00");
    EXPECT_EQ(Meio(DINHEIRO), "3.00");
    EXPECT_EQ(Troco(), "3.00");
}

TEST_F(RegistroPagamentos, ReversalThatMovesNothingIsRefused)
{
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Dinheiro("1.00"), Agora())),
        "no receipt was issued");
    Cupom1("10.00", DINHEIRO);
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, DINHEIRO, Dinheiro("1.00"), Agora())),
        "a payment is moved from one Meio de Pagamento to another");
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(CHEQUE, DINHEIRO, Dinheiro("1.00"), Agora())),
        "only 0.00 of the receipt COO 1 can be moved from Meio de Pagamento 3");
    EXPECT_EQ(Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, 9, Dinheiro("1.00"), Agora())),
              "Meio de Pagamento 9 is not programmed");
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Dinheiro("0.00"), Agora())),
        "the amount must be above zero");
    CancelaCupom();
    EXPECT_EQ(
        Motivo(registro.CheckEstornaMeioPagamento(DINHEIRO, CHEQUE, Dinheiro("1.00"), Agora())),
        "the last receipt, COO 1, is cancelled");
}

} // namespace
} // namespace bancada
