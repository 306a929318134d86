// The document numbers that several receipts bear, and those that came round.
#include "bancada/conferencia/RepeatedCoos.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

namespace bancada::conferencia_test
{
namespace
{

class RepeatedCoosTest : public CheckedDatabase
{
  protected:
    bool IsSingle(const leitura::Integer& coo) const
    {
        const leitura::DatabaseReading database(Path());
        return conferencia::RepeatedCoos(database).IsSingle(coo);
    }
};

TEST_F(RepeatedCoosTest, ANumberOfOneReceiptIsSingle)
{
    Execute(CLEAN_DAYS);
    EXPECT_TRUE(IsSingle(3));
    EXPECT_TRUE(IsSingle(10));
    EXPECT_TRUE(IsSingle(21));
    EXPECT_TRUE(IsSingle(9223372036854775807));
}

TEST_F(RepeatedCoosTest, ANumberThatComesAgainInATableOrInTheOtherIsNot)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (2),(5),(1),(5),(9),(9223372036854775807);"
            "INSERT INTO cupom_nf (cont_coo) VALUES (3),(2),(4),(4),(9223372036854775807)");
    EXPECT_TRUE(IsSingle(1));
    EXPECT_FALSE(IsSingle(2));
    EXPECT_TRUE(IsSingle(3));
    EXPECT_FALSE(IsSingle(4));
    EXPECT_FALSE(IsSingle(5));
    EXPECT_TRUE(IsSingle(9));
    EXPECT_FALSE(IsSingle(9223372036854775807));
}

TEST_F(RepeatedCoosTest, ANumberHasComeRoundWhereItsReceiptsAreOfSeveralDays)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo, cont_crz) VALUES (1,1),(2,1),(2,1),(3,1),(3,4),"
            "(4,1),(9,1);"
            "INSERT INTO cupom_nf (cont_coo, cont_crz) VALUES (4,2),(5,1),(5,1),(6,1),(6,2),(9,1)");
    const leitura::DatabaseReading database(Path());
    const conferencia::RepeatedCoos repeated(database);
    std::string round;
    for (std::int64_t coo = 0; coo < 10; ++coo) {
        round += repeated.HasComeRound(coo) ? std::to_string(coo) : ".";
    }
    EXPECT_EQ(round, "...34.6...");
    EXPECT_FALSE(repeated.HasComeRound(leitura::Integer(leitura::CellState::NULL_VALUE, "NULL")));
}

TEST_F(RepeatedCoosTest, OtherDocumentsAreSingleByThemselves)
{
    Execute("INSERT INTO outros_documentos (cont_coo) VALUES (1),(2),(2),('x'),('x'),(4);"
            "INSERT INTO cupom_fiscal (cont_coo) VALUES (4)");
    const leitura::DatabaseReading database(Path());
    const conferencia::RepeatedCoos repeated(database);
    EXPECT_TRUE(repeated.IsSingleOutro(1));
    EXPECT_FALSE(repeated.IsSingleOutro(2));
    EXPECT_TRUE(repeated.IsSingleOutro(3));
    EXPECT_TRUE(repeated.IsSingleOutro(4));
    EXPECT_FALSE(repeated.IsSingleOutro(leitura::Integer(leitura::CellState::OTHER_KIND, "x")));
}

TEST_F(RepeatedCoosTest, WhatIsNoNumberNamesNoReceipt)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (NULL),('x'),(0)");
    EXPECT_FALSE(IsSingle(leitura::Integer(leitura::CellState::NULL_VALUE, "NULL")));
    EXPECT_TRUE(IsSingle(0));
}

} // namespace
} // namespace bancada::conferencia_test
