// The cancellation of an item.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdCancelaItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    if (FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        update.Begin("UPDATE item_cupom_fiscal SET ");
    } else {
        update.Begin("UPDATE item_cupom_nf SET ");
    }
    update.Piece("id_cancelado = 'S' ");
    // Required text: quoted numbers and lower-case keywords.
    update.Integer("where cont_coo = '%d' ", FDController->Contador_Get(COUNTER_COO));
    update.Integer("and seq_item = '%d'", m_iNumeroItem);
    return update.Execute(*this, db);
}
