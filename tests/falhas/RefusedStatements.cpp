#include "tests/falhas/RefusedStatements.h"

#include <sqlite3.h>

#include <cstring>

namespace falhas
{

std::vector<std::string>& RefusedStatements()
{
    static std::vector<std::string> refused;
    return refused;
}

} // namespace falhas

extern "C" {

int __real_sqlite3_exec(sqlite3*, const char*, int (*)(void*, int, char**, char**), void*, char**);

// The linker puts this between the program and the engine. The bench's own statements are no
// INSERT and no UPDATE.
int __wrap_sqlite3_exec(sqlite3* db, const char* sql, int (*row)(void*, int, char**, char**),
                        void* argument, char** error)
{
    const int result = __real_sqlite3_exec(db, sql, row, argument, error);
    if (result != SQLITE_OK &&
        (std::strncmp(sql, "INSERT", 6) == 0 || std::strncmp(sql, "UPDATE", 6) == 0)) {
        falhas::RefusedStatements().emplace_back(sql);
    }
    return result;
}
}
