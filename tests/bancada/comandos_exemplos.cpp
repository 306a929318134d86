// The example tapes, run to their end.
#include "bancada/cli/Configura.h"
#include "bancada/fita/TapeClock.h"
#include "bancada/fita/TapeFields.h"
#include "bancada/fita/TapeReader.h"
#include "tests/bancada/ComandosTest.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <sstream>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;

// What became of a tape.
struct Saldo {
    std::vector<std::string> recusados;  // "line: command: why"
    std::vector<std::string> rejeitados; // the commands that had a statement rejected
    std::map<std::string, int> comandos; // executed, by name
    std::map<std::string, std::set<std::string>> tabelas; // changed, by command
};

// The tables that a command's entry names.
std::set<std::string> Tabelas(const bancada::CatalogueEntry& item)
{
    std::set<std::string> tabelas;
    std::istringstream lista(item.tables);
    for (std::string tabela; std::getline(lista >> std::ws, tabela, ',');) {
        tabelas.insert(tabela);
    }
    return tabelas;
}

class Exemplos : public ComandosTest
{
  protected:
    Saldo Execute(const std::string& nome)
    {
        bancada::TapeReader fita(ECF_SOURCE_DIR "/examples/" + nome);
        bancada::TapeClock relogio;
        bancada::TapeCommand linha;
        Saldo saldo;
        while (fita.Next(linha)) {
            if (linha.name == bancada::CONFIGURA) {
                bancada::ExecutaConfigura(linha, registro);
            } else {
                Execute(linha, relogio.Next(linha), saldo);
            }
        }
        return saldo;
    }

    // One value of the database.
    std::string Valor(const std::string& sql) { return Linhas(sql).at(0); }

    // Rows of a table so far.
    std::int64_t Escritas(const std::string& tabela) const
    {
        return banco.Counts().rows.at(tabela).inserted;
    }

  private:
    void Execute(const bancada::TapeCommand& linha, RtcAbsoluteTime em, Saldo& saldo)
    {
        const bancada::CatalogueEntry* item = bancada::FindComando(linha.name);
        ASSERT_NE(item, nullptr) << linha.name;
        const auto comando = item->make(registro);
        bancada::TapeFields campos(linha);
        comando->Fields(campos);
        campos.Finish();

        const bancada::LogDatabaseCounts antes = banco.Counts();
        const bancada::Outcome resultado = executor.Execute(*comando, em);
        EXPECT_TRUE(resultado.kept) << linha.place.line;
        if (!resultado.executed) {
            saldo.recusados.push_back(std::to_string(linha.place.line) + ": " + linha.name + ": " +
                                      resultado.refusal.value_or(""));
            return;
        }
        ++saldo.comandos[linha.name];
        if (banco.Counts().statementsRejected != antes.statementsRejected) {
            saldo.rejeitados.push_back(linha.name);
        }
        for (const auto& [tabela, linhas] : banco.Counts().rows) {
            const auto& anteriores = antes.rows.at(tabela);
            if (linhas.inserted != anteriores.inserted || linhas.updated != anteriores.updated) {
                saldo.tabelas[linha.name].insert(tabela);
            }
        }
    }
};

TEST_F(Exemplos, GrocersDayLosesOnlyWhatIsRequired)
{
    const Saldo saldo = Execute("mercearia.jsonl");
    EXPECT_THAT(saldo.recusados, IsEmpty());
    EXPECT_THAT(saldo.rejeitados,
                ElementsAre("programa_moeda", "vende_item_detalhado", "abre_cupom", "fecha_cupom"));
    EXPECT_EQ(saldo.comandos.at("abre_cupom"), 49);
    EXPECT_EQ(Escritas("cupom_fiscal"), 48); // one row lost to an apostrophe
    EXPECT_EQ(Linhas("SELECT cont_coo FROM cupom_fiscal WHERE id_cancelado = 'S'").size(), 2u);
    EXPECT_EQ(Linhas("SELECT cont_coo FROM cupom_nf WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_EQ(Linhas("SELECT seq_item FROM item_cupom_fiscal WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_THAT(Linhas("SELECT descricao FROM item_cupom_fiscal WHERE un_medida = 'UN' AND "
                       "cod_item = '7896000101501'"),
                ElementsAre("GALAO D`AGUA 20L"));
    EXPECT_EQ(Escritas("reducao_z"), 1);
    EXPECT_EQ(
        Linhas("SELECT cont_coo FROM outros_documentos WHERE id_tipo_documento = 'RZ'").size(), 1u);
}

TEST_F(Exemplos, ServiceShopClosesThreeDaysWithGaps)
{
    const Saldo saldo = Execute("oficina.jsonl");
    EXPECT_THAT(saldo.recusados, IsEmpty());
    EXPECT_THAT(saldo.rejeitados, IsEmpty());
    EXPECT_EQ(saldo.comandos.at("abre_cupom"), 18);
    EXPECT_THAT(
        Linhas("SELECT cont_crz, data_movimento FROM reducao_z"),
        ElementsAre("1|2024-04-01 00:00:00", "2|2024-04-02 00:00:00", "3|2024-04-03 00:00:00"));
    const auto totalizadores = [&](const char* crz) {
        return Linhas(std::string("SELECT totalizador FROM totalizador_reducao WHERE id_fiscal = "
                                  "'S' AND cont_crz = ") +
                      crz);
    };
    EXPECT_THAT(totalizadores("1"),
                ElementsAre("02T18.00", "07T12.00", "01S05.00", "04S02.50", "30S03.00", "F3", "IS1",
                            "FS2", "NS3", "DT", "DS", "AT", "AS", "Can-T", "Can-S"));
    EXPECT_THAT(totalizadores("3"),
                ElementsAre("02T18.00", "07T12.00", "12T07.00", "01S05.00", "04S02.50", "30S03.00",
                            "F3", "IS1", "NS3", "DT", "DS", "AT", "AS", "Can-T", "Can-S"));
    EXPECT_THAT(Linhas("SELECT indice_meio_pagamento FROM meio_pagamento_reducao WHERE cont_crz = "
                       "3"),
                ElementsAre("1", "4", "9", "15", "21"));
}

TEST_F(Exemplos, FirstWeekHasEveryKindOfEvent)
{
    const Saldo saldo = Execute("primeira_semana.jsonl");
    EXPECT_THAT(saldo.recusados, IsEmpty());
    EXPECT_THAT(saldo.rejeitados, ElementsAre("programa_moeda"));
    EXPECT_EQ(saldo.comandos.at("abre_cupom"), 31);
    EXPECT_EQ(Escritas("cupom_fiscal"), 31);
    EXPECT_EQ(Escritas("reducao_z"), 7);
    EXPECT_THAT(Linhas("SELECT cont_cro, id_tipo_intervencao FROM intervencao"),
                ElementsAre("0|T", "1|L"));
    EXPECT_THAT(Linhas("SELECT cont_cfd, coo_inicial, coo_final FROM fita_detalhe"),
                ElementsAre("1|3|6", "2|3|3"));
    EXPECT_EQ(Linhas("SELECT cont_coo FROM pagamento_cupom WHERE id_estornado = 'S'").size(), 1u);
    EXPECT_EQ(Linhas("SELECT cont_coo FROM cupom_fiscal WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_EQ(Valor("SELECT valor_vb FROM reducao_z WHERE cont_crz = 7"), "0");
}

TEST_F(Exemplos, CommandsWriteTheTablesThatTheCatalogueNames)
{
    std::set<std::string> alcancadas;
    std::set<std::string> nomeadas;
    for (const char* nome : {"mercearia.jsonl", "oficina.jsonl", "primeira_semana.jsonl"}) {
        registro = bancada::Registro();
        for (const auto& [comando, tabelas] : Execute(nome).tabelas) {
            EXPECT_THAT(tabelas, IsSubsetOf(Tabelas(*bancada::FindComando(comando))))
                << nome << ": " << comando;
            alcancadas.insert(tabelas.begin(), tabelas.end());
        }
    }
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        const std::set<std::string> tabelas = Tabelas(item);
        nomeadas.insert(tabelas.begin(), tabelas.end());
    }
    nomeadas.erase("moeda"); // its statement is always rejected
    EXPECT_EQ(alcancadas, nomeadas);
}

TEST_F(Exemplos, EveryCommandRunsInOneOfThem)
{
    std::set<std::string> executados;
    for (const char* nome : {"mercearia.jsonl", "oficina.jsonl", "primeira_semana.jsonl"}) {
        registro = bancada::Registro();
        for (const auto& [comando, vezes] : Execute(nome).comandos) {
            executados.insert(comando);
        }
    }
    EXPECT_EQ(executados.size(), bancada::Catalogue().size());
}

} // namespace
