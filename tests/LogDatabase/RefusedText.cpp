#include "tests/LogDatabase/RefusedText.h"

#include <sqlite3.h>

namespace
{

int textsLeft = 0; // to the one that is refused; 0: none is

// The engine's limit for one text while a call of it lives.
class TextLimit
{
  public:
    explicit TextLimit(sqlite3* db) : m_db(textsLeft > 0 && --textsLeft == 0 ? db : nullptr)
    {
        if (m_db != nullptr) {
            m_before = sqlite3_limit(m_db, SQLITE_LIMIT_SQL_LENGTH, 1);
        }
    }
    ~TextLimit()
    {
        if (m_db != nullptr) {
            sqlite3_limit(m_db, SQLITE_LIMIT_SQL_LENGTH, m_before);
        }
    }
    TextLimit(const TextLimit&) = delete;
    TextLimit& operator=(const TextLimit&) = delete;

  private:
    sqlite3* m_db;
    int m_before = 0;
};

using ExecCallback = int (*)(void*, int, char**, char**);

} // namespace

RefusedText::RefusedText(int at)
{
    textsLeft = at;
}

RefusedText::~RefusedText()
{
    textsLeft = 0;
}

bool RefusedText::HasRefused() const
{
    return textsLeft == 0;
}

// The names are the linker's.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

int __real_sqlite3_exec(sqlite3* db, const char* sql, ExecCallback callback, void* argument,
                        char** errorText);

int __wrap_sqlite3_exec(sqlite3* db, const char* sql, ExecCallback callback, void* argument,
                        char** errorText)
{
    const TextLimit limit(db);
    return __real_sqlite3_exec(db, sql, callback, argument, errorText);
}

int __real_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail);

int __wrap_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail)
{
    const TextLimit limit(db);
    return __real_sqlite3_prepare_v2(db, sql, bytes, statement, tail);
}

int __real_sqlite3_prepare_v3(sqlite3* db, const char* sql, int bytes, unsigned flags,
                              sqlite3_stmt** statement, const char** tail);

int __wrap_sqlite3_prepare_v3(sqlite3* db, const char* sql, int bytes, unsigned flags,
                              sqlite3_stmt** statement, const char** tail)
{
    const TextLimit limit(db);
    return __real_sqlite3_prepare_v3(db, sql, bytes, flags, statement, tail);
}
}
// NOLINTEND(readability-identifier-naming)
