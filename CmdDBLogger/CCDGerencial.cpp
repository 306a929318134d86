// Credit/debit vouchers and management reports.
#include "FiscalCommands.h"

BOOL CmdAbreCCD::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDBLogger(db, "CC");
}

BOOL CmdAbreEstornoCCD::DBLogger(sqlite3*)
{
    return TRUE; // a reversal is not logged
}

BOOL CmdAbreGerencial::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDBLogger(db, "RG");
}

BOOL CmdFechaCCDGerencial::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDataFinalUpdate(db);
}
