// Receipts whose records can mean several things, and the day's totals that tell which.
#include "bancada/arquivo/DiasLidos.h"

#include "bancada/arquivo/Importador.h"
#include "tests/bancada/arquivo/Identificacao.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace bancada::arquivo
{
namespace
{

using arquivo_test::E01;

const std::string COMMON = "SERIE7                                   01"; // and the owner

std::string N(std::int64_t value, std::size_t width)
{
    const std::string digits = std::to_string(value);
    return std::string(width - digits.size(), '0') + digits;
}

std::string E12(int crz, int coo)
{
    return "E12" + COMMON + N(crz, 6) + N(coo, 6) + "0000012024030120240301230000" + N(0, 14) +
           " \n";
}

std::string E13(int crz, const std::string& totalizador, std::int64_t valor)
{
    return "E13" + COMMON + N(crz, 6) + totalizador + std::string(7 - totalizador.size(), ' ') +
           N(valor, 13) + "\n";
}

// Without totals, as one that is additional or was cancelled in issue.
std::string E14(int number, std::int64_t desconto, std::int64_t acrescimo, char cancelado)
{
    return "E14" + COMMON + N(number, 6) + N(number, 6) + "20240301" + N(0, 14) + N(desconto, 13) +
           "V" + N(acrescimo, 13) + "V" + N(0, 14) + cancelado + N(0, 13) + " " +
           std::string(40, ' ') + N(0, 14) + "\n";
}

std::string E15(int number, int item, std::int64_t bruto, std::int64_t acrescimo,
                const std::string& totalizador, char cancelado)
{
    return "E15" + COMMON + N(number, 6) + N(number, 6) + N(item, 3) + "C             " + "D" +
           std::string(99, ' ') + N(1, 7) + "UN " + N(bruto, 8) + N(0, 8) + N(acrescimo, 8) +
           N(bruto + acrescimo, 14) + totalizador + std::string(7 - totalizador.size(), ' ') +
           cancelado + N(0, 7) + N(0, 13) + N(0, 13) + "T02\n";
}

std::string E21(int number, std::int64_t valor)
{
    return "E21" + COMMON + N(number, 6) + N(number, 6) + N(0, 6) + "DINHEIRO       " +
           N(valor, 13) + "N" + N(0, 13) + "\n";
}

class DiasLidosTest : public testing::Test
{
  protected:
    // The receipt at a place of the file's documents.
    CupomLido Read(const std::string& content, std::size_t at)
    {
        folder.Write("f", E01 + content);
        std::ostringstream tape;
        Importador importing(folder.File("f"), tape);
        FindProgramacao(importing);
        return importing.dias.Read(at);
    }

    test_support::TempFolder folder;
};

// 0.99 and 21.09 with a surcharge of 0.04 on both: the 0.09 on the second may be its own, or 0.05
// and the share.
std::string Adicional(const std::string& totals)
{
    return E12(1, 3) + totals + E14(2, 0, 4, 'N') + E15(2, 1, 99, 0, "01T0700", 'N') +
           E15(2, 2, 2100, 9, "NS3", 'N') + E21(2, 90000);
}

TEST_F(DiasLidosTest, TheSurchargesTellWhetherAnAdditionalReceiptWasShared)
{
    const CupomLido own = Read(Adicional(E13(1, "AS", 13)), 0);
    EXPECT_TRUE(own.adicional);
    EXPECT_FALSE(own.rateado);
    EXPECT_EQ(own.itens[1].acrescimo, 9);
    EXPECT_FALSE(own.duvidoso);

    const CupomLido shared = Read(Adicional(E13(1, "AS", 9)), 0);
    EXPECT_TRUE(shared.adicional);
    EXPECT_TRUE(shared.rateado);
    EXPECT_EQ(shared.itens[1].acrescimo, 5);
    EXPECT_FALSE(shared.duvidoso);
}

TEST_F(DiasLidosTest, WhatTheTotalsDoNotTellIsDoubtful)
{
    EXPECT_TRUE(Read(Adicional(E13(1, "AS", 1000)), 0).duvidoso) << "totals that nothing comes to";
    EXPECT_TRUE(Read(Adicional(""), 0).duvidoso) << "none";
}

// 10.00 of ICMS and 10.00 of ISSQN, 1.00 off both, cancelled in issue.
std::string EmEmissao(int number)
{
    return E15(number, 1, 1000, 0, "01T0700", 'S') + E15(number, 2, 1000, 0, "NS3", 'S');
}

TEST_F(DiasLidosTest, TheDiscountsTellWhichItemsWereCancelledBeforeTheirReceipt)
{
    const auto with = [](const std::string& totals) {
        return E12(1, 3) + totals + E14(2, 100, 0, 'S') + EmEmissao(2);
    };
    const CupomLido both = Read(
        with(E13(1, "DT", 50) + E13(1, "DS", 50) + E13(1, "Can-T", 950) + E13(1, "Can-S", 950)), 0);
    EXPECT_FALSE(both.itens[0].cancelado);
    EXPECT_FALSE(both.itens[1].cancelado);
    EXPECT_FALSE(both.duvidoso);
    const CupomLido icms =
        Read(with(E13(1, "DT", 100) + E13(1, "Can-T", 900) + E13(1, "Can-S", 1000)), 0);
    EXPECT_FALSE(icms.itens[0].cancelado);
    EXPECT_TRUE(icms.itens[1].cancelado);
    const CupomLido issqn =
        Read(with(E13(1, "DS", 100) + E13(1, "Can-T", 1000) + E13(1, "Can-S", 900)), 0);
    EXPECT_TRUE(issqn.itens[0].cancelado);
    EXPECT_FALSE(issqn.itens[1].cancelado);
}

// 0.15, 0.13, 1.83 and 305.03 with a surcharge of 4.81 by percentage: no hundredth of a percent of
// all comes to it, 1.57 % of all but the first does; the day's totals are the same with both.
TEST_F(DiasLidosTest, APercentageTellsWhichItemsItWasOf)
{
    std::string receipt = E14(2, 0, 481, 'S');
    receipt[107] = 'P';
    const CupomLido cupom =
        Read(E12(1, 3) + E13(1, "AS", 481) + E13(1, "Can-T", 28) + E13(1, "Can-S", 31167) +
                 receipt + E15(2, 1, 15, 0, "01T1800", 'S') + E15(2, 2, 13, 0, "01T1800", 'S') +
                 E15(2, 3, 183, 0, "01S0200", 'S') + E15(2, 4, 30503, 0, "NS3", 'S'),
             0);
    EXPECT_EQ(cupom.Due() - 481, 30699);
    EXPECT_TRUE(cupom.itens[0].cancelado);
    EXPECT_FALSE(cupom.duvidoso);
}

TEST_F(DiasLidosTest, ReceiptsOfOneDayAreDecidedTogetherAndThoseOfAnotherApart)
{
    // On the first day one of both items and one of ISSQN alone, on the second both items.
    const std::string file = E12(1, 3) + E12(2, 5) + E13(1, "DT", 50) + E13(1, "DS", 150) +
                             E13(1, "Can-T", 1950) + E13(1, "Can-S", 1850) + E13(2, "DT", 50) +
                             E13(2, "DS", 50) + E13(2, "Can-T", 950) + E13(2, "Can-S", 950) +
                             E14(1, 100, 0, 'S') + E14(2, 100, 0, 'S') + E14(4, 100, 0, 'S') +
                             EmEmissao(1) + EmEmissao(2) + EmEmissao(4);
    EXPECT_FALSE(Read(file, 0).itens[0].cancelado) << "the likelier of the first one";
    EXPECT_TRUE(Read(file, 1).itens[0].cancelado);
    EXPECT_FALSE(Read(file, 1).itens[1].cancelado);
    EXPECT_FALSE(Read(file, 3).itens[0].cancelado);
    EXPECT_FALSE(Read(file, 3).itens[1].cancelado);
    EXPECT_FALSE(Read(file, 3).duvidoso);
}

} // namespace
} // namespace bancada::arquivo
