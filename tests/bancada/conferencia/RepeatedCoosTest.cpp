// The document numbers that several receipts bear.
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

TEST_F(RepeatedCoosTest, WhatIsNoNumberNamesNoReceipt)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (NULL),('x'),(0)");
    EXPECT_FALSE(IsSingle(leitura::Integer(leitura::CellState::NULL_VALUE, "NULL")));
    EXPECT_TRUE(IsSingle(0));
}

} // namespace
} // namespace bancada::conferencia_test
