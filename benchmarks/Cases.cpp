#include "benchmarks/Cases.h"

#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

// Where the program stands between the library and what it calls: the linker's --wrap sends the
// library's calls of the engine through here, and the firmware's own functions are defined here.
// While a case is `watched`, its texts are kept.
struct Seam {
    static Case* watched;
    static int rateio;

    static void Note(const char* sql, bool isQuery)
    {
        if (watched != nullptr) {
            watched->m_texts.push_back({sql, isQuery});
        }
    }
    static void NoteRejection()
    {
        if (watched != nullptr) {
            watched->m_rejected = true;
        }
    }
};

Case* Seam::watched = nullptr;
int Seam::rateio = 0;

void Vindral_GravaLog(char*)
{
    Seam::NoteRejection();
}

int GetRatearSubtotal()
{
    return Seam::rateio;
}

extern "C" {
using Callback = int (*)(void*, int, char**, char**);
int __real_sqlite3_exec(sqlite3*, const char*, Callback, void*, char**);
int __real_sqlite3_prepare_v2(sqlite3*, const char*, int, sqlite3_stmt**, const char**);
int __real_sqlite3_step(sqlite3_stmt*);
const unsigned char* __real_sqlite3_column_text(sqlite3_stmt*, int);
int __real_sqlite3_finalize(sqlite3_stmt*);
void __real_sqlite3_free(void*);

int __wrap_sqlite3_exec(sqlite3* db, const char* sql, Callback callback, void* argument,
                        char** error)
{
    Seam::Note(sql, false);
    return __real_sqlite3_exec(db, sql, callback, argument, error);
}

int __wrap_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail)
{
    Seam::Note(sql, true);
    return __real_sqlite3_prepare_v2(db, sql, bytes, statement, tail);
}

int __wrap_sqlite3_step(sqlite3_stmt* statement)
{
    return __real_sqlite3_step(statement);
}

const unsigned char* __wrap_sqlite3_column_text(sqlite3_stmt* statement, int column)
{
    return __real_sqlite3_column_text(statement, column);
}

int __wrap_sqlite3_finalize(sqlite3_stmt* statement)
{
    return __real_sqlite3_finalize(statement);
}

void __wrap_sqlite3_free(void* block)
{
    __real_sqlite3_free(block);
}
}

namespace
{

void Run(sqlite3* db, const std::string& sql)
{
    if (__real_sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(db));
    }
}

void RunAll(sqlite3* db, const std::vector<std::string>& statements)
{
    for (const std::string& sql : statements) {
        Run(db, sql);
    }
}

std::string Schema()
{
    std::ifstream file(ECF_SCHEMA_FILE);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

Case::Case(const LoggerCase& logger)
    : m_rows(logger.rows), m_undo(logger.undo), m_command(logger.make(m_model))
{
    Seam::rateio = m_model.rateio;
    if (sqlite3_open(":memory:", &m_db) != SQLITE_OK) {
        throw std::runtime_error("no in-memory database");
    }
    Run(m_db, Schema());
    Run(m_db, "BEGIN");
    MakeRows();

    Seam::watched = this;
    Log();
    Seam::watched = nullptr;
    Undo();
}

Case::~Case()
{
    sqlite3_close(m_db);
}

void Case::MakeRows()
{
    RunAll(m_db, m_rows);
}

void Case::Log()
{
    m_command->DBLogger(m_db);
}

void Case::Execute()
{
    for (const Text& text : m_texts) {
        if (!text.isQuery) {
            m_command->DBLoggerExecuteSQL(m_db, text.sql.c_str());
            continue;
        }
        sqlite3_stmt* query = nullptr;
        sqlite3_prepare_v2(m_db, text.sql.c_str(), static_cast<int>(text.sql.size()) + 1, &query,
                           nullptr);
        sqlite3_step(query);
        sqlite3_column_text(query, 0);
        sqlite3_finalize(query);
    }
}

void Case::Undo()
{
    // Some loggers are required to leave their counting query open.
    while (sqlite3_stmt* open = sqlite3_next_stmt(m_db, nullptr)) {
        __real_sqlite3_finalize(open);
    }
    RunAll(m_db, m_undo);
}

void Case::Reset()
{
    Run(m_db, "ROLLBACK");
    Run(m_db, "BEGIN");
    MakeRows();
}
