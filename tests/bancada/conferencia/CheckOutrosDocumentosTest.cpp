// Document rows against the rows of what they document, where one number was given to many.
#include "tests/bancada/conferencia/CheckedDatabase.h"
#include "tests/support/EngineSteps.h"

#include <algorithm>

namespace bancada::conferencia_test
{
namespace
{

class CheckOutrosDocumentosTest : public CheckedDatabase
{
  protected:
    // So many non-fiscal receipts of one number, a minute and a GNF apart, each with its document
    // row, and so many Z reductions of another number with theirs.
    void WriteRepeated(int times)
    {
        Execute("DELETE FROM cupom_nf; DELETE FROM outros_documentos; DELETE FROM reducao_z;"
                "CREATE TEMP TABLE vez AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1"
                " FROM n WHERE i < " +
                std::to_string(times) +
                ") SELECT i, datetime('2024-03-01', '+' || i || ' minutes') AS em FROM n;"
                "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, data_hora_emissao,"
                " valor_total_cupom) SELECT 7, 1, i, em, 0 FROM vez;"
                "INSERT INTO outros_documentos SELECT 7, 1, i, 0, 0, 1, em, em, 'CN' FROM vez;"
                "INSERT INTO reducao_z (cont_crz, cont_coo, cont_gnf, data_hora_emissao)"
                " SELECT i, 8, i, em FROM vez;"
                "INSERT INTO outros_documentos SELECT 8, 1, i, 0, 0, i, em, em, 'RZ' FROM vez;"
                "DROP TABLE temp.vez");
    }

    std::vector<std::string> Differences()
    {
        std::vector<std::string> found = Faults();
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [](const std::string& fault) {
                                       return fault.rfind("documento-difere: ", 0) != 0;
                                   }),
                    found.end());
        return found;
    }

    double StepsFor(int times)
    {
        WriteRepeated(times);
        const EngineSteps steps;
        Check();
        return static_cast<double>(steps.Taken());
    }
};

TEST_F(CheckOutrosDocumentosTest, EachIsHeldAgainstTheOneOfItsHourOrOfItsCrz)
{
    for (const int times : {3, 16, 17, 40}) {
        WriteRepeated(times);
        EXPECT_EQ(Differences(), std::vector<std::string>{}) << times;
        Execute("UPDATE cupom_nf SET cont_gnf = 100 WHERE cont_gnf = 2;"
                "UPDATE reducao_z SET cont_gnf = 100 WHERE cont_gnf = 3");
        EXPECT_EQ(Differences(), (std::vector<std::string>{
                                     "documento-difere: COO 7: GNF 2, its receipt has 100",
                                     "documento-difere: COO 8: GNF 3, CRZ 3 has 100",
                                 }))
            << times;
    }
}

TEST_F(CheckOutrosDocumentosTest, WhatHasNoneOfItsHourOrCrzIsHeldAgainstTheLast)
{
    for (const int times : {3, 20}) {
        const std::string last = std::to_string(times);
        WriteRepeated(times);
        Execute(
            "UPDATE outros_documentos SET data_hora_inicio_emissao = '2024-03-01 09:00:00',"
            " data_hora_fim_emissao = '2024-03-01 09:00:00' WHERE cont_coo = 7 AND cont_gnf = " +
            last +
            ";"
            "UPDATE outros_documentos SET cont_crz = 90 WHERE cont_coo = 8 AND cont_gnf = " +
            last);
        EXPECT_EQ(
            Differences(),
            (std::vector<std::string>{
                "documento-difere: COO 7: begins 2024-03-01 09:00:00, its receipt of "
                "2024-03-01 00:" +
                    std::string(times < 10 ? "0" : "") + last + ":00",
                "documento-difere: COO 8: filed under CRZ 90, CRZ " + last + " under CRZ " + last,
            }))
            << times;
    }
}

// What the second doubling adds, to what the first one does: 2 where the cost is linear.
TEST_F(CheckOutrosDocumentosTest, CostGrowsWithTheRows)
{
    const double once = StepsFor(50);
    const double twice = StepsFor(100);
    const double fourfold = StepsFor(200);
    EXPECT_LT(fourfold - twice, 2.1 * (twice - once));
}

} // namespace
} // namespace bancada::conferencia_test
