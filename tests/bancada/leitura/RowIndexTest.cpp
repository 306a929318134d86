// The rows of a key that the schema does not index.
#include "bancada/leitura/RowIndex.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <cstdint>
#include <gmock/gmock.h>

namespace bancada::leitura
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using RowIndexes = leitura_test::Sample;

TEST_F(RowIndexes, RowsComeByKeyInTheirOrder)
{
    Execute("INSERT INTO totalizador_reducao (rowid, cont_crz) VALUES (9, 2), (1, 7), (5, 2),"
            " (2, 9223372036854775807), (3, -9223372036854775807 - 1)");
    const RowIndex index(DatabaseReading(Path()), "totalizador_reducao", "cont_crz");
    EXPECT_THAT(index.RowsOf(2), ElementsAre(5, 9));
    EXPECT_THAT(index.RowsOf(7), ElementsAre(1));
    EXPECT_THAT(index.RowsOf(8), IsEmpty());
    EXPECT_THAT(index.RowsOf(INT64_MAX), ElementsAre(2));
    EXPECT_THAT(index.RowsOf(INT64_MIN), ElementsAre(3));
    EXPECT_TRUE(index.Has(2));
    EXPECT_FALSE(index.Has(3));
    EXPECT_FALSE(index.Has(INT64_MAX - 1));
}

TEST_F(RowIndexes, WhatIsNoIntegerIsOfNoKey)
{
    Execute("INSERT INTO reducao_z (cont_crz) VALUES (NULL), ('abc'), (1.5), (0)");
    const RowIndex index(DatabaseReading(Path()), "reducao_z", "cont_crz");
    EXPECT_THAT(index.RowsOf(0), ElementsAre(4));
    EXPECT_FALSE(index.Has(1));
}

TEST_F(RowIndexes, AMissingTableMeansAnotherProgram)
{
    Execute("DROP TABLE reducao_z");
    EXPECT_THROW(RowIndex(DatabaseReading(Path()), "reducao_z", "cont_crz"), Unusable);
}

} // namespace
} // namespace bancada::leitura
