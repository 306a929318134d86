// The schema and the file.
#include "tests/bancada/conferencia/PlantedFault.h"

#include <fstream>
#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"IndexGone",
     "DROP INDEX idx_cupom_nf",
     {"esquema: index idx_cupom_nf: nothing, where cupom_nf (cont_coo) is due"}},
    {"IndexMore",
     "CREATE INDEX idx_outro ON reducao_z (data_movimento)",
     {"esquema: index idx_outro: reducao_z (data_movimento), where nothing is due"}},
    {"TriggerAndView",
     "CREATE VIEW vendas AS SELECT * FROM cupom_fiscal;"
     "CREATE TRIGGER gatilho AFTER INSERT ON moeda BEGIN DELETE FROM moeda; END",
     {"esquema: trigger gatilho: on moeda, where nothing is due",
      "esquema: view vendas: on vendas, where nothing is due"}},
    {"ColumnMore",
     "ALTER TABLE moeda ADD COLUMN outra TEXT",
     {"esquema: column moeda.outra: TEXT, where nothing is due"}},
    {"OtherAffinity",
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'uf TEXT',"
     " 'uf NUMERIC COLLATE NOCASE') WHERE name = 'dados_usuario'",
     {"esquema: column dados_usuario.uf: NUMERIC, where TEXT is due",
      "esquema: clause dados_usuario collate: collate, where nothing is due"}},
    {"AnotherApplication",
     "PRAGMA application_id = 7",
     {"esquema: application_id: 7, where 1162036737 is due"}},
    {"ValueThatItsColumnRefuses",
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'uf TEXT',"
     " 'uf TEXT NOT NULL') WHERE name = 'dados_usuario'",
     {"arquivo-danificado: integrity: NULL value in dados_usuario.uf",
      "esquema: column dados_usuario.uf: TEXT NOT NULL, where TEXT is due"}},
});

INSTANTIATE_TEST_SUITE_P(CheckEsquema, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

class CheckEsquema : public CheckedDatabase
{
};

TEST_F(CheckEsquema, ADatabaseOfThePresentVersionIsClean)
{
    Execute("PRAGMA application_id = 0x45434601");
    EXPECT_THAT(Faults(), testing::IsEmpty());
    Execute("PRAGMA application_id = 0x45434600");
    EXPECT_THAT(Faults(), testing::ElementsAre("esquema: application_id: 1162036736, where "
                                               "1162036737 is due"));
}

TEST_F(CheckEsquema, AFileWithMoreThanItsPagesIsTold)
{
    Execute("PRAGMA journal_mode = WAL");
    std::ofstream(Path(), std::ios::app | std::ios::binary) << "x";
    Check();
    EXPECT_EQ(faults.size(), 1U);
    EXPECT_THAT(faults, testing::Contains(testing::StartsWith("arquivo-danificado: size: ")));
}

} // namespace
} // namespace bancada::conferencia_test
