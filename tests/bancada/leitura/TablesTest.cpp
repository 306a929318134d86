// The lists of the tables' columns against the schema.
#include "bancada/leitura/Tables.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <map>
#include <optional>
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

// Where a member lies in its record, how long it is and at which multiples it may lie.
struct Place {
    std::size_t offset;
    std::size_t size;
    std::size_t alignment;
};

// Of a column that is not read: nothing.
template <typename Record>
std::optional<Place> PlaceOf(const Column<Record>& column, const Record& record)
{
    return std::visit(
        [&](auto member) -> std::optional<Place> {
            if constexpr (std::is_same_v<decltype(member), Unread>) {
                return std::nullopt;
            } else {
                using Member = std::decay_t<decltype(record.*member)>;
                const std::ptrdiff_t offset = reinterpret_cast<const char*>(&(record.*member)) -
                                              reinterpret_cast<const char*>(&record);
                return Place{static_cast<std::size_t>(offset), sizeof(Member), alignof(Member)};
            }
        },
        column.member);
}

std::size_t Aligned(std::size_t offset, std::size_t alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

TEST_F(Tables, EveryMemberOfARecordIsReadOnce)
{
    ForEachTable([](const auto& table) {
        using Record = typename std::decay_t<decltype(table)>::Record;
        const Record record{};
        std::map<std::size_t, Place> members;
        for (const auto& column : table.Columns()) {
            if (const std::optional<Place> place = PlaceOf(column, record)) {
                EXPECT_TRUE(members.emplace(place->offset, *place).second)
                    << table.Name() << '.' << column.name
                    << " is read into another column's member";
            }
        }
        // Between them no more than an alignment asks for.
        std::size_t end = sizeof(Row);
        for (const auto& [offset, place] : members) {
            EXPECT_EQ(offset, Aligned(end, place.alignment))
                << table.Name() << ": a member without a column";
            end = offset + place.size;
        }
        EXPECT_EQ(Aligned(end, alignof(Record)), sizeof(Record))
            << table.Name() << ": a member without a column";
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
