// A database against what the register's memory says.
#include "bancada/conferencia/AncoraDaMemoria.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using conferencia::MemoriaAnchor;
using testing::ElementsAre;
using testing::IsEmpty;

class AncoraDaMemoria : public CheckedDatabase
{
  protected:
    AncoraDaMemoria()
    {
        Execute(CLEAN_DAYS);
        anchor.coo = 21;
        anchor.ccf = 7;
        anchor.gnf = 9;
        anchor.crz = 2;
        anchor.cfd = 1;
        anchor.cdc = 1;
        anchor.grg = 1;
        anchor.gtUltimaReducao = leitura::Amount(7548, 2);
        anchor.gtInicial = leitura::Amount(0, 2);
        anchor.numSerie = "0001";
        anchor.razaoSocial = "MERCEARIA";
    }

    // Each finding as "key: text", and its place behind it.
    std::vector<std::string> Found()
    {
        const leitura::DatabaseReading database(Path());
        std::vector<std::string> found;
        const std::int64_t count = conferencia::CheckMemoriaAnchor(
            database, conferencia::ReadLookedAt(database), anchor,
            [&found](const conferencia::Finding& finding) {
                const conferencia::Place& place = finding.place;
                found.push_back(finding.key + ": " + finding.text + " [" + place.table + ' ' +
                                std::to_string(place.row) + ' ' + place.column + ' ' +
                                place.expected + ' ' + place.found + ']');
                EXPECT_EQ(finding.kind, conferencia::FindingKind::ANCORA);
                EXPECT_FALSE(finding.explained);
            });
        EXPECT_EQ(static_cast<std::size_t>(count), found.size());
        return found;
    }

    MemoriaAnchor anchor;
};

TEST_F(AncoraDaMemoria, OfTheSameMomentTellsNothing)
{
    EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(AncoraDaMemoria, FindsARemovedTail)
{
    Execute("DELETE FROM cupom_fiscal WHERE cont_coo = 21;"
            "DELETE FROM item_cupom_fiscal WHERE cont_coo = 21;"
            "DELETE FROM outros_documentos WHERE cont_coo > 18; DELETE FROM reducao_z WHERE"
            " cont_crz = 2");
    EXPECT_THAT(
        Found(),
        ElementsAre(
            "CCF 7: the register's memory says 7, the rows 6 [cupom_fiscal 0 cont_ccf 7 6]",
            "CRZ 2: the register's memory says 2, the rows 1 [reducao_z 0 cont_crz 2 1]",
            "GRG 1: the register's memory says 1, the rows 0 [outros_documentos 0 cont_grg 1 0]",
            "COO 21: the register's memory says 21, the rows 18 [ 0 cont_coo 21 18]"));
}

// The first day is gone, and what remains is renumbered and lowered as if it had never been.
TEST_F(AncoraDaMemoria, FindsARemovedHead)
{
    Execute("DELETE FROM cupom_fiscal WHERE cont_crz = 1; UPDATE cupom_fiscal SET cont_coo ="
            " cont_coo - 14, cont_ccf = cont_ccf - 5, cont_crz = cont_crz - 1;"
            "DELETE FROM outros_documentos WHERE cont_coo < 15; UPDATE outros_documentos SET"
            " cont_coo = cont_coo - 14, cont_gnf = cont_gnf - 5, cont_cdc = 0;"
            "DELETE FROM fita_detalhe; DELETE FROM reducao_z WHERE cont_crz = 1; UPDATE reducao_z"
            " SET cont_crz = 1, cont_coo = cont_coo - 14, cont_gnf = cont_gnf - 5, valor_gt = 7");
    EXPECT_THAT(
        Found(),
        ElementsAre(
            "CCF 7: the register's memory says 7, the rows 2 [cupom_fiscal 0 cont_ccf 7 2]",
            "CRZ 2: the register's memory says 2, the rows 1 [reducao_z 0 cont_crz 2 1]",
            "CFD 1: the register's memory says 1, the rows none [fita_detalhe 0 cont_cfd 1 none]",
            "CDC 1: the register's memory says 1, the rows 0 [outros_documentos 0 cont_cdc 1 0]",
            "COO 21: the register's memory says 21, the rows 7 [ 0 cont_coo 21 7]"));
}

TEST_F(AncoraDaMemoria, HasTheGrandTotalOfItsLastReduction)
{
    anchor.gtUltimaReducao = leitura::Amount(7549, 2);
    EXPECT_THAT(Found(), ElementsAre("CRZ 2 GT: the register's memory says 75.49, the rows 75.48 "
                                     "[reducao_z 2 valor_gt 75.49 75.48]"));
}

// The last receipt cancelled, a reprint behind it, two reversals: none of them leaves a document.
TEST_F(AncoraDaMemoria, ReckonsWithDocumentsThatLeaveNoRow)
{
    Execute("UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = 21;"
            "INSERT INTO fita_detalhe VALUES (2,1,'2024-03-03 08:00:00',15,20)");
    anchor.cfd = 2;
    anchor.gnf = 11;
    anchor.coo = 25;
    EXPECT_THAT(Found(), IsEmpty());
    anchor.coo = 26;
    EXPECT_THAT(Found(), ElementsAre("COO 26: the register's memory says 26, the rows 21 "
                                     "[ 0 cont_coo 26 21]"));
    anchor.coo = 22;
    anchor.gnf = 11;
    EXPECT_THAT(Found(), ElementsAre("COO 22: the register's memory says 22, the rows 21 "
                                     "[ 0 cont_coo 22 21]"))
        << "two operations took one number";
}

TEST_F(AncoraDaMemoria, KnowsItsRegisterAndItsOwner)
{
    anchor.numSerie = "0002";
    anchor.cnpj = "11222333000181";
    anchor.razaoSocial = "OUTRA";
    anchor.gtInicial = leitura::Amount(1, 2);
    EXPECT_THAT(
        Found(),
        ElementsAre("dados_ecf.num_serie: the register's memory says 0002, the rows 0001 "
                    "[dados_ecf 1 num_serie 0002 0001]",
                    "dados_usuario.cnpj: the register's memory says 11222333000181, the rows NULL "
                    "[dados_usuario 1 cnpj 11222333000181 NULL]",
                    "dados_usuario.razao_social: the register's memory says OUTRA, the rows "
                    "MERCEARIA [dados_usuario 1 razao_social OUTRA MERCEARIA]",
                    "dados_usuario.valor_gt: the register's memory says 0.01, the rows 0.00 "
                    "[dados_usuario 1 valor_gt 0.01 0.00]"));
}

// What was programmed since is not the memory's to say.
TEST_F(AncoraDaMemoria, ThatIsOlderThanTheRowsIsHeldAgainstWhatItKnows)
{
    anchor = {};
    anchor.coo = 14;
    anchor.ccf = 5;
    anchor.gnf = 5;
    anchor.crz = 1;
    anchor.gtUltimaReducao = leitura::Amount(6848, 2);
    EXPECT_THAT(Found(), IsEmpty());
    anchor.gtUltimaReducao = leitura::Amount(6849, 2);
    EXPECT_THAT(Found(), ElementsAre("CRZ 1 GT: the register's memory says 68.49, the rows 68.48 "
                                     "[reducao_z 1 valor_gt 68.49 68.48]"));
}

TEST_F(AncoraDaMemoria, KnowsTheLastCommand)
{
    anchor.command = 40;
    EXPECT_THAT(Found(), IsEmpty()) << "the database carries none";
    Execute("PRAGMA user_version = 40");
    EXPECT_THAT(Found(), IsEmpty());
    Execute("PRAGMA user_version = 39");
    EXPECT_THAT(Found(), ElementsAre("command 40: the register's memory says 40, the rows 39 "
                                     "[ 0 user_version 40 39]"));
}

// Its earlier documents stand in another database.
TEST_F(AncoraDaMemoria, OfARegisterThatBeganAnotherDatabaseKnowsMoreThanItsEmptyTables)
{
    Execute("DELETE FROM fita_detalhe; UPDATE outros_documentos SET cont_coo = 2 WHERE cont_coo ="
            " 1");
    anchor.cfd = 7;
    EXPECT_THAT(Found(), IsEmpty());
}

} // namespace
} // namespace bancada::conferencia_test
