// A caller that programs a non-fiscal totalizer into the logging database that it makes, for every
// mix of its own flags with the library's. WITH_DERIVED: it derives from a command class, as a
// command layer does. Nothing of the C++ runtime is used here.
#include "FiscalCommands.h"
#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"

#include <sqlite3.h>
#include <stdio.h>
#include <string.h>

void Vindral_GravaLog(char* text)
{
    puts(text);
}
int GetRatearSubtotal()
{
    return 0;
}

#ifdef WITH_DERIVED
class Programming : public CmdInsereRegOpeNF
{
  public:
    BOOL Fiscal() override { return TRUE; }
};
#else
using Programming = CmdInsereRegOpeNF;
#endif

int main()
{
    static char schema[65536];
    FILE* file = fopen(SCHEMA, "rb");
    if (file == nullptr || fread(schema, 1, sizeof schema - 1, file) == 0) {
        return 1;
    }
    fclose(file);
    sqlite3* db = nullptr;
    if (sqlite3_open(":memory:", &db) != SQLITE_OK ||
        sqlite3_exec(db, schema, nullptr, nullptr, nullptr) != SQLITE_OK) {
        return 1;
    }
    Programming command;
    Command* base = &command;
    command.m_iIndice = 5;
    strcpy(command.m_sDescricao, "ESTACIONAMENTO");
    if (base->Fiscal() != TRUE || base->DBLogger(db) != TRUE) {
        return 1;
    }
    while (sqlite3_stmt* left = sqlite3_next_stmt(db, nullptr)) { // by the logger, as required
        sqlite3_finalize(left);
    }
    sqlite3_stmt* rows = nullptr;
    sqlite3_prepare_v2(db, "SELECT * FROM totalizador_nao_fiscal", -1, &rows, nullptr);
    while (sqlite3_step(rows) == SQLITE_ROW) {
        printf("%s %s\n", sqlite3_column_text(rows, 0), sqlite3_column_text(rows, 1));
    }
    sqlite3_finalize(rows);
    return sqlite3_close(db);
}
