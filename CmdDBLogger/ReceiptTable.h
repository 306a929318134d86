// Which tables the open receipt's rows lie in.
#pragma once

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalData/FiscalDataController.h"
#include "Interpreter.h"

enum class ReceiptTable {
    FISCAL,     // cupom_fiscal, item_cupom_fiscal
    NAO_FISCAL, // cupom_nf, item_cupom_nf
    NONE,       // a receipt of neither type: nothing is to be written
};

// Asks the receipt's type; a receipt that is not fiscal is asked once more, as required.
inline ReceiptTable ChooseReceiptTable(Command& command)
{
    if (command.FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        return ReceiptTable::FISCAL;
    }
    if (command.FDController->Cupom_GetTipoCupom() == COMPROVANTE_NAO_FISCAL) {
        return ReceiptTable::NAO_FISCAL;
    }
    return ReceiptTable::NONE;
}

// Begin the update of the receipt's row, or of an item's. REQUIRES: the table
// is not NONE.
inline void BeginReceiptUpdate(StatementComposer& update, ReceiptTable table)
{
    update.Begin(table == ReceiptTable::FISCAL ? "UPDATE cupom_fiscal SET "
                                               : "UPDATE cupom_nf SET ");
}

inline void BeginItemUpdate(StatementComposer& update, ReceiptTable table)
{
    update.Begin(table == ReceiptTable::FISCAL ? "UPDATE item_cupom_fiscal SET "
                                               : "UPDATE item_cupom_nf SET ");
}
