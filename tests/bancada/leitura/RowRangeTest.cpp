// A stretch of rows by a counter that goes up with them.
#include "bancada/leitura/RowRange.h"

#include "bancada/Unusable.h"
#include "bancada/leitura/Query.h"
#include "tests/bancada/leitura/Sample.h"
#include "tests/support/EngineSteps.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace bancada::leitura
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RowRanges : public leitura_test::Sample
{
  protected:
    // The rows of the range found, by a scan.
    std::vector<std::int64_t> Rows(std::int64_t from, std::int64_t to)
    {
        const DatabaseReading database(Path());
        Query rows(database, "SELECT rowid AS row FROM cupom_fiscal WHERE " +
                                 Within(FindRange(database, "cupom_fiscal", "cont_crz", from, to)));
        std::vector<std::int64_t> found;
        while (rows.Next()) {
            found.push_back(rows.ReadInteger("row").Value());
        }
        return found;
    }
};

TEST_F(RowRanges, EveryStretchOfEveryTable)
{
    Execute("SELECT 1");
    // Counters 2, 4, 6, ... each as often as its half says, in rows with gaps between.
    std::int64_t row = -7;
    for (std::int64_t times = 1; times <= 6; ++times) {
        for (std::int64_t from = 0; from <= 13; ++from) {
            for (std::int64_t to = from - 1; to <= 13; ++to) {
                std::vector<std::int64_t> expected;
                const DatabaseReading database(Path());
                Query all(database, "SELECT rowid AS row, cont_crz FROM cupom_fiscal");
                while (all.Next()) {
                    const std::int64_t key = all.ReadInteger("cont_crz").Value();
                    if (key >= from && key <= to) {
                        expected.push_back(all.ReadInteger("row").Value());
                    }
                }
                EXPECT_EQ(Rows(from, to), expected) << times << ": " << from << " to " << to;
            }
        }
        for (std::int64_t i = 0; i < times; ++i) {
            row += 1 + (row & 3);
            Execute("INSERT INTO cupom_fiscal (rowid, cont_crz) VALUES (" + std::to_string(row) +
                    ", " + std::to_string(2 * times) + ")");
        }
    }
}

TEST_F(RowRanges, TheEndsOfTheNumbers)
{
    Execute("INSERT INTO cupom_fiscal (rowid, cont_crz) VALUES"
            " (-9223372036854775807 - 1, -9223372036854775807 - 1), (0, 0),"
            " (9223372036854775807, 9223372036854775807)");
    EXPECT_THAT(Rows(INT64_MIN, INT64_MIN), ElementsAre(INT64_MIN));
    EXPECT_THAT(Rows(INT64_MIN, 0), ElementsAre(INT64_MIN, 0));
    EXPECT_THAT(Rows(1, INT64_MAX - 1), IsEmpty());
    EXPECT_THAT(Rows(INT64_MAX, INT64_MAX), ElementsAre(INT64_MAX));
}

TEST_F(RowRanges, WhatIsNoIntegerIsNotAsked)
{
    Execute("INSERT INTO cupom_fiscal (cont_crz) VALUES (NULL), ('a'), (1), (NULL), (2), (NULL),"
            " (2), (x'00'), (3), (NULL)");
    EXPECT_THAT(Rows(1, 1), ElementsAre(3, 4));
    EXPECT_THAT(Rows(2, 2), ElementsAre(5, 6, 7, 8));
    EXPECT_THAT(Rows(3, 3), ElementsAre(9, 10));
}

TEST_F(RowRanges, ALongTableTakesAFewStepsMore)
{
    const auto stepsAmong = [&](int rows) {
        Execute("DELETE FROM cupom_fiscal; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1"
                " FROM n WHERE i < " +
                std::to_string(rows) +
                ") INSERT INTO cupom_fiscal (cont_crz) SELECT i / 10 FROM n");
        const EngineSteps steps;
        const DatabaseReading database(Path());
        const RowRange range = FindRange(database, "cupom_fiscal", "cont_crz", 5, 5);
        EXPECT_EQ(range.last - range.first, 9);
        return steps.Taken();
    };
    const std::int64_t few = stepsAmong(1000);
    EXPECT_LT(stepsAmong(64000), 2 * few);
}

TEST_F(RowRanges, AMissingTableMeansAnotherProgram)
{
    Execute("DROP TABLE reducao_z");
    EXPECT_THROW(FindRange(DatabaseReading(Path()), "reducao_z", "cont_crz", 1, 1), Unusable);
}

} // namespace
} // namespace bancada::leitura
