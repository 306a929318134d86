// The clock set back in an intervention, and what is then no fault.
#include "bancada/conferencia/Acertos.h"

#include "bancada/caixa/Caixa.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Days that a register logged, on a tape: a day's receipt, then what `then` says.
class CheckedRelogio : public CheckedDatabase
{
  protected:
    void RunTape(const std::vector<std::string>& then)
    {
        std::string tape =
            R"({"cmd":"insere_aliquota","em":"2026-03-02 08:00:00","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"leitura_x","em":"2026-03-02 08:10:00"}
)" + Receipt("2026-03-02 17:30:00");
        for (const std::string& lines : then) {
            tape += lines + "\n";
        }
        TapeReader reader(folder.Write("tape", tape));
        LogDatabase::Options options;
        Caixa caixa(folder.File("registro2.db"), options);
        TapeClock clock;
        TapeCommand line;
        while (reader.Next(line)) {
            ASSERT_NE(caixa.Run(line, clock).fate, Answer::Fate::REFUSED) << line.place.line;
        }
    }

    static std::string Receipt(const std::string& em)
    {
        return R"({"cmd":"abre_cupom","em":")" + em + R"("}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"1","valor_unitario":"10.00","tributacao":"T","indice":1}
{"cmd":"efetua_pagamento","meio":1,"valor":"10.00"}
{"cmd":"fecha_cupom"}
)";
    }

    // What check finds of the tape's database, faults and notes.
    std::vector<std::string> Findings()
    {
        std::vector<std::string> found;
        const leitura::DatabaseReading database(folder.File("registro2.db"));
        conferencia::CheckDatabase(
            database, nullptr, [&found](const conferencia::Finding& finding) {
                found.push_back(std::string(conferencia::InfoOf(finding.kind).name) + ": " +
                                finding.key);
            });
        return found;
    }
};

TEST_F(CheckedRelogio, AZBeforeItsReceiptsIsInOrderWhereTheClockWasSet)
{
    RunTape({R"({"cmd":"entrada_mit_interno","em":"2026-03-02 18:00:00"})",
             R"({"cmd":"reimprime_mfd","em":"2026-03-02 18:00:10","coo_inicial":1,"coo_final":2})",
             R"({"cmd":"acerta_relogio","em":"2026-03-02 06:00:00"})",
             R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":2})",
             R"({"cmd":"saida_mit_interno"})", R"({"cmd":"reducao_z"})",
             R"({"cmd":"leitura_x","em":"2026-03-03 08:00:00"})", Receipt("2026-03-03 08:10:00"),
             R"({"cmd":"reducao_z","em":"2026-03-03 18:00:00"})"});
    EXPECT_THAT(Findings(), ElementsAre("relogio-atrasado: COO 5"));
}

TEST_F(CheckedRelogio, ReceiptsBehindTheSettingAreInOrderToo)
{
    RunTape({R"({"cmd":"entrada_mil_interno","em":"2026-03-02 18:00:00"})",
             R"({"cmd":"acerta_relogio","em":"2026-03-02 07:00:00"})",
             R"({"cmd":"saida_mil_interno"})", Receipt("2026-03-02 07:30:00"),
             R"({"cmd":"reducao_z","em":"2026-03-02 09:00:00"})"});
    EXPECT_THAT(Findings(), ElementsAre("relogio-atrasado: COO 4"));
}

TEST_F(CheckedRelogio, AClockSetForwardIsNothingToTell)
{
    RunTape({R"({"cmd":"entrada_mil_interno","em":"2026-03-02 18:00:00"})",
             R"({"cmd":"acerta_relogio","em":"2026-03-02 19:00:00"})",
             R"({"cmd":"saida_mil_interno"})", R"({"cmd":"reducao_z"})"});
    EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CheckedRelogio, ASettingStandsBetweenWhatCameBeforeItAndItself)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE outros_documentos SET data_hora_inicio_emissao = '2024-03-01 07:59:59'"
            " WHERE cont_coo = 2");
    const leitura::DatabaseReading database(Path());
    const conferencia::Acertos acertos(database, conferencia::RepeatedCoos(database));
    EXPECT_TRUE(acertos.HasBetween(1, 2));
    EXPECT_TRUE(acertos.HasBetween(1, 3));
    EXPECT_FALSE(acertos.HasBetween(2, 3));
    EXPECT_FALSE(acertos.HasBetween(3, 4));
}

TEST_F(CheckedRelogio, WithoutAnInterventionTheClockWasNotSet)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE outros_documentos SET data_hora_inicio_emissao = '2024-03-01 07:59:59'"
            " WHERE cont_coo = 2");
    const auto count = [this] {
        const leitura::DatabaseReading database(Path());
        return conferencia::Acertos(database, conferencia::RepeatedCoos(database)).All().size();
    };
    EXPECT_EQ(count(), 1U);
    Execute("DELETE FROM intervencao");
    EXPECT_EQ(count(), 0U);
}

} // namespace
} // namespace bancada::conferencia_test
