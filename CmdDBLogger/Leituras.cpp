// Readings.
#include "FiscalCommands.h"

BOOL CmdLeituraX::DBLogger(sqlite3* db)
{
    // A reading sent to a file is not a document.
    if (m_eMidia == ARQUIVO) {
        return TRUE;
    }
    return OutrosDocumentosDBLogger(db, "LX");
}

BOOL CmdLeituraMF::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDBLogger(db, "MF");
}
