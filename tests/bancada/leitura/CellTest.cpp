// What a cell holds, by the engine's storage classes.
#include "bancada/leitura/Cell.h"

#include "bancada/leitura/Amount.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace bancada::leitura
{
namespace
{

// One cell, as a literal without a column's affinity makes it.
class Literal
{
  public:
    explicit Literal(const std::string& literal)
    {
        EXPECT_EQ(sqlite3_open(":memory:", &m_db), SQLITE_OK);
        const std::string sql = "SELECT " + literal;
        EXPECT_EQ(sqlite3_prepare_v2(m_db, sql.c_str(), -1, &m_row, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_step(m_row), SQLITE_ROW) << literal;
    }
    ~Literal()
    {
        sqlite3_finalize(m_row);
        sqlite3_close(m_db);
    }
    Literal(const Literal&) = delete;
    Literal& operator=(const Literal&) = delete;

    sqlite3_stmt* Row() const { return m_row; }

  private:
    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_row = nullptr;
};

// "value/state/raw" of each kind.
std::string AsInteger(const std::string& literal, Nullable nullable = Nullable::NO)
{
    const Integer cell = ReadInteger(Literal(literal).Row(), 0, nullable);
    return std::to_string(cell.Value()) + (cell.IsKnown() ? "" : " not known: ") + cell.Raw();
}

std::string AsText(const std::string& literal, Nullable nullable = Nullable::NO)
{
    const Text cell = ReadText(Literal(literal).Row(), 0, nullable);
    return cell.Value() + (cell.IsKnown() ? "" : "not known: ") + cell.Raw();
}

std::string AsFlag(const std::string& literal, Nullable nullable = Nullable::NO)
{
    const Flag cell = ReadFlag(Literal(literal).Row(), 0, nullable);
    return (cell.IsSet() ? "S" : "N") + std::string(cell.IsKnown() ? "" : " not known: ") +
           cell.Raw();
}

TEST(Cell, AnIntegerIsReadWhole)
{
    EXPECT_EQ(AsInteger("0"), "0");
    EXPECT_EQ(AsInteger("999999"), "999999");
    EXPECT_EQ(AsInteger("9223372036854775807"), "9223372036854775807");
    EXPECT_EQ(AsInteger("-9223372036854775807 - 1"), "-9223372036854775808");
}

TEST(Cell, WhatIsNoIntegerIsNotZero)
{
    EXPECT_EQ(AsInteger("NULL"), "0 not known: NULL");
    EXPECT_EQ(AsInteger("'12'"), "0 not known: 12");
    EXPECT_EQ(AsInteger("'abc'"), "0 not known: abc");
    EXPECT_EQ(AsInteger("12.5"), "0 not known: 12.5");
    EXPECT_EQ(AsInteger("x'00ff'"), "0 not known: X'00FF'");
    EXPECT_EQ(AsInteger("NULL", Nullable::YES), "0");
    EXPECT_EQ(AsInteger("'abc'", Nullable::YES), "0 not known: abc");
}

TEST(Cell, ATextIsItsBytes)
{
    EXPECT_EQ(AsText("'Pão'"), "Pão");
    EXPECT_EQ(AsText("''"), "");
    EXPECT_EQ(AsText("CAST(x'610062' AS TEXT)"), std::string("a\0b", 3));
    EXPECT_EQ(AsText("CAST(x'61ff62' AS TEXT)"), "a\xFF"
                                                 "b");
}

TEST(Cell, WhatIsNoTextIsNotEmpty)
{
    EXPECT_EQ(AsText("NULL"), "not known: NULL");
    EXPECT_EQ(AsText("NULL", Nullable::YES), "");
    EXPECT_EQ(AsText("7"), "not known: 7");
    EXPECT_EQ(AsText("x'00'"), "not known: X'00'");
    EXPECT_EQ(AsText("x''"), "not known: X''");
    EXPECT_EQ(AsText("zeroblob(33)"), "not known: X'" + std::string(64, '0') + "...'");
    EXPECT_EQ(AsText("zeroblob(32)"), "not known: X'" + std::string(64, '0') + "'");
}

TEST(Cell, AFlagIsOneOfTwoLetters)
{
    EXPECT_EQ(AsFlag("'S'"), "S");
    EXPECT_EQ(AsFlag("'N'"), "N");
    EXPECT_EQ(AsFlag("'s'"), "N not known: s");
    EXPECT_EQ(AsFlag("'SS'"), "N not known: SS");
    EXPECT_EQ(AsFlag("''"), "N not known: ");
    EXPECT_EQ(AsFlag("1"), "N not known: 1");
    EXPECT_EQ(AsFlag("x'53'"), "N not known: X'53'");
    EXPECT_EQ(AsFlag("NULL"), "N not known: NULL");
    EXPECT_EQ(AsFlag("NULL", Nullable::YES), "N");
}

TEST(Cell, TheStatesAreToldApart)
{
    EXPECT_EQ(ReadInteger(Literal("1").Row(), 0, Nullable::NO).State(), CellState::READ);
    EXPECT_EQ(ReadInteger(Literal("NULL").Row(), 0, Nullable::YES).State(), CellState::LEFT_OUT);
    EXPECT_EQ(ReadInteger(Literal("NULL").Row(), 0, Nullable::NO).State(), CellState::NULL_VALUE);
    EXPECT_EQ(ReadInteger(Literal("'1'").Row(), 0, Nullable::NO).State(), CellState::OTHER_KIND);
    EXPECT_EQ(ReadAmount(Literal("9e30").Row(), 0, Nullable::NO, 2).State(), CellState::TOO_LARGE);
}

TEST(Cell, AShownTextIsWhatStandsThere)
{
    EXPECT_EQ(ReadText(Literal("'x'").Row(), 0, Nullable::NO).Shown(), "x");
    EXPECT_EQ(ReadText(Literal("NULL").Row(), 0, Nullable::NO).Shown(), "NULL");
    EXPECT_EQ(ReadText(Literal("NULL").Row(), 0, Nullable::YES).Shown(), "");
}

} // namespace
} // namespace bancada::leitura
