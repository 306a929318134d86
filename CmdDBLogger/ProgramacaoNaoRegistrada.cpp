// Programming that leaves no trace in the logging database.
#include "FiscalCommands.h"

BOOL CmdInsereAliquota::DBLogger(sqlite3*)
{
    return TRUE;
}

BOOL CmdHabilitaTotalizadores::DBLogger(sqlite3*)
{
    return TRUE;
}

BOOL CmdDesabilitaTotalizadores::DBLogger(sqlite3*)
{
    return TRUE;
}

BOOL CmdProgramaLoja::DBLogger(sqlite3*)
{
    return TRUE;
}
