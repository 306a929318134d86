// The whole reconciliation: what is left on purpose is no fault, and of each planted fault exactly
// what must be found is found.
#include "bancada/Unusable.h"
#include "bancada/leitura/Tables.h"
#include "tests/bancada/conferencia/PlantedFault.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class Conferencia : public CheckedDatabase
{
};

TEST_F(Conferencia, AnEmptyDatabaseIsClean)
{
    Check();
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(summary.faults, 0);
    EXPECT_EQ(summary.notes, 0);
}

TEST_F(Conferencia, WhatTheLoggersLeaveOnPurposeIsNoFault)
{
    Execute(CLEAN_DAYS);
    Check();
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_EQ(notes, CLEAN_NOTES);
    EXPECT_EQ(summary.rows.cupons, 7);
    EXPECT_EQ(summary.rows.cuponsNf, 4);
    EXPECT_EQ(summary.rows.reducoes, 2);
    EXPECT_EQ(summary.faults, 0);
    EXPECT_EQ(summary.notes, 2);
}

TEST_F(Conferencia, AnotherProgramsDatabaseIsRefused)
{
    Execute(CLEAN_DAYS);
    Execute("DROP TABLE moeda");
    EXPECT_THROW(Check(), Unusable);
    // Before anything is told of it.
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_THAT(notes, IsEmpty());
}

// Of a receipt and of its Z.
TEST_F(Conferencia, AnAmountThatIsNoneAgreesWithNothingAndIsShown)
{
    const struct {
        const char* literal;
        const char* shown;
    } values[] = {
        {"NULL", "NULL"},
        {"'15,48'", "15,48"},
        {"9223372036854775807", "9223372036854775807"},
        {"-9223372036854775807 - 1", "-9223372036854775808"},
        {"1e300", "1.0e+300"},
        {"x'00FF'", "X'00FF'"},
        {"CAST(x'31003900' AS TEXT)", "1?9?"},
    };
    Execute(CLEAN_DAYS);
    for (const auto& value : values) {
        SCOPED_TRACE(value.literal);
        const std::string shown = value.shown;
        Execute(std::string("UPDATE cupom_fiscal SET valor_total = ") + value.literal +
                " WHERE cont_coo = 3");
        EXPECT_THAT(
            Faults(),
            ElementsAre("valor-invalido: cupom_fiscal row 1: valor_total holds " + shown +
                            ", where an amount, none below zero is due",
                        "cupom-total: COO 3: total " + shown +
                            ", subtotal 15.48 less 0.00 plus 0.00",
                        "cupom-pagamentos: COO 3: payments 20.00 less change 4.52, total " + shown,
                        "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts ?",
                        "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts ?"));
    }
}

// Whatever a row holds, the reconciliation comes to its end; sanitizers see that it does so well.
TEST_F(Conferencia, HostileRowsAreReadToTheEnd)
{
    const char* const values[] = {"NULL",
                                  "9223372036854775807",
                                  "-9223372036854775807 - 1",
                                  "'x'",
                                  "CAST(x'6100FF' AS TEXT)",
                                  "x'00FF'",
                                  "1e300",
                                  "0.005"};
    Execute(CLEAN_DAYS);
    leitura::ForEachTable([&](const auto& table) {
        for (const char* value : values) {
            SCOPED_TRACE(table.Name() + " = " + value);
            std::string columns;
            for (const auto& column : table.Columns()) {
                // The row's own number holds an integer alone.
                if (table.Name() + "." + column.name != "dados_ecf.num_ecf") {
                    columns +=
                        (columns.empty() ? "" : ", ") + std::string(column.name) + " = " + value;
                }
            }
            Execute("CREATE TABLE kept AS SELECT * FROM " + table.Name());
            Execute("UPDATE " + table.Name() + " SET " + columns +
                    " WHERE rowid = (SELECT max(rowid) FROM " + table.Name() + ")");
            EXPECT_NO_THROW(Check());
            Execute("DELETE FROM " + table.Name() + "; INSERT INTO " + table.Name() +
                    " SELECT * FROM kept; DROP TABLE kept");
        }
    });
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_P(Planted, IsFound)
{
    Execute(CLEAN_DAYS);
    Execute(GetParam().sql);
    Check();
    EXPECT_EQ(faults, GetParam().faults);
    EXPECT_EQ(notes, GetParam().notes);
    EXPECT_EQ(summary.faults, static_cast<std::int64_t>(faults.size()));
    EXPECT_EQ(summary.notes, static_cast<std::int64_t>(notes.size()));
}

} // namespace
} // namespace bancada::conferencia_test
