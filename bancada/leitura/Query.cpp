#include "bancada/leitura/Query.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <sqlite3.h>
#include <stdexcept>

namespace bancada::leitura
{

void Query::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Query::Query(const DatabaseReading& database, const std::string& sql) : m_database(&database)
{
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(database.Handle(), sql.c_str(),
                                          static_cast<int>(sql.size()), &statement, nullptr);
    m_statement.reset(statement);
    if (result == SQLITE_ERROR) {
        throw Unusable(Tr("%1: not a logging database (%2)",
                          {database.Path(), TrForeign(sqlite3_errmsg(database.Handle()))}));
    }
    if (result != SQLITE_OK) {
        database.Fail();
    }
}

bool Query::Next()
{
    switch (sqlite3_step(m_statement.get())) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        End();
        return false;
    default:
        m_database->Fail();
    }
}

void Query::End()
{
    sqlite3_reset(m_statement.get());
}

void Query::Bind(int parameter, std::int64_t value)
{
    sqlite3_bind_int64(m_statement.get(), parameter, value);
}

void Query::Bind(int parameter, const std::optional<std::int64_t>& value)
{
    if (value) {
        Bind(parameter, *value);
    } else {
        sqlite3_bind_null(m_statement.get(), parameter);
    }
}

void Query::Bind(int parameter, const std::string& value)
{
    sqlite3_bind_text(m_statement.get(), parameter, value.data(), static_cast<int>(value.size()),
                      SQLITE_TRANSIENT);
}

int Query::Position(std::string_view column) const
{
    const int columns = sqlite3_column_count(m_statement.get());
    for (int i = 0; i < columns; ++i) {
        if (column == sqlite3_column_name(m_statement.get(), i)) {
            return i;
        }
    }
    throw std::logic_error("no such column in the query: " + std::string(column));
}

Integer Query::ReadInteger(const char* column) const
{
    return leitura::ReadInteger(Row(), Position(column), Nullable::NO);
}

Text Query::ReadText(const char* column) const
{
    return leitura::ReadText(Row(), Position(column), Nullable::NO);
}

Flag Query::ReadFlag(const char* column) const
{
    return leitura::ReadFlag(Row(), Position(column), Nullable::NO);
}

Amount Query::ReadAmount(const char* column, int decimals) const
{
    return leitura::ReadAmount(Row(), Position(column), Nullable::NO, decimals);
}

} // namespace bancada::leitura
