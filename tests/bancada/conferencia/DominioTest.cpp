// What a cell may hold, at the edges of every domain.
#include "bancada/conferencia/Dominio.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace bancada::conferencia
{
namespace
{

using leitura::Domain;

class Dominio : public testing::Test
{
  protected:
    Dominio() { sqlite3_open(":memory:", &m_db); }
    ~Dominio() override { sqlite3_close(m_db); }

    // Whether the value, as SQL writes it, is within.
    bool Is(Domain domain, const std::string& value)
    {
        sqlite3_stmt* row = nullptr;
        const std::string sql = "SELECT " + value;
        EXPECT_EQ(sqlite3_prepare_v2(m_db, sql.c_str(), -1, &row, nullptr), SQLITE_OK) << sql;
        EXPECT_EQ(sqlite3_step(row), SQLITE_ROW);
        const bool within = IsWithin(row, 0, domain, leitura::Presence::ALWAYS);
        sqlite3_finalize(row);
        return within;
    }

  private:
    sqlite3* m_db = nullptr;
};

TEST(DominioText, AnInstantIsADayAndATimeThatThereIs)
{
    for (const char* good : {"1970-01-01 00:00:00", "2106-12-31 23:59:59", "2024-02-29 12:30:30",
                             "2000-02-29 00:00:00", "2023-02-28 00:00:00", "2024-04-30 00:00:00",
                             "2024-12-31 00:00:00"}) {
        EXPECT_TRUE(IsInstant(good)) << good;
    }
    for (const char* bad : {"1969-12-31 00:00:00", "2107-01-01 00:00:00", "2024-00-01 00:00:00",
                            "2024-13-01 00:00:00", "2024-01-00 00:00:00", "2024-01-32 00:00:00",
                            "2023-02-29 00:00:00", "2100-02-29 00:00:00", "2024-02-30 00:00:00",
                            "2024-04-31 00:00:00", "2024-01-01 24:00:00", "2024-01-01 00:60:00",
                            "2024-01-01 00:00:60", "2024-01-01 00:00", "2024-01-01 00:00:0x",
                            "2024/01-01 00:00:00", "2024-01-01T00:00:00", ""}) {
        EXPECT_FALSE(IsInstant(bad)) << bad;
    }
}

TEST(DominioText, ATaxCodeIsOneThatTheLoggersWrite)
{
    for (const char* good : {"01T18.00", "30S05.00", "F1", "I2", "N3", "FS1", "IS2", "NS3"}) {
        EXPECT_TRUE(IsTaxCode(good)) << good;
    }
    for (const char* bad :
         {"00T18.00", "31T18.00", "01X18.00", "0xT18.00", "01Tx8.00", "01T18,00", "01T18.0x",
          "01T18.0", "01T18.000", "F0", "F4", "X1", "FX1", "F", "FS", "FSS1", "F1S", ""}) {
        EXPECT_FALSE(IsTaxCode(bad)) << bad;
    }
}

TEST_F(Dominio, ASignatureIsBase64OrABlank)
{
    for (const char* good : {"' '", "'YWJj'", "'YWI='", "'YQ=='", "'AZaz09+/'"}) {
        EXPECT_TRUE(Is(Domain::SIGNATURE, good)) << good;
    }
    for (const char* bad : {"''", "'YWJ'", "'Y==='", "'YQ=x'", "'=WJj'", "'Y.Jj'", "'YW{j'",
                            "'YW[j'", "'YW@j'", "'YW`j'", "'YW:j'", "NULL", "1"}) {
        EXPECT_FALSE(Is(Domain::SIGNATURE, bad)) << bad;
    }
}

TEST_F(Dominio, ADayIsAnInstantAtMidnight)
{
    EXPECT_TRUE(Is(Domain::DAY, "'2024-01-01 00:00:00'"));
    EXPECT_FALSE(Is(Domain::DAY, "'2024-01-01 00:00:01'"));
    EXPECT_FALSE(Is(Domain::DAY, "'2024-01-32 00:00:00'"));
}

TEST_F(Dominio, NumbersHaveTheirFirstAndTheirLast)
{
    const struct {
        Domain domain;
        long long first, last;
    } all[] = {{Domain::COUNTER, 1, 999999},
               {Domain::COUNTER_OR_ZERO, 0, 999999},
               {Domain::NEXT_COUNTER, 1, 1000000},
               {Domain::ECF, 1, 1},
               {Domain::ITEM, 1, 999},
               {Domain::MEIO, 1, 20},
               {Domain::MEIO_OR_TROCO, 1, 21},
               {Domain::TOTALIZADOR_NF, 1, 39},
               {Domain::PARCELAS, 0, 99},
               {Domain::CAIXA, 0, 999},
               {Domain::CASAS, 0, 3}};
    for (const auto& one : all) {
        SCOPED_TRACE(MeaningOf(one.domain));
        EXPECT_FALSE(Is(one.domain, std::to_string(one.first - 1)));
        EXPECT_TRUE(Is(one.domain, std::to_string(one.first)));
        EXPECT_TRUE(Is(one.domain, std::to_string(one.last)));
        EXPECT_FALSE(Is(one.domain, std::to_string(one.last + 1)));
        EXPECT_FALSE(Is(one.domain, "'1'"));
    }
    EXPECT_TRUE(Is(Domain::SECONDS, "9223372036854775807"));
    EXPECT_FALSE(Is(Domain::SECONDS, "-1"));
}

TEST_F(Dominio, AmountsHaveThem)
{
    EXPECT_TRUE(Is(Domain::MONEY, "0"));
    EXPECT_FALSE(Is(Domain::MONEY, "-0.01"));
    EXPECT_TRUE(Is(Domain::SIGNED_MONEY, "-0.01"));
    EXPECT_TRUE(Is(Domain::MONEY_OF_ITEM, "0"));
    EXPECT_FALSE(Is(Domain::MONEY_OF_ITEM, "-0.001"));
    EXPECT_TRUE(Is(Domain::QUANTITY, "0.001"));
    EXPECT_FALSE(Is(Domain::QUANTITY, "0"));
    EXPECT_TRUE(Is(Domain::PERCENT, "999.99"));
    EXPECT_FALSE(Is(Domain::PERCENT, "1000"));
    EXPECT_FALSE(Is(Domain::PERCENT, "-0.01"));
}

TEST_F(Dominio, LettersAreThoseOfTheirColumn)
{
    const struct {
        Domain domain;
        const char* good;
        const char* bad;
    } all[] = {{Domain::FLAG, "'S'", "'s'"},
               {Domain::FLAG, "'N'", "''"},
               {Domain::KIND, "'V'", "'A'"},
               {Domain::KIND, "'P'", "''"},
               {Domain::ROUNDING, "'A'", "'L'"},
               {Domain::ROUNDING, "'T'", "''"},
               {Domain::MODE, "'L'", "'A'"},
               {Domain::MODE, "'T'", "''"},
               {Domain::DOCUMENT_TYPE, "'RZ'", "'ZR'"},
               {Domain::UF, "'SP'", "'XX'"},
               {Domain::CNPJ, "'11222333000181'", "'11222333000182'"},
               {Domain::NAME, "'x'", "''"},
               {Domain::TEXT, "''", "1"}};
    for (const auto& one : all) {
        SCOPED_TRACE(MeaningOf(one.domain));
        EXPECT_TRUE(Is(one.domain, one.good)) << one.good;
        EXPECT_FALSE(Is(one.domain, one.bad)) << one.bad;
    }
}

} // namespace
} // namespace bancada::conferencia
