#include "CmdDBLogger/ReceiptTable.h"

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalData/FiscalDataController.h"
#include "Interpreter.h"

namespace
{

ReceiptTable ChooseReceiptTable(Command& command)
{
    if (command.FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        return ReceiptTable::FISCAL;
    }
    if (command.FDController->Cupom_GetTipoCupom() == COMPROVANTE_NAO_FISCAL) {
        return ReceiptTable::NAO_FISCAL;
    }
    return ReceiptTable::NONE;
}

} // namespace

ReceiptTable BeginReceiptUpdate(StatementComposer& update, Command& command)
{
    const ReceiptTable table = ChooseReceiptTable(command);
    if (table == ReceiptTable::FISCAL) {
        update.Begin("UPDATE cupom_fiscal SET ");
    } else if (table == ReceiptTable::NAO_FISCAL) {
        update.Begin("UPDATE cupom_nf SET ");
    }
    return table;
}

ReceiptTable BeginItemUpdate(StatementComposer& update, Command& command)
{
    const ReceiptTable table = ChooseReceiptTable(command);
    if (table != ReceiptTable::NONE) {
        BeginItemUpdate(update, table);
    }
    return table;
}

void BeginItemUpdate(StatementComposer& update, ReceiptTable table)
{
    if (table == ReceiptTable::FISCAL) {
        update.Begin("UPDATE item_cupom_fiscal SET ");
    } else {
        update.Begin("UPDATE item_cupom_nf SET ");
    }
}

BOOL ExecuteForReceipt(StatementComposer& update, Command& command, sqlite3* db)
{
    update.Integer("WHERE cont_coo = %d", command.FDController->Contador_Get(COUNTER_COO));
    return update.Execute(command, db);
}
