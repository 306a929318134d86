// The query that counts the rows already carrying a key, before an insert:
// CountRows, wherever a logger is not required to treat its query in a way of
// its own.
#pragma once

class StatementComposer;
struct sqlite3;
struct sqlite3_stmt;

// Runs the SELECT count(*) that `query` holds and answers its count;
// `otherwise` where there is none: the query cannot be prepared, yields no row
// or a null. Leaves no statement open.
int CountRows(sqlite3* db, const StatementComposer& query, int otherwise = 0);

// The same step by step, for the loggers that are required to stop where there
// is no row, or to leave their statement open: whoever called the logger then
// releases it (sqlite3_next_stmt finds it). It is prepared and stepped when it
// is made, and has no destructor on purpose.
class CountingQuery
{
  public:
    // A query that cannot be prepared yields no row.
    CountingQuery(sqlite3* db, const StatementComposer& query);

    // Whether the step yielded a row.
    bool HasRow() const;

    // The count; `otherwise` where there is none. To be asked before Finalize.
    int Count(int otherwise) const;

    void Finalize();

  private:
    sqlite3_stmt* m_statement = nullptr;
    int m_result;
};
