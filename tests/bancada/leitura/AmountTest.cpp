// Reading numbers of the numeric columns exactly, and writing them.
#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "bancada/leitura/Amount.h"

namespace bancada::leitura
{
namespace
{

// What a NUMERIC column makes of the literal, read back.
class Column
{
  public:
    Column()
    {
        EXPECT_EQ(sqlite3_open(":memory:", &m_db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(m_db, "CREATE TABLE t (v NUMERIC)", nullptr, nullptr, nullptr),
                  SQLITE_OK);
    }
    ~Column() { sqlite3_close(m_db); }
    Column(const Column&) = delete;
    Column& operator=(const Column&) = delete;

    Amount Read(const std::string& literal, int decimals, Nullable nullable = Nullable::NO)
    {
        const std::string sql = "DELETE FROM t; INSERT INTO t VALUES (" + literal + ")";
        EXPECT_EQ(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(m_db, "SELECT v FROM t", -1, &stmt, nullptr);
        EXPECT_EQ(sqlite3_step(stmt), SQLITE_ROW);
        Amount amount = ReadAmount(stmt, 0, nullable, decimals);
        sqlite3_finalize(stmt);
        return amount;
    }

  private:
    sqlite3* m_db = nullptr;
};

TEST(Amount, CentsComeBackAsTheyWereWritten)
{
    Column column;
    EXPECT_EQ(column.Read("12.50", 2).Units(), 1250);
    EXPECT_EQ(column.Read("100.00", 2).Units(), 10000);
    EXPECT_EQ(column.Read("0", 2).Units(), 0);
    // The REAL is a hair below or above the decimal number.
    EXPECT_EQ(column.Read("0.29", 2).Units(), 29);
    EXPECT_EQ(column.Read("1.15", 2).Units(), 115);
    EXPECT_EQ(column.Read("-4.35", 2).Units(), -435);
    EXPECT_EQ(column.Read("4.605", 4).Units(), 46050);
    EXPECT_EQ(column.Read("9999999999999.99", 2).Units(), 999999999999999);
}

TEST(Amount, EveryCentUpToAThousandComesBack)
{
    Column column;
    for (std::int64_t cents = 0; cents <= 100000; cents += 7) {
        const Amount written{cents, 2};
        ASSERT_EQ(column.Read(PointText(written), 2).Units(), cents);
    }
}

TEST(Amount, RandomAmountsOfFifteenDigitsComeBack)
{
    const std::uint32_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    Column column;
    for (int i = 0; i < 2000; ++i) {
        const auto cents = static_cast<std::int64_t>(random() % 1000000000000000U);
        ASSERT_EQ(column.Read(PointText({cents, 2}), 2).Units(), cents);
    }
}

TEST(Amount, NullIsZeroOnlyWhereTheModuleLeavesTheColumnOut)
{
    Column column;
    EXPECT_TRUE(column.Read("NULL", 2, Nullable::YES).IsZero());
    const Amount null = column.Read("NULL", 2);
    EXPECT_FALSE(null.IsKnown());
    EXPECT_FALSE(null.IsZero());
    EXPECT_EQ(TillText(null), "NULL");
    EXPECT_EQ(PointText(null), "");
}

TEST(Amount, WhatIsNoAmountIsNotLegible)
{
    Column column;
    EXPECT_FALSE(column.Read("'abc'", 2).IsKnown());
    EXPECT_FALSE(column.Read("x'00'", 2).IsKnown());
    EXPECT_FALSE(column.Read("9e999", 2).IsKnown());
    EXPECT_FALSE(column.Read("1e17", 2).IsKnown());
    EXPECT_FALSE(column.Read("92233720368547759", 2).IsKnown());
    EXPECT_EQ(column.Read("92233720368547758", 2).Units(), 9223372036854775800);
    EXPECT_EQ(TillText(column.Read("'abc'", 2)), "abc");
    EXPECT_EQ(TillText(column.Read("9223372036854775807", 2)), "9223372036854775807");
    EXPECT_EQ(PointText(column.Read("'abc'", 2)), "");
}

TEST(Amount, SumsThatDoNotFitAreNotLegible)
{
    EXPECT_FALSE((Amount{INT64_MAX, 2} + Amount{1, 2}).IsKnown());
    EXPECT_FALSE((Amount{INT64_MIN, 2} - Amount{1, 2}).IsKnown());
    EXPECT_FALSE((Amount(CellState::NULL_VALUE, "NULL", 2) + Amount{1, 2}).IsKnown());
    EXPECT_FALSE(Amount(INT64_MAX, 2).WithDecimals(3).IsKnown());
    EXPECT_EQ((Amount{1250, 2} - Amount{2000, 2}).Units(), -750);
    EXPECT_EQ(Amount(-125, 2).WithDecimals(4).Units(), -12500);
}

TEST(Amount, ASumOfWhatIsNotKnownIsNotKnown)
{
    const Amount sum = Amount(125, 2) + Amount(CellState::OTHER_KIND, "abc", 2);
    EXPECT_EQ(sum.State(), CellState::TOO_LARGE);
    EXPECT_EQ(TillText(sum), "?");
    EXPECT_EQ(TillText(sum - Amount(125, 2)), "?");
}

TEST(Amount, TermsOfDifferentDecimalsAreBroughtTogether)
{
    EXPECT_EQ((Amount(125, 2) + Amount(5, 3)).Units(), 1255);
    EXPECT_EQ((Amount(125, 2) + Amount(5, 3)).Decimals(), 3);
    EXPECT_EQ((Amount(5, 3) - Amount(125, 2)).Units(), -1245);
    EXPECT_FALSE((Amount(INT64_MAX, 2) + Amount(0, 3)).IsKnown());
    EXPECT_TRUE(IsSame(Amount(125, 2), Amount(1250, 3)));
    EXPECT_FALSE(IsSame(Amount(125, 2), Amount(1251, 3)));
    EXPECT_FALSE(IsSame(Amount(CellState::NULL_VALUE, "NULL", 2), Amount()));
    EXPECT_FALSE(IsSame(Amount(INT64_MAX, 2), Amount(INT64_MIN, 2)));
}

TEST(Amount, WithFewerDecimalsItIsRoundedHalfAwayFromZero)
{
    EXPECT_EQ(Amount(9215, 3).WithDecimals(2).Units(), 922);
    EXPECT_EQ(Amount(9214, 3).WithDecimals(2).Units(), 921);
    EXPECT_EQ(Amount(-9215, 3).WithDecimals(2).Units(), -922);
    EXPECT_EQ(Amount(-9214, 3).WithDecimals(2).Units(), -921);
    EXPECT_TRUE(Amount(9210, 3).WithDecimals(2).IsExact());
    EXPECT_FALSE(Amount(9214, 3).WithDecimals(2).IsExact());
    EXPECT_EQ(Amount(CellState::NULL_VALUE, "NULL", 3).WithDecimals(2).Raw(), "NULL");
}

TEST(Amount, MoreDecimalsThanTheColumnIsForAreTold)
{
    Column column;
    EXPECT_TRUE(column.Read("12.5", 2).IsExact());
    EXPECT_TRUE(column.Read("1.15", 2).IsExact());
    EXPECT_TRUE(column.Read("9007199254740.99", 2).IsExact());
    EXPECT_FALSE(column.Read("1.155", 2).IsExact());
    EXPECT_EQ(column.Read("1.156", 2).Units(), 116);
    EXPECT_FALSE(column.Read("90071992547409.93", 2).IsExact());
    EXPECT_FALSE(column.Read("1.15001", 2).IsExact());
    EXPECT_TRUE(column.Read("1.0 - 0.9", 2).IsExact()) << "reckoned by the engine, and not its 0.1";
    EXPECT_EQ(column.Read("1.0 - 0.9", 2).Units(), 10);
    EXPECT_TRUE(column.Read("99999999.99 - 99999999.93", 2).IsExact());
}

TEST(Amount, WritesAsTheTillDoes)
{
    EXPECT_EQ(TillText({0, 2}), "0,00");
    EXPECT_EQ(TillText({5, 2}), "0,05");
    EXPECT_EQ(TillText({99999, 2}), "999,99");
    EXPECT_EQ(TillText({100000, 2}), "1.000,00");
    EXPECT_EQ(TillText({-123456789, 2}), "-1.234.567,89");
    EXPECT_EQ(TillText({9210, 3}), "9,21");
    EXPECT_EQ(TillText({9215, 3}), "9,215");
    EXPECT_EQ(TillText({20000, 4}, 0), "2");
    EXPECT_EQ(TillText({12350, 4}, 0), "1,235");
    EXPECT_EQ(TillText({INT64_MIN, 2}), "-92.233.720.368.547.758,08");
}

TEST(Amount, WritesForPrograms)
{
    EXPECT_EQ(PointText({123456, 2}), "1234.56");
    EXPECT_EQ(PointText({-5, 2}), "-0.05");
    EXPECT_EQ(PointText({20000, 4}, 0), "2");
}

} // namespace
} // namespace bancada::leitura
