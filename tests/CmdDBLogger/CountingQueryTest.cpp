// The query that counts the rows already carrying a key.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

class Counting : public LoggerTest
{
  protected:
    // A query of `text`, prepared and stepped.
    CountingQuery Query(const std::string& text)
    {
        ::Statement<SQL_SIZE> sql;
        sql.Begin();
        sql.TextAt("%s", text.c_str());
        return CountingQuery(db, sql);
    }

    // The count of a query that is released; 7 where the query gives none.
    int CountOf(const std::string& text)
    {
        CountingQuery query = Query(text);
        const int count = query.Count(7);
        query.Finalize();
        return count;
    }

    bool HasRow(const std::string& text)
    {
        CountingQuery query = Query(text);
        const bool hasRow = query.HasRow();
        query.Finalize();
        return hasRow;
    }
};

TEST_F(Counting, CountsTheRowsThatCarryTheKey)
{
    EXPECT_EQ(CountOf("SELECT count(*) FROM meio_pagamento WHERE num_indice = 2"), 0);

    Execute("INSERT INTO meio_pagamento VALUES (2,1,'Cartao','S'), (2,1,'Cheque','N'),"
            " (3,1,'Vale','N')");

    EXPECT_EQ(CountOf("SELECT count(*) FROM meio_pagamento WHERE num_indice = 2"), 2);
    EXPECT_EQ(CountOf("SELECT count(*) FROM meio_pagamento"), 3);
}

TEST_F(Counting, EngineIsHandedTheTextWithItsTerminator)
{
    CountOf("SELECT count(*) FROM dados_usuario");

    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM dados_usuario");
    EXPECT_EQ(Queries()[0].bytes, 35);
    EXPECT_THAT(Statements(), ::testing::IsEmpty());
}

TEST_F(Counting, QueryThatCannotBePreparedHasNoRowAndIsNotLogged)
{
    EXPECT_FALSE(HasRow("SELECT count(*) FROM nada"));
    EXPECT_EQ(CountOf("SELECT count(*) FROM nada"), 7);
    EXPECT_THAT(LogEntries(), ::testing::IsEmpty());
}

TEST_F(Counting, NullHandleHasNoRow)
{
    ::Statement<SQL_SIZE> sql;
    sql.Begin("SELECT 1");
    CountingQuery query(nullptr, sql);
    EXPECT_FALSE(query.HasRow());
    EXPECT_EQ(query.Count(0), 0);
    query.Finalize();
}

TEST_F(Counting, QueryWithoutARowHasNoRow)
{
    EXPECT_FALSE(HasRow("SELECT 1 WHERE 0"));
    EXPECT_EQ(CountOf("SELECT 1 WHERE 0"), 7);
}

TEST_F(Counting, StepThatFailsHasNoRow)
{
    EXPECT_FALSE(HasRow("SELECT abs(-9223372036854775808)"));
    EXPECT_EQ(CountOf("SELECT abs(-9223372036854775808)"), 7);
}

TEST_F(Counting, NullTextIsARowWithoutACount)
{
    EXPECT_TRUE(HasRow("SELECT NULL"));
    EXPECT_EQ(CountOf("SELECT NULL"), 7);
}

TEST_F(Counting, TextIsReadUpToItsFirstOtherCharacter)
{
    EXPECT_EQ(CountOf("SELECT '12x'"), 12);
    EXPECT_EQ(CountOf("SELECT '-3'"), -3);
    EXPECT_EQ(CountOf("SELECT 'x'"), 0);
    EXPECT_EQ(CountOf("SELECT ''"), 0);
}

TEST_F(Counting, QueryStaysOpenUntilItIsFinalized)
{
    CountingQuery query = Query("SELECT 1");
    EXPECT_EQ(OpenQueries(), 1);
    EXPECT_EQ(query.Count(0), 1);
    query.Finalize();
    EXPECT_EQ(OpenQueries(), 0);
}

TEST_F(Counting, QueryThatIsNotFinalizedOutlivesItsObject)
{
    EXPECT_TRUE(Query("SELECT 1").HasRow());
    EXPECT_EQ(OpenQueries(), 1);
    ReleaseOpenQueries();
}

} // namespace
