#include "CmdDBLogger/CountingQuery.h"

#include "CmdDBLogger/StatementComposer.h"

#include <cstdlib>
#include <sqlite3.h>

int CountRows(sqlite3* db, const StatementComposer& query, int otherwise)
{
    CountingQuery counting(db, query);
    const int rows = counting.Count(otherwise);
    counting.Finalize();
    return rows;
}

CountingQuery::CountingQuery(sqlite3* db, const StatementComposer& query)
{
    // The result is not looked at: what could not be prepared stays null, and stepping that yields
    // no row. The byte count includes the terminator, which spares the engine a copy of the text.
    sqlite3_prepare_v2(db, query.Sql(), query.Length() + 1, &m_statement, nullptr);
    m_result = sqlite3_step(m_statement);
}

bool CountingQuery::HasRow() const
{
    return m_result == SQLITE_ROW;
}

int CountingQuery::Count(int otherwise) const
{
    if (!HasRow()) {
        return otherwise;
    }
    const unsigned char* text = sqlite3_column_text(m_statement, 0);
    return text == nullptr ? otherwise : std::atoi(reinterpret_cast<const char*>(text));
}

void CountingQuery::Finalize()
{
    sqlite3_finalize(m_statement);
    m_statement = nullptr;
}
