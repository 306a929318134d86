#include "tests/LogDatabase/LogDatabaseTest.h"

#include "MfdServices/GravaLog.h"
#include "tests/LogDatabase/HeapCount.h"

namespace
{

// Before anything else of the program uses the engine.
[[maybe_unused]] const bool PREPARED = LogDatabase::PrepareEngine();

} // namespace

std::vector<std::string>& Entries()
{
    static std::vector<std::string> entries;
    return entries;
}

void Vindral_GravaLog(char* text)
{
    const TestsOwnBlocks own;
    Entries().emplace_back(text);
}

LogDatabaseOptions LogDatabaseTest::Brief()
{
    LogDatabaseOptions options;
    options.busyTimeoutMs = 20;
    return options;
}

LogFault LogDatabaseTest::Open(const LogDatabaseOptions& options)
{
    return database.Open(Path().c_str(), options);
}

void LogDatabaseTest::Execute(const std::string& sql)
{
    if (sqlite3_exec(database.Handle(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        Entries().push_back("rejected: " + sql);
    }
}

void LogDatabaseTest::Insert(int value)
{
    Execute("INSERT INTO versao_sb VALUES (" + std::to_string(value) + ", 'v')");
}

LogOutcome LogDatabaseTest::Command(const std::vector<std::string>& statements)
{
    database.Begin();
    for (const std::string& sql : statements) {
        Execute(sql);
    }
    return database.Commit();
}

LogOutcome LogDatabaseTest::NumberedCommand(int number, int value)
{
    database.Begin();
    Insert(value);
    database.NumberCommand(number);
    return database.Commit();
}

std::vector<std::string> LogDatabaseTest::Lines(const std::string& sql) const
{
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(Path().c_str(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    sqlite3_stmt* query = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &query, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db);
    std::vector<std::string> lines;
    while (sqlite3_step(query) == SQLITE_ROW) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(query, 0));
        lines.emplace_back(text == nullptr ? "NULL" : text);
    }
    EXPECT_EQ(sqlite3_finalize(query), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
    return lines;
}

std::string LogDatabaseTest::Rows(const std::string& sql) const
{
    std::string rows;
    for (const std::string& line : Lines(sql)) {
        rows += (rows.empty() ? "" : " ") + line;
    }
    return rows;
}

void LogDatabaseTest::Plain(const std::string& sql) const
{
    Other(Path()).Run(sql);
}

int LogDatabaseTest::CountEntries(const std::string& text)
{
    int count = 0;
    for (const std::string& entry : Entries()) {
        count += entry.find(text) != std::string::npos ? 1 : 0;
    }
    return count;
}

Other::Other(const std::string& path)
{
    EXPECT_EQ(sqlite3_open(path.c_str(), &m_db), SQLITE_OK);
}

std::string Other::Run(const std::string& sql)
{
    std::string first;
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(
                  m_db, sql.c_str(),
                  [](void* out, int, char** values, char**) {
                      auto& text = *static_cast<std::string*>(out);
                      if (text.empty() && values[0] != nullptr) {
                          text = values[0];
                      }
                      return 0;
                  },
                  &first, &error),
              SQLITE_OK)
        << sql << ": " << error;
    sqlite3_free(error);
    return first;
}
