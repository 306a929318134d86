// The cancellation of an item.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdCancelaItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    // Every other type of receipt counts as non-fiscal here.
    const bool fiscal = FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL;

    BeginItemUpdate(update, fiscal ? ReceiptTable::FISCAL : ReceiptTable::NAO_FISCAL);
    update.Piece("id_cancelado = 'S' ");
    // Required text: quoted numbers and lower-case keywords.
    update.Integer("where cont_coo = '%d' ", FDController->Contador_Get(COUNTER_COO));
    update.Integer("and seq_item = '%d'", m_iNumeroItem);
    return update.Execute(*this, db);
}
