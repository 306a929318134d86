// Every cell of a database with what it cannot hold.
#include "tests/bancada/conferencia/CheckedDatabase.h"
#include "tests/support/Rows.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

class AnyValue : public CheckedDatabase
{
  protected:
    AnyValue() { Execute(CLEAN_DAYS); }

    // What check finds with `value` in the first row of each column of each table in turn, where
    // that row holds a value of one of the types.
    template <class Judge>
    void ForEachCell(const std::string& value, const std::string& types, const Judge& judge)
    {
        const std::vector<std::string> columns = test_support::Rows(
            Path(), "SELECT t.name || '|' || c.name FROM sqlite_schema AS t,"
                    " pragma_table_info(t.name) AS c WHERE t.type = 'table' AND c.pk = 0");
        const std::string clean = folder.Read("registro.db");
        for (const std::string& one : columns) {
            const std::size_t bar = one.find('|');
            const std::string table = one.substr(0, bar);
            const std::string column = one.substr(bar + 1);
            const std::string held = "SELECT 1 FROM " + table + " WHERE rowid = 1 AND typeof(" +
                                     column + ") IN (" + types + ")";
            if (test_support::Rows(Path(), held).empty()) {
                continue;
            }
            ++cells;
            SCOPED_TRACE(table + "." + column + " = " + value);
            Execute("UPDATE " + table + " SET " + column + " = " + value + " WHERE rowid = 1");
            judge(Faults(), table + " row 1: " + column + " holds ");
            folder.Write("registro.db", clean);
        }
    }

    int cells = 0;
};

// The fault names the cell, whatever else follows from it.
TEST_F(AnyValue, BytesAreATextOrANumberNowhere)
{
    ForEachCell("x'00'", "'integer', 'real', 'text', 'null'",
                [](const std::vector<std::string>& found, const std::string& cell) {
                    EXPECT_THAT(found,
                                testing::Contains(testing::HasSubstr("valor-invalido: " + cell)));
                });
    EXPECT_GT(cells, 100);
}

// One out of its domain is named; a counter or an amount that may be as large agrees with nothing.
// Of a time spent nothing else tells.
TEST_F(AnyValue, NumbersThatAreTooLargeOrTooSmallAreNeverTakenInSilence)
{
    for (const char* value : {"9223372036854775807", "-1"}) {
        ForEachCell(value, "'integer', 'real'",
                    [](const std::vector<std::string>& found, const std::string& cell) {
                        EXPECT_TRUE(!found.empty() ||
                                    cell.find("tempo_emitindo_doc") != std::string::npos);
                    });
    }
    EXPECT_GT(cells, 100);
}

} // namespace
} // namespace bancada::conferencia_test
