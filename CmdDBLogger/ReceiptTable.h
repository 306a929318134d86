// Which tables the open receipt's rows lie in.
#pragma once

#include "FiscalData/FiscalDataController.h"

enum class ReceiptTable {
    FISCAL,     // cupom_fiscal, item_cupom_fiscal
    NAO_FISCAL, // cupom_nf, item_cupom_nf
    NONE,       // a receipt of neither type: nothing is to be written
};

// Asks the receipt's type; a receipt that is not fiscal is asked once more, as required.
inline ReceiptTable ChooseReceiptTable(FiscalDataController& controller)
{
    if (controller.Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        return ReceiptTable::FISCAL;
    }
    if (controller.Cupom_GetTipoCupom() == COMPROVANTE_NAO_FISCAL) {
        return ReceiptTable::NAO_FISCAL;
    }
    return ReceiptTable::NONE;
}
