// The cancellation of a receipt, while it is being issued and afterwards.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

// The receipt is the one the counter names, the keyword in upper case: required, unlike below.
BOOL CmdCancelaCupomFiscalNfEmEmissao::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const ReceiptTable table = BeginReceiptUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }
    update.Piece("id_cancelado = 'S' ");
    update.Integer("WHERE cont_coo = '%d'", FDController->Contador_Get(COUNTER_COO));
    return update.Execute(*this, db);
}

// The receipt is the one the command names, the keyword in lower case: required, unlike above. Only
// the cancellation of a non-fiscal receipt is recorded as a document of its own.
BOOL CmdCancelaCupom::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const ReceiptTable table = BeginReceiptUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }
    update.Piece("id_cancelado = 'S' ");
    update.Integer("where cont_coo = '%d'", m_iCOOCancelado);
    const BOOL executed = update.Execute(*this, db);
    if (executed == FALSE || table == ReceiptTable::FISCAL) {
        return executed;
    }
    return OutrosDocumentosDBLogger(db, "NC");
}
