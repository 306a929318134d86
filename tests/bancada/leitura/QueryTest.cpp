// Queries whose columns are read by name.
#include "bancada/leitura/Query.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace bancada::leitura
{
namespace
{

using Queries = leitura_test::Sample;

TEST_F(Queries, ColumnsAreReadByTheirNames)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo, valor_total, id_cancelado, nome_consumidor)"
            " VALUES (7, 12.5, 'S', 'Ana')");
    const DatabaseReading database(Path());
    Query query(database, "SELECT nome_consumidor, id_cancelado, valor_total AS total,"
                          " count(*) AS n FROM cupom_fiscal WHERE cont_coo = ?1");
    ASSERT_TRUE(query.With(std::int64_t{7}).Next());
    EXPECT_EQ(query.ReadInteger("n").Value(), 1);
    EXPECT_EQ(query.ReadAmount("total", 2).Units(), 1250);
    EXPECT_TRUE(query.ReadFlag("id_cancelado").IsSet());
    EXPECT_EQ(query.ReadText("nome_consumidor").Value(), "Ana");
    EXPECT_THROW(static_cast<void>(query.ReadText("valor_total")), std::logic_error);
}

TEST_F(Queries, AValueMayBeMissingOrAText)
{
    Execute("INSERT INTO versao_sb VALUES (1, 'a'), (2, 'b')");
    const DatabaseReading database(Path());
    Query query(database, "SELECT count(*) AS n FROM versao_sb"
                          " WHERE (?1 IS NULL OR num_ecf = ?1) AND (?2 = '' OR versao = ?2)");
    const auto count = [&](std::optional<std::int64_t> ecf, const std::string& version) {
        query.With(ecf, version).Next();
        return query.ReadInteger("n").Value();
    };
    EXPECT_EQ(count({}, ""), 2);
    EXPECT_EQ(count(2, ""), 1);
    EXPECT_EQ(count({}, "a"), 1);
    EXPECT_EQ(count(2, "a"), 0);
}

TEST_F(Queries, AMissingTableMeansAnotherProgram)
{
    Execute("");
    const DatabaseReading database(Path());
    try {
        Query(database, "SELECT 1 FROM canções");
        ADD_FAILURE() << "accepted";
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), Path() + ": not a logging database (no such table: canções)");
    }
}

TEST_F(Queries, ARowLongerThanAnyThatIsLoggedIsRefused)
{
    Execute("INSERT INTO versao_sb VALUES (1, printf('%.*c', 16777217, 'x'))");
    const DatabaseReading database(Path());
    Query query(database, "SELECT versao FROM versao_sb");
    EXPECT_THROW(query.Next(), Unusable);
}

} // namespace
} // namespace bancada::leitura
