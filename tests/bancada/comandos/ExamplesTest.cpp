// The example tapes, run to their end.
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/bancada/comandos/ComandoTest.h"

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
struct Balance {
    std::vector<std::string> refused;    // "line: command: why"
    std::vector<std::string> rejected;   // the commands that had a statement rejected
    std::map<std::string, int> comandos; // executed, by name
    std::map<std::string, std::set<std::string>> tables; // changed, by command
};

// The tables that a command's entry names.
std::set<std::string> TablesOf(const bancada::CatalogueEntry& item)
{
    std::set<std::string> tables;
    std::istringstream list(item.tables);
    for (std::string table; std::getline(list >> std::ws, table, ',');) {
        tables.insert(table);
    }
    return tables;
}

class ComandoExamples : public ComandoTest
{
  protected:
    Balance Execute(const std::string& name)
    {
        bancada::TapeReader tape(ECF_SOURCE_DIR "/examples/" + name);
        bancada::TapeClock clock;
        bancada::TapeCommand line;
        Balance balance;
        while (tape.Next(line)) {
            Execute(line, clock, balance);
        }
        return balance;
    }

    // One value of the database.
    std::string Value(const std::string& sql) { return Rows(sql).at(0); }

    // Rows of a table so far.
    std::int64_t Inserted(const std::string& table) const
    {
        return database.Counts().rows.at(table).inserted;
    }

  private:
    void Execute(const bancada::TapeCommand& line, bancada::TapeClock& clock, Balance& balance)
    {
        const bancada::LogDatabaseCounts before = database.Counts();
        const bancada::Answer answer = caixa.Run(line, clock);
        EXPECT_NE(answer.fate, bancada::Answer::Fate::LOST) << line.place.line;
        if (answer.fate == bancada::Answer::Fate::REFUSED) {
            balance.refused.push_back(std::to_string(line.place.line) + ": " + line.name + ": " +
                                      answer.reason);
        }
        if (!answer.Executed()) {
            return;
        }
        ++balance.comandos[line.name];
        if (answer.rejected > 0) {
            balance.rejected.push_back(line.name);
        }
        for (const auto& [table, rows] : database.Counts().rows) {
            const auto& previous = before.rows.at(table);
            if (rows.inserted != previous.inserted || rows.updated != previous.updated) {
                balance.tables[line.name].insert(table);
            }
        }
    }
};

TEST_F(ComandoExamples, GrocersDayLosesOnlyWhatIsRequired)
{
    const Balance balance = Execute("mercearia.jsonl");
    EXPECT_THAT(balance.refused, IsEmpty());
    EXPECT_THAT(balance.rejected,
                ElementsAre("programa_moeda", "vende_item_detalhado", "abre_cupom", "fecha_cupom"));
    EXPECT_EQ(balance.comandos.at("abre_cupom"), 49);
    EXPECT_EQ(Inserted("cupom_fiscal"), 48); // one row lost to an apostrophe
    EXPECT_EQ(Rows("SELECT cont_coo FROM cupom_fiscal WHERE id_cancelado = 'S'").size(), 2u);
    EXPECT_EQ(Rows("SELECT cont_coo FROM cupom_nf WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_EQ(Rows("SELECT seq_item FROM item_cupom_fiscal WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_THAT(Rows("SELECT descricao FROM item_cupom_fiscal WHERE un_medida = 'UN' AND "
                     "cod_item = '7896000101501'"),
                ElementsAre("GALAO D`AGUA 20L"));
    EXPECT_EQ(Inserted("reducao_z"), 1);
    EXPECT_EQ(Rows("SELECT cont_coo FROM outros_documentos WHERE id_tipo_documento = 'RZ'").size(),
              1u);
}

TEST_F(ComandoExamples, ServiceShopClosesThreeDaysWithGaps)
{
    const Balance balance = Execute("oficina.jsonl");
    EXPECT_THAT(balance.refused, IsEmpty());
    EXPECT_THAT(balance.rejected, IsEmpty());
    EXPECT_EQ(balance.comandos.at("abre_cupom"), 18);
    EXPECT_THAT(
        Rows("SELECT cont_crz, data_movimento FROM reducao_z"),
        ElementsAre("1|2024-04-01 00:00:00", "2|2024-04-02 00:00:00", "3|2024-04-03 00:00:00"));
    const auto totalizadores = [&](const char* crz) {
        return Rows(std::string("SELECT totalizador FROM totalizador_reducao WHERE id_fiscal = "
                                "'S' AND cont_crz = ") +
                    crz);
    };
    EXPECT_THAT(totalizadores("1"),
                ElementsAre("02T18.00", "07T12.00", "01S05.00", "04S02.50", "30S03.00", "F3", "IS1",
                            "FS2", "NS3", "DT", "DS", "AT", "AS", "Can-T", "Can-S"));
    EXPECT_THAT(totalizadores("3"),
                ElementsAre("02T18.00", "07T12.00", "12T07.00", "01S05.00", "04S02.50", "30S03.00",
                            "F3", "IS1", "NS3", "DT", "DS", "AT", "AS", "Can-T", "Can-S"));
    EXPECT_THAT(Rows("SELECT indice_meio_pagamento FROM meio_pagamento_reducao WHERE cont_crz = "
                     "3"),
                ElementsAre("1", "4", "9", "15", "21"));
}

TEST_F(ComandoExamples, FirstWeekHasEveryKindOfEvent)
{
    const Balance balance = Execute("primeira_semana.jsonl");
    EXPECT_THAT(balance.refused, IsEmpty());
    EXPECT_THAT(balance.rejected, ElementsAre("programa_moeda"));
    EXPECT_EQ(balance.comandos.at("abre_cupom"), 31);
    EXPECT_EQ(Inserted("cupom_fiscal"), 31);
    EXPECT_EQ(Inserted("reducao_z"), 7);
    EXPECT_THAT(Rows("SELECT cont_cro, id_tipo_intervencao FROM intervencao"),
                ElementsAre("0|T", "1|L"));
    EXPECT_THAT(Rows("SELECT cont_cfd, coo_inicial, coo_final FROM fita_detalhe"),
                ElementsAre("1|3|6", "2|3|3"));
    EXPECT_EQ(Rows("SELECT cont_coo FROM pagamento_cupom WHERE id_estornado = 'S'").size(), 1u);
    EXPECT_EQ(Rows("SELECT cont_coo FROM cupom_fiscal WHERE id_cancelado = 'S'").size(), 1u);
    EXPECT_EQ(Value("SELECT valor_vb FROM reducao_z WHERE cont_crz = 7"), "0");
}

TEST_F(ComandoExamples, CommandsWriteTheTablesThatTheCatalogueNames)
{
    std::set<std::string> reached;
    std::set<std::string> named;
    for (const char* name : {"mercearia.jsonl", "oficina.jsonl", "primeira_semana.jsonl"}) {
        registro = bancada::Registro();
        for (const auto& [comando, tables] : Execute(name).tables) {
            EXPECT_THAT(tables, IsSubsetOf(TablesOf(*bancada::FindComando(comando))))
                << name << ": " << comando;
            reached.insert(tables.begin(), tables.end());
        }
    }
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        const std::set<std::string> tables = TablesOf(item);
        named.insert(tables.begin(), tables.end());
    }
    named.erase("moeda"); // its statement is always rejected
    EXPECT_EQ(reached, named);
}

TEST_F(ComandoExamples, EveryCommandRunsInOneOfThem)
{
    std::set<std::string> executed;
    for (const char* name : {"mercearia.jsonl", "oficina.jsonl", "primeira_semana.jsonl"}) {
        registro = bancada::Registro();
        for (const auto& [comando, times] : Execute(name).comandos) {
            executed.insert(comando);
        }
    }
    EXPECT_EQ(executed.size(), bancada::Catalogue().size());
}

} // namespace
