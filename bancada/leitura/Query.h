// A query on a logging database, whose columns are read by their names.
#pragma once

#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace bancada::leitura
{

// For what the record types of Tables.h do not say: counts, joins. Lives no longer than its
// database. Begins at its first row, again after the last one.
class Query
{
  public:
    // Throws Unusable; a table or a column that is not there means the database of another program.
    Query(const DatabaseReading& database, const std::string& sql);

    // Begins anew with these values of ?1, ?2, ...: std::int64_t, std::optional of it (nothing is
    // NULL) or std::string.
    template <typename... Values>
    Query& With(const Values&... values)
    {
        End();
        int parameter = 0;
        (Bind(++parameter, values), ...);
        return *this;
    }

    // Steps to the next row; false after the last one. Throws Unusable when it cannot.
    bool Next();

    // Ends before the last row, so that the query holds no cursor.
    void End();

    // A column of the row by its name or alias in the SELECT. Throws std::logic_error for a name
    // that the SELECT does not have.
    Integer ReadInteger(const char* column) const;
    Text ReadText(const char* column) const;
    Flag ReadFlag(const char* column) const;
    Amount ReadAmount(const char* column, int decimals) const;

    // The row at hand, for those who read by a list of columns.
    sqlite3_stmt* Row() const { return m_statement.get(); }

  private:
    void Bind(int parameter, std::int64_t value);
    void Bind(int parameter, const std::optional<std::int64_t>& value);
    void Bind(int parameter, const std::string& value);
    int Position(std::string_view column) const;

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    const DatabaseReading* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace bancada::leitura
