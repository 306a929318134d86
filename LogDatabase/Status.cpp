// What a service menu shows of the database.
#include "LogDatabase/LogDatabase.h"
#include "LogDatabase/Query.h"
#include "LogDatabase/Schema.h"

using namespace log_database;

const char* LogDatabase::Version()
{
    return ECF_VERSION;
}

int LogDatabase::SchemaVersion()
{
    return SCHEMA_VERSION;
}

bool LogDatabase::ReadOwn(const char* sql, std::int64_t& value)
{
    m_own = true;
    Query query(m_db, sql);
    const bool read = query.Next();
    if (read) {
        value = query.Integer(0);
    }
    m_own = false;
    return read;
}

std::int64_t LogDatabase::RoomBytes()
{
    std::int64_t most = 0;
    std::int64_t used = 0;
    std::int64_t unused = 0;
    if (!IsOpen() || !ReadOwn("PRAGMA max_page_count", most) ||
        !ReadOwn("PRAGMA page_count", used) || !ReadOwn("PRAGMA freelist_count", unused)) {
        return -1;
    }
    return (most - used + unused) * m_pageBytes;
}
