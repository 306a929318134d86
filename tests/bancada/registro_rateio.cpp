// The apportionment of a subtotal's adjustment.
#include "bancada/registro/Rateio.h"
#include "tests/bancada/RegistroTeste.h"
#include "tests/libs/RandomSeed.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

std::vector<std::string> Partes(const char* ajuste, const std::vector<const char*>& liquidos)
{
    std::vector<Financial> valores;
    for (const char* liquido : liquidos) {
        valores.push_back(Dinheiro(liquido));
    }
    std::vector<std::string> textos;
    for (const Financial& parte : ApportionAjuste(Dinheiro(ajuste), valores)) {
        textos.push_back(Texto(parte));
    }
    return textos;
}

using Textos = std::vector<std::string>;

TEST(RegistroRateio, ExactProportionsStayExact)
{
    EXPECT_EQ(Partes("10.00", {"30.00", "60.00", "10.00"}), (Textos{"3.00", "6.00", "1.00"}));
}

TEST(RegistroRateio, TheCentLeftOverGoesToTheLargestRemainder)
{
    // 0.1666.., 0.3333.., 0.5
    EXPECT_EQ(Partes("1.00", {"10.00", "20.00", "30.00"}), (Textos{"0.17", "0.33", "0.50"}));
    // 0.3636.., 0.6363..
    EXPECT_EQ(Partes("0.01", {"4.00", "7.00"}), (Textos{"0.00", "0.01"}));
}

TEST(RegistroRateio, OfEqualRemaindersTheFirstGoesFirst)
{
    EXPECT_EQ(Partes("1.00", {"5.00", "5.00", "5.00"}), (Textos{"0.34", "0.33", "0.33"}));
    EXPECT_EQ(Partes("0.02", {"5.00", "5.00", "5.00"}), (Textos{"0.01", "0.01", "0.00"}));
}

TEST(RegistroRateio, ACancelledItemGetsNothing)
{
    EXPECT_EQ(Partes("1.00", {"5.00", "0.00", "5.00"}), (Textos{"0.50", "0.00", "0.50"}));
    EXPECT_EQ(Partes("0.01", {"0.00", "0.00", "0.01"}), (Textos{"0.00", "0.00", "0.01"}));
}

TEST(RegistroRateio, NoItemGoesBelowZero)
{
    EXPECT_EQ(Partes("0.99", {"0.01", "0.98", "0.01"}), (Textos{"0.01", "0.97", "0.01"}));
    EXPECT_EQ(Partes("10.00", {"0.01", "9.99"}), (Textos{"0.01", "9.99"}));
}

TEST(RegistroRateio, ASurchargeMayBeMoreThanTheReceipt)
{
    EXPECT_EQ(Partes("100.00", {"0.01", "0.02"}), (Textos{"33.33", "66.67"}));
}

TEST(RegistroRateio, TheLargestAmountsStayExact)
{
    EXPECT_EQ(Partes("999999999.99", {"999999999.99", "999999999.99", "0.01"}),
              (Textos{"499999999.99", "499999999.99", "0.01"}));
}

// The properties, over random receipts of up to 999 items.
TEST(RegistroRateio, PropertiesOverRandomReceipts)
{
    const std::uint32_t semente = RandomSeed();
    SCOPED_TRACE("seed " + std::to_string(semente));
    std::mt19937 sorteio(semente);
    const auto entre = [&sorteio](std::int64_t menor, std::int64_t maior) {
        return std::uniform_int_distribution<std::int64_t>(menor, maior)(sorteio);
    };
    const std::int64_t maiores[] = {1, 10, 999, 100000, 99999999};
    int comSobra = 0;
    for (int rodada = 0; rodada < 300; ++rodada) {
        const std::int64_t quantos = rodada % 10 == 0 ? 999 : entre(1, 60);
        const std::int64_t maior = maiores[entre(0, 4)];
        std::vector<std::int64_t> centavos;
        std::int64_t soma = 0;
        for (std::int64_t i = 0; i < quantos; ++i) {
            centavos.push_back(entre(0, 9) == 0 ? 0 : entre(1, maior));
            soma += centavos.back();
        }
        if (soma == 0) {
            continue;
        }
        const std::int64_t ajuste = entre(1, soma);
        std::vector<Financial> liquidos;
        for (const std::int64_t valor : centavos) {
            liquidos.push_back(Financial::FromCents(valor));
        }

        const std::vector<Financial> partes =
            ApportionAjuste(Financial::FromCents(ajuste), liquidos);

        ASSERT_EQ(partes.size(), liquidos.size());
        std::int64_t somaDasPartes = 0;
        bool sobrou = false;
        for (std::size_t i = 0; i < partes.size(); ++i) {
            const std::int64_t parte = partes[i].nr.ToInt64() / 100;
            ASSERT_EQ(Financial::FromCents(parte), partes[i]) << "a share is whole cents";
            ASSERT_GE(parte, 0);
            ASSERT_LE(parte, centavos[i]) << "an item would go below zero";
            if (centavos[i] == 0) {
                ASSERT_EQ(parte, 0);
            }
            // Less than a cent from the proportion: |parte x soma - ajuste x centavos| < soma.
            // 10^5 x 10^8 x 10^11 needs more than 64 bits.
            const BigInt desvio = BigInt::FromInt64(parte) * BigInt::FromInt64(soma) -
                                  BigInt::FromInt64(ajuste) * BigInt::FromInt64(centavos[i]);
            ASSERT_LT(desvio, BigInt::FromInt64(soma));
            ASSERT_GT(desvio, -BigInt::FromInt64(soma));
            sobrou = sobrou || desvio > BigInt(0);
            somaDasPartes += parte;
        }
        ASSERT_EQ(somaDasPartes, ajuste);
        comSobra += sobrou ? 1 : 0;
    }
    EXPECT_GT(comSobra, 50) << "the draws hardly ever leave a residue to place";
}

class RegistroRateioDoCupom : public RegistroTeste
{
  protected:
    std::unique_ptr<Cupom> copia = std::make_unique<Cupom>();
};

TEST_F(RegistroRateioDoCupom, FillsTheCopyWithItemsAndPayments)
{
    AbreCupom();
    Vende("10.00");
    Vende("20.00");
    Vende("30.00");
    AjustaItem(PorValor(ACRESCIMO, "1.00"), 1);
    AjustaItem(PorValor(DESCONTO, "5.00"), 2);
    CancelaItem(3);
    AjustaSubtotal(PorValor(DESCONTO, "2.60"));
    Paga(CARTAO, "3.40");
    Paga(DINHEIRO, "20.00");
    FechaCupom();

    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copia.get()), 1);
    ASSERT_EQ(copia->GetQuantidadeDeItens(), 3);
    EXPECT_EQ(Texto(copia->GetItemValorAcr(0)), "1.00");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(0)), "1.10");
    EXPECT_EQ(Texto(copia->GetItemValorTotal(0)), "9.90");
    EXPECT_EQ(Texto(copia->GetItemValorAcr(1)), "0.00");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(1)), "6.50");
    EXPECT_EQ(Texto(copia->GetItemValorTotal(1)), "13.50");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(2)), "0.00");
    EXPECT_EQ(Texto(copia->GetItemValorTotal(2)), "30.00");
    EXPECT_EQ(copia->m_Pagamentos[0].m_iMeioPagamento, 1);
    EXPECT_EQ(Texto(copia->m_Pagamentos[0].m_finValor), "3.40");
    EXPECT_EQ(Texto(copia->m_Pagamentos[1].m_finValor), "20.00");
}

TEST_F(RegistroRateioDoCupom, SurchargeGoesToTheItemsSurcharges)
{
    AbreCupom();
    Vende("10.00");
    Vende("30.00");
    AjustaSubtotal(PorValor(ACRESCIMO, "4.00"));
    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copia.get()), 1);
    EXPECT_EQ(Texto(copia->GetItemValorAcr(0)), "1.00");
    EXPECT_EQ(Texto(copia->GetItemValorAcr(1)), "3.00");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Texto(copia->GetItemValorTotal(1)), "33.00");
}

TEST_F(RegistroRateioDoCupom, WithoutAnyReceiptAnswersZero)
{
    EXPECT_EQ(registro.Cupom_GetRateioPorItem(copia.get()), 0);
}

TEST_F(RegistroRateioDoCupom, HoldsAFullReceipt)
{
    AbreCupom();
    for (int i = 0; i < 999; ++i) {
        Vende("1.00");
    }
    AjustaSubtotal(PorValor(DESCONTO, "10.00"));
    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copia.get()), 1);
    ASSERT_EQ(copia->GetQuantidadeDeItens(), 999);
    // 10.00 / 999 = 0.01001..: one cent each, and the cent left over to the first.
    EXPECT_EQ(Texto(copia->GetItemValorDesc(0)), "0.02");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(1)), "0.01");
    EXPECT_EQ(Texto(copia->GetItemValorDesc(998)), "0.01");
}

} // namespace
} // namespace bancada
