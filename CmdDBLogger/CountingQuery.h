// The query that counts the rows already carrying a key, before an insert.
#pragma once

class StatementComposer;
struct sqlite3;
struct sqlite3_stmt;

// Prepares and steps a SELECT count(*) when it is made. It has no destructor on purpose: some
// loggers are required to leave their statement open, and whoever called the logger then releases
// it (sqlite3_next_stmt finds it). The others call Finalize.
class CountingQuery
{
  public:
    // A query that cannot be prepared yields no row.
    CountingQuery(sqlite3* db, const StatementComposer& query);

    // Whether the step yielded a row.
    bool HasRow() const;

    // The count; `otherwise` when there is no row or it holds no text. To be asked before Finalize.
    int Count(int otherwise) const;

    void Finalize();

  private:
    sqlite3_stmt* m_statement = nullptr;
    int m_result;
};
