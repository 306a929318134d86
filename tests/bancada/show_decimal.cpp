// Reading numbers of the numeric columns exactly, and writing them.
#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "bancada/relatorio/Decimal.h"

namespace bancada::relatorio
{
namespace
{

// What a NUMERIC column makes of the literal, read back.
class Coluna
{
  public:
    Coluna()
    {
        EXPECT_EQ(sqlite3_open(":memory:", &m_db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(m_db, "CREATE TABLE t (v NUMERIC)", nullptr, nullptr, nullptr),
                  SQLITE_OK);
    }
    ~Coluna() { sqlite3_close(m_db); }
    Coluna(const Coluna&) = delete;
    Coluna& operator=(const Coluna&) = delete;

    Decimal le(const std::string& literal, int casas)
    {
        const std::string sql = "DELETE FROM t; INSERT INTO t VALUES (" + literal + ")";
        EXPECT_EQ(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(m_db, "SELECT v FROM t", -1, &stmt, nullptr);
        EXPECT_EQ(sqlite3_step(stmt), SQLITE_ROW);
        const Decimal valor = lerDecimal(stmt, 0, casas);
        sqlite3_finalize(stmt);
        return valor;
    }

  private:
    sqlite3* m_db = nullptr;
};

TEST(ShowDecimal, CentsComeBackAsTheyWereWritten)
{
    Coluna coluna;
    EXPECT_EQ(coluna.le("12.50", 2).unidades, 1250);
    EXPECT_EQ(coluna.le("100.00", 2).unidades, 10000);
    EXPECT_EQ(coluna.le("0", 2).unidades, 0);
    // The REAL is a hair below or above the decimal number.
    EXPECT_EQ(coluna.le("0.29", 2).unidades, 29);
    EXPECT_EQ(coluna.le("1.15", 2).unidades, 115);
    EXPECT_EQ(coluna.le("-4.35", 2).unidades, -435);
    EXPECT_EQ(coluna.le("4.605", 4).unidades, 46050);
    EXPECT_EQ(coluna.le("9999999999999.99", 2).unidades, 999999999999999);
}

TEST(ShowDecimal, EveryCentUpToAThousandComesBack)
{
    Coluna coluna;
    for (std::int64_t centavos = 0; centavos <= 100000; centavos += 7) {
        const Decimal escrito{centavos, 2, true};
        ASSERT_EQ(coluna.le(textoPonto(escrito), 2).unidades, centavos);
    }
}

TEST(ShowDecimal, RandomAmountsOfFifteenDigitsComeBack)
{
    const std::uint32_t semente = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semente));
    std::mt19937_64 sorteio(semente);
    Coluna coluna;
    for (int i = 0; i < 2000; ++i) {
        const auto centavos = static_cast<std::int64_t>(sorteio() % 1000000000000000U);
        ASSERT_EQ(coluna.le(textoPonto({centavos, 2, true}), 2).unidades, centavos);
    }
}

TEST(ShowDecimal, NullIsZero)
{
    Coluna coluna;
    EXPECT_TRUE(coluna.le("NULL", 2).zero());
}

TEST(ShowDecimal, WhatIsNoAmountIsNotLegible)
{
    Coluna coluna;
    EXPECT_FALSE(coluna.le("'abc'", 2).legivel);
    EXPECT_FALSE(coluna.le("x'00'", 2).legivel);
    EXPECT_FALSE(coluna.le("9e999", 2).legivel);
    EXPECT_FALSE(coluna.le("1e17", 2).legivel);
    EXPECT_FALSE(coluna.le("92233720368547759", 2).legivel);
    EXPECT_EQ(coluna.le("92233720368547758", 2).unidades, 9223372036854775800);
    EXPECT_EQ(textoBr(coluna.le("'abc'", 2)), "?");
    EXPECT_EQ(textoPonto(coluna.le("'abc'", 2)), "");
}

TEST(ShowDecimal, SumsThatDoNotFitAreNotLegible)
{
    EXPECT_FALSE((Decimal{INT64_MAX, 2, true} + Decimal{1, 2, true}).legivel);
    EXPECT_FALSE((Decimal{INT64_MIN, 2, true} - Decimal{1, 2, true}).legivel);
    EXPECT_FALSE((Decimal{1, 2, false} + Decimal{1, 2, true}).legivel);
    EXPECT_FALSE(comCasas({INT64_MAX, 2, true}, 3).legivel);
    EXPECT_EQ((Decimal{1250, 2, true} - Decimal{2000, 2, true}).unidades, -750);
    EXPECT_EQ(comCasas({-125, 2, true}, 4).unidades, -12500);
}

TEST(ShowDecimal, WritesAsTheTillDoes)
{
    EXPECT_EQ(textoBr({0, 2, true}), "0,00");
    EXPECT_EQ(textoBr({5, 2, true}), "0,05");
    EXPECT_EQ(textoBr({99999, 2, true}), "999,99");
    EXPECT_EQ(textoBr({100000, 2, true}), "1.000,00");
    EXPECT_EQ(textoBr({-123456789, 2, true}), "-1.234.567,89");
    EXPECT_EQ(textoBr({9210, 3, true}), "9,21");
    EXPECT_EQ(textoBr({9215, 3, true}), "9,215");
    EXPECT_EQ(textoBr({20000, 4, true}, 0), "2");
    EXPECT_EQ(textoBr({12350, 4, true}, 0), "1,235");
    EXPECT_EQ(textoBr({INT64_MIN, 2, true}), "-92.233.720.368.547.758,08");
}

TEST(ShowDecimal, WritesForPrograms)
{
    EXPECT_EQ(textoPonto({123456, 2, true}), "1234.56");
    EXPECT_EQ(textoPonto({-5, 2, true}), "-0.05");
    EXPECT_EQ(textoPonto({20000, 4, true}, 0), "2");
}

} // namespace
} // namespace bancada::relatorio
