// ecf-bancada generate: the same tape for the same seed, and a tape that the register runs to its
// end into a database that checks clean.
#include "bancada/cli/Subcommands.h"
#include "bancada/gerador/GeneratedCupom.h"
#include "bancada/gerador/Generator.h"
#include "bancada/gerador/LineWriter.h"
#include "bancada/gerador/Mercadorias.h"
#include "tests/bancada/check_Banco.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <set>
#include <sstream>

namespace bancada
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string Fita(int dias, int cupons, std::uint64_t semente)
{
    std::ostringstream fita;
    GenerateTape({dias, cupons, semente}, fita);
    return fita.str();
}

// FNV-1a: enough to notice that a byte changed.
std::uint64_t Impressao(const std::string& bytes)
{
    std::uint64_t impressao = 14695981039346656037U;
    for (const char c : bytes) {
        impressao = (impressao ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return impressao;
}

TEST(Gerador, TheSameSeedGivesTheSameBytesEverywhere)
{
    const std::string fita = Fita(3, 100, 7);
    EXPECT_EQ(fita.size(), 383163U);
    EXPECT_EQ(Impressao(fita), 4992357292774030287U);
    EXPECT_EQ(Fita(3, 100, 7), fita);
}

TEST(Gerador, TheFirstReceiptOfSeedSeven)
{
    EXPECT_THAT(Fita(1, 100, 7), HasSubstr(R"(
{"cmd":"sangria","operacao":"fundo_troco","valor":"150.00"}
{"cmd":"abre_cupom","em":"2024-01-01 06:28:32"}
{"cmd":"vende_item","codigo":"109","descricao":"LARANJA PERA","quantidade":"1.334","unidade":"KG","valor_unitario":"4.29","tributacao":"I","indice":1,"arredonda":true}
)"));
}

TEST(Gerador, AnotherSeedGivesAnotherTape)
{
    std::set<std::uint64_t> impressoes;
    for (std::uint64_t semente = 1; semente <= 20; ++semente) {
        impressoes.insert(Impressao(Fita(1, 10, semente)));
    }
    EXPECT_EQ(impressoes.size(), 20U);
}

TEST(Gerador, TheFirstDaysDoNotDependOnHowManyFollow)
{
    EXPECT_THAT(Fita(4, 20, 5), StartsWith(Fita(2, 20, 5)));
}

TEST(Gerador, AStreamThatFailsEndsTheTape)
{
    std::ostringstream fita;
    fita.setstate(std::ios::badbit);
    GenerateTape({MAX_JORNADAS, MAX_CUPONS_POR_JORNADA, 1}, fita);
    EXPECT_THAT(fita.str(), IsEmpty());
}

TEST(Draw, DrawsAreThoseOfTheStandardEngine)
{
    // The standard fixes the 10,000th draw of std::mt19937_64 with its default seed.
    Draw sorteio(5489);
    for (int i = 1; i < 10000; ++i) {
        sorteio.Ate(1000000000);
    }
    EXPECT_EQ(sorteio.Ate(1000000000), 9981545732273789042U % 1000000000);
}

TEST(Draw, BoundsAreReachedAndKept)
{
    Draw sorteio(1);
    std::set<std::int64_t> vistos;
    for (int i = 0; i < 1000; ++i) {
        vistos.insert(sorteio.Entre(-2, 2));
    }
    EXPECT_EQ(vistos, (std::set<std::int64_t>{-2, -1, 0, 1, 2}));
    EXPECT_EQ(sorteio.Ate(1), 0U);
    EXPECT_TRUE(sorteio.PorMil(1000));
    EXPECT_FALSE(sorteio.PorMil(0));
}

TEST(Draw, AWeightOfZeroIsNeverDrawn)
{
    Draw sorteio(1);
    std::size_t vezes[3] = {0, 0, 0};
    for (int i = 0; i < 3000; ++i) {
        ++vezes[sorteio.Pesado({1, 0, 2})];
    }
    EXPECT_EQ(vezes[1], 0U);
    EXPECT_GT(vezes[0], 800U);
    EXPECT_GT(vezes[2], 1800U);
}

TEST(Mercadorias, BarCodesHaveTheirCheckDigit)
{
    EXPECT_EQ(CodigoDeBarras("400638133393"), "4006381333931");
    EXPECT_EQ(CodigoDeBarras("789600010060"), "7896000100603");
    EXPECT_EQ(CodigoDeBarras("101"), "101");
}

TEST(GeneratedCupom, TotalsAsTheRegisterMakesThem)
{
    GeneratedCupom compra;
    EXPECT_EQ(compra.Vende(1375, 3, 3990, false), 1); // 5.48625
    EXPECT_EQ(compra.Vende(1375, 3, 3990, true), 2);
    EXPECT_EQ(compra.Vende(2, 0, 12495, true), 3); // 24.990
    EXPECT_EQ(compra.Item(1).bruto, 548);
    EXPECT_EQ(compra.Item(2).bruto, 549);
    EXPECT_EQ(compra.Item(3).bruto, 2499);
    compra.Ajusta(3, true, 99);
    compra.Ajusta(1, false, 2);
    compra.Cancela(2);
    EXPECT_EQ(compra.Subtotal(), 2950);
    compra.AjustaSubtotal(true, GeneratedCupom::Percentual(2950, 150));
    EXPECT_EQ(compra.Total(), 2906);
    compra.CancelaAjusteSubtotal();
    compra.CancelaAjuste(3, true);
    EXPECT_EQ(compra.Total(), 3049);
    EXPECT_EQ(compra.Vivos(), 2);
}

TEST(LineWriter, FieldsAsTheTapeHasThem)
{
    std::ostringstream saida;
    {
        LineWriter linha(saida, "x");
        linha
            .Em(1709164799) // the last second of 28 February of a leap year
            .Em(1709251199)
            .Em(951868800) // 2000-03-01
            .Dinheiro("a", 5)
            .Dinheiro("b", 123456)
            .Decimal("c", 12, 0)
            .Decimal("d", 80, 3)
            .Sim("e")
            .Numero("f", 1234567);
    }
    EXPECT_EQ(saida.str(),
              R"({"cmd":"x","em":"2024-02-28 23:59:59","em":"2024-02-29 23:59:59",)"
              R"("em":"2000-03-01 00:00:00","a":"0.05","b":"1234.56","c":"12","d":"0.080",)"
              R"("e":true,"f":1234567})"
              "\n");
}

class ComandoGenerate : public testing::TestWithParam<std::uint64_t>
{
  protected:
    ComandoGenerate()
    {
        m_pasta = testing::TempDir() + "generate_XXXXXX";
        EXPECT_NE(mkdtemp(m_pasta.data()), nullptr);
    }
    ~ComandoGenerate() override { std::filesystem::remove_all(m_pasta); }

    // Runs a subcommand; answers its exit code. Its output goes to m_saida.
    int Execute(std::vector<std::string> argumentos)
    {
        int codigo = EXIT_OK;
        CLI::App app;
        AddRun(app, codigo);
        AddCheck(app, codigo);
        AddGenerate(app, codigo);
        std::reverse(argumentos.begin(), argumentos.end());
        testing::internal::CaptureStdout();
        try {
            app.parse(argumentos);
        } catch (const CLI::ParseError&) {
            codigo = EXIT_UNUSABLE;
        }
        std::cout.flush();
        m_saida = testing::internal::GetCapturedStdout();
        return codigo;
    }

    std::string m_pasta, m_saida;
};

TEST_P(ComandoGenerate, TheTapeRunsToItsEndAndChecksClean)
{
    ASSERT_EQ(Execute({"generate", "--days", "3", "--receipts", "25", "--seed",
                       std::to_string(GetParam())}),
              0);
    const std::string fita = m_pasta + "/fita.jsonl";
    std::ofstream(fita) << m_saida;
    // --strict: not one refusal, not one rejected statement.
    ASSERT_EQ(
        Execute({"run", fita, "--db", m_pasta + "/db", "--log", m_pasta + "/log", "--strict"}), 0)
        << m_saida;
    EXPECT_EQ(Execute({"check", m_pasta + "/db", "--log", m_pasta + "/log"}), 0) << m_saida;
    EXPECT_THAT(m_saida, HasSubstr("75 fiscal receipts, "));
    EXPECT_THAT(m_saida, HasSubstr(" 3 Z reductions: 0 findings, "));
}

INSTANTIATE_TEST_SUITE_P(Seed, ComandoGenerate, testing::Values(0, 1, 18446744073709551615U));

TEST_F(ComandoGenerate, OptionsOutOfTheirRange)
{
    EXPECT_EQ(Execute({"generate", "--days", "0", "--receipts", "5", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "20001", "--receipts", "5", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "4001", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "-1", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "5", "--seed", "x"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "5"}), 2);
    EXPECT_THAT(m_saida, IsEmpty());
}

} // namespace
} // namespace bancada
