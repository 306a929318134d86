// The lists of the tables' columns against the schema.
#include "bancada/leitura/Tables.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <gmock/gmock.h>
#include <map>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace bancada::leitura
{
namespace
{

using ::testing::HasSubstr;

using Tables = leitura_test::Sample;

TEST_F(Tables, EveryTableAndColumnOfTheSchemaIsReadOrDeclaredUnread)
{
    std::map<std::string, std::vector<std::string>> schema;
    for (const auto& [table, column] : LogSchemaColumns()) {
        schema[table].push_back(column);
    }
    std::map<std::string, std::vector<std::string>> lists;
    ForEachTable([&lists](const auto& table) {
        for (const auto& column : table.Columns()) {
            lists[table.Name()].push_back(column.name);
        }
    });
    EXPECT_EQ(lists, schema);
}

// Where a member lies in its record.
template <typename Record>
std::ptrdiff_t Offset(const Column<Record>& column, const Record& record, std::size_t& size)
{
    return std::visit(
        [&](auto member) -> std::ptrdiff_t {
            if constexpr (std::is_same_v<decltype(member), Unread>) {
                size = 0;
                return -1;
            } else {
                size = sizeof(record.*member);
                return reinterpret_cast<const char*>(&(record.*member)) -
                       reinterpret_cast<const char*>(&record);
            }
        },
        column.member);
}

TEST_F(Tables, EveryMemberOfARecordIsReadOnce)
{
    ForEachTable([](const auto& table) {
        using Record = typename std::decay_t<decltype(table)>::Record;
        const Record record{};
        std::set<std::ptrdiff_t> members;
        std::size_t bytes = sizeof(Row);
        for (const auto& column : table.Columns()) {
            std::size_t size = 0;
            const std::ptrdiff_t offset = Offset(column, record, size);
            EXPECT_TRUE(size == 0 || members.insert(offset).second)
                << table.Name() << '.' << column.name << " is read into another column's member";
            bytes += size;
        }
        EXPECT_EQ(bytes, sizeof(Record)) << table.Name() << ": a member without a column";
    });
}

// A literal that each kind of column takes for its own, told from every other.
std::string Literal(const std::string& column, int position, std::string& shown)
{
    if (column.rfind("valor_", 0) == 0 || column.rfind("perc_", 0) == 0 || column == "quantidade") {
        shown = std::to_string(position) + ".25";
        return shown;
    }
    shown = std::to_string(position);
    return shown;
}

template <typename Record>
std::string Shown(const Column<Record>& column, const Record& record)
{
    return std::visit(
        [&](auto member) -> std::string {
            using Member = decltype(member);
            if constexpr (std::is_same_v<Member, Unread>) {
                return {};
            } else if constexpr (std::is_same_v<Member, Integer Record::*>) {
                return std::to_string((record.*member).Value());
            } else if constexpr (std::is_same_v<Member, Text Record::*>) {
                return (record.*member).Value();
            } else if constexpr (std::is_same_v<Member, Amount Record::*>) {
                return PointText(record.*member);
            } else {
                return (record.*member).Raw();
            }
        },
        column.member);
}

TEST_F(Tables, EveryColumnIsReadIntoItsMember)
{
    Execute("");
    ForEachTable([this](const auto& table) {
        using Record = typename std::decay_t<decltype(table)>::Record;
        std::string names;
        std::string values;
        std::vector<std::string> expected;
        int position = 0;
        for (const auto& column : table.Columns()) {
            std::string shown;
            values += (names.empty() ? "" : ", ") + Literal(column.name, ++position, shown);
            names += (names.empty() ? "" : ", ") + std::string(column.name);
            expected.push_back(shown);
        }
        Execute("INSERT INTO " + table.Name() + " (" + names + ") VALUES (" + values + ")");

        const DatabaseReading database(Path());
        Rows<Record> rows(database, table, "");
        Record record;
        ASSERT_TRUE(rows.Next(record)) << table.Name();
        EXPECT_EQ(record.rowid, 1) << table.Name();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(Shown(table.Columns()[i], record), expected[i])
                << table.Name() << '.' << table.Columns()[i].name;
        }
        EXPECT_FALSE(rows.Next(record));
    });
}

TEST_F(Tables, WhatAnInsertOfTheModuleLeavesOutCountsAsZero)
{
    Execute("INSERT INTO item_cupom_nf (seq_item, cont_coo, perc_acrescimo) VALUES (1, 9, NULL)");
    const DatabaseReading database(Path());
    Rows<ItemCupomNfRow> rows(database, ItemCupomNfTable(), "");
    ItemCupomNfRow item;
    ASSERT_TRUE(rows.Next(item));
    EXPECT_EQ(item.tipoAcrescimo.State(), CellState::LEFT_OUT);
    EXPECT_EQ(item.tipoDesconto.State(), CellState::LEFT_OUT);
    EXPECT_TRUE(item.percAcrescimo.IsZero());
    EXPECT_EQ(item.valorTotal.State(), CellState::NULL_VALUE);
    EXPECT_FALSE(item.valorTotal.IsZero());
    EXPECT_EQ(item.valorTotal.Raw(), "NULL");
}

std::string Refusal(const std::string& path)
{
    try {
        RequireTables(DatabaseReading(path));
    } catch (const Unusable& error) {
        return error.what();
    }
    return "accepted";
}

TEST_F(Tables, AnotherProgramsDatabaseIsRefused)
{
    Execute("");
    EXPECT_EQ(Refusal(Path()), "accepted");
    Execute("DROP TABLE versao_sb");
    EXPECT_EQ(Refusal(Path()), Path() + ": not a logging database (no such table: versao_sb)");
}

TEST_F(Tables, AMissingColumnIsNamed)
{
    Execute("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    EXPECT_EQ(Refusal(Path()), Path() + ": not a logging database (no such column: perc_desconto)");
}

TEST_F(Tables, AViewInATablesPlaceIsNotRun)
{
    Execute("ALTER TABLE moeda RENAME TO outra; CREATE VIEW moeda AS SELECT * FROM outra");
    EXPECT_THAT(Refusal(Path()), HasSubstr("moeda"));
}

} // namespace
} // namespace bancada::leitura
