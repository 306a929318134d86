// The one place through which every statement goes to the engine.
#include "CmdDBLogger/RejectedStatement.h"
#include "Interpreter.h"

#include <sqlite3.h>

BOOL Command::DBLoggerExecuteSQL(sqlite3* db, const char* sql)
{
    char* errorText = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &errorText) != SQLITE_OK) {
        ReportRejectedStatement(m_eCmdType, errorText, sql);
    }
    sqlite3_free(errorText);
    return TRUE;
}
