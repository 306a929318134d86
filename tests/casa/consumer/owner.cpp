// The smallest owner: a statement of a command, kept in the database whose name it is given.
#include "LogDatabase/LogDatabase.h"
#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <sqlite3.h>

void Vindral_GravaLog(char* text)
{
    std::puts(text);
}

int main(int argc, char** argv)
{
    LogDatabase::PrepareEngine();
    LogDatabase database;
    if (argc != 2 || database.Open(argv[1]) != LogFault::NONE) {
        std::puts(database.Text());
        return 1;
    }
    database.Begin();
    sqlite3_exec(database.Handle(), "INSERT INTO totalizador_nao_fiscal VALUES (5, 'X')", nullptr,
                 nullptr, nullptr);
    const LogOutcome outcome = database.Commit();
    std::puts(outcome.state == LogState::KEPT ? "kept" : outcome.text);
    return 0;
}
