// The smallest firmware: programs a non-fiscal totalizer, and finds it in the logging database.
#include "FiscalCommands.h"
#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sqlite3.h>
#include <string>

void Vindral_GravaLog(char* text)
{
    std::puts(text);
}
int GetRatearSubtotal()
{
    return 0;
}

int main()
{
    sqlite3* db = nullptr;
    sqlite3_open(":memory:", &db);
    std::ifstream schema(SCHEMA);
    const std::string sql{std::istreambuf_iterator<char>(schema), {}};
    sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    CmdInsereRegOpeNF command;
    command.m_iIndice = 5;
    std::strcpy(command.m_sDescricao, "ESTACIONAMENTO");
    command.DBLogger(db);
    sqlite3_exec(
        db, "SELECT * FROM totalizador_nao_fiscal",
        [](void*, int, char** row, char**) {
            return int(std::printf("%s %s\n", row[0], row[1]) < 0);
        },
        nullptr, nullptr);
    while (sqlite3_stmt* left = sqlite3_next_stmt(db, nullptr)) { // by the logger, as required
        sqlite3_finalize(left);
    }
    return sqlite3_close(db);
}
