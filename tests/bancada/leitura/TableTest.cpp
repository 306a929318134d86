// Reading rows by a list of columns.
#include "bancada/leitura/Table.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace bancada::leitura
{
namespace
{

using TableRows = leitura_test::Sample;

// A means of payment as a later schema might have it.
struct LaterRow : Row {
    Integer index;
    Text name;
    Flag voucher;
    Amount limit{0, 3};
    Integer since;
    Text note;
    Flag blocked;
};

const Table<LaterRow>& LaterTable()
{
    static const Table<LaterRow> table(
        "meio_pagamento", {
                              {"num_indice", &LaterRow::index},
                              {"num_ecf", UNREAD},
                              {"descricao", &LaterRow::name},
                              {"id_vinculacao_ccd", &LaterRow::voucher},
                              {"valor_limite", &LaterRow::limit, Domain::MONEY, Presence::ADDED},
                              {"desde", &LaterRow::since, Domain::COUNTER, Presence::ADDED},
                              {"nota", &LaterRow::note, Domain::TEXT, Presence::ADDED},
                              {"id_bloqueado", &LaterRow::blocked, Domain::FLAG, Presence::ADDED},
                          });
    return table;
}

constexpr const char* THREE_MEANS =
    "INSERT INTO meio_pagamento VALUES (3, 1, 'PIX', 'N'), (1, 1, 'DINHEIRO', 'N'),"
    " (2, 1, 'CARTAO', 'S')";

TEST_F(TableRows, ComeInTheOrderAskedFor)
{
    Execute(THREE_MEANS);
    const DatabaseReading database(Path());
    Rows<LaterRow> rows(database, LaterTable(), "ORDER BY num_indice");
    LaterRow row;
    std::vector<std::string> read;
    while (rows.Next(row)) {
        read.push_back(std::to_string(row.rowid) + row.name.Value() +
                       (row.voucher.IsSet() ? " S" : " N"));
    }
    EXPECT_EQ(read, (std::vector<std::string>{"2DINHEIRO N", "3CARTAO S", "1PIX N"}));
}

TEST_F(TableRows, BeginAnewWithOtherValues)
{
    Execute(THREE_MEANS);
    const DatabaseReading database(Path());
    Rows<LaterRow> rows(database, LaterTable(), "WHERE num_indice = ?1 OR descricao = ?2");
    LaterRow row;
    ASSERT_TRUE(rows.With(std::int64_t{2}, std::string()).Next(row));
    EXPECT_EQ(row.index.Value(), 2);
    ASSERT_TRUE(rows.With(std::optional<std::int64_t>(), std::string("PIX")).Next(row));
    EXPECT_EQ(row.index.Value(), 3);
    EXPECT_FALSE(rows.Next(row));
    EXPECT_EQ(row.index.Value(), 3) << "the record is as it was";
    EXPECT_TRUE(rows.Next(row)) << "after the last row it begins again";
}

TEST_F(TableRows, AnOlderDatabaseSaysWhatItLacks)
{
    Execute(THREE_MEANS);
    const DatabaseReading database(Path());
    Rows<LaterRow> rows(database, LaterTable(), "");
    LaterRow row;
    row.limit = {5, 3};
    row.note = std::string("of another row");
    ASSERT_TRUE(rows.Next(row));
    EXPECT_EQ(row.limit.State(), CellState::NO_COLUMN);
    EXPECT_TRUE(row.limit.IsZero());
    EXPECT_EQ(row.limit.Decimals(), 3);
    EXPECT_EQ(row.since.State(), CellState::NO_COLUMN);
    EXPECT_EQ(row.note.State(), CellState::NO_COLUMN);
    EXPECT_EQ(row.note.Shown(), "");
    EXPECT_EQ(row.blocked.State(), CellState::NO_COLUMN);
    EXPECT_FALSE(row.blocked.IsSet());
}

TEST_F(TableRows, ANewerDatabaseIsRead)
{
    Execute(THREE_MEANS);
    Execute("ALTER table meio_pagamento ADD COLUMN valor_limite NUMERIC;"
            "ALTER table meio_pagamento ADD COLUMN desde INTEGER;"
            "ALTER table meio_pagamento ADD COLUMN nota TEXT;"
            "ALTER table meio_pagamento ADD COLUMN id_bloqueado TEXT;"
            "INSERT INTO meio_pagamento VALUES (4, 1, 'VALE', 'N', 7.125, 2024, 'n', 'S')");
    const DatabaseReading database(Path());
    Rows<LaterRow> rows(database, LaterTable(), "ORDER BY num_indice");
    LaterRow row;
    ASSERT_TRUE(rows.Next(row));
    EXPECT_EQ(row.limit.State(), CellState::LEFT_OUT) << "a row older than the column";
    while (row.index.Value() != 4) {
        ASSERT_TRUE(rows.Next(row));
    }
    EXPECT_EQ(PointText(row.limit), "7.125");
    EXPECT_EQ(row.since.Value(), 2024);
    EXPECT_EQ(row.note.Value(), "n");
    EXPECT_TRUE(row.blocked.IsSet());
}

TEST_F(TableRows, AColumnThatIsNotReadNeedNotBeThere)
{
    Execute(THREE_MEANS);
    Execute("ALTER table meio_pagamento DROP COLUMN num_ecf");
    const DatabaseReading database(Path());
    LaterRow row;
    EXPECT_TRUE(Rows<LaterRow>(database, LaterTable(), "").Next(row));
}

TEST_F(TableRows, AColumnThatEveryDatabaseHasMustBeThere)
{
    Execute("ALTER table meio_pagamento DROP COLUMN id_vinculacao_ccd");
    const DatabaseReading database(Path());
    EXPECT_THROW(Rows<LaterRow>(database, LaterTable(), ""), Unusable);
}

} // namespace
} // namespace bancada::leitura
