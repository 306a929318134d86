// Discounts and surcharges on the subtotal, and their cancellation.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

// The rows differ on purpose: by percentage only the fiscal surcharge says its kind, the others
// leave the 'V' of the opening; by value only a fiscal receipt has its percentage reset.
BOOL CmdEfetuaDescAcresSubtotal::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const ReceiptTable table = BeginReceiptUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }
    const bool fiscal = table == ReceiptTable::FISCAL;

    if (m_eOperacao == ACRESCIMO) {
        if (m_eTipoValor != VALOR) {
            if (fiscal) {
                update.Piece("tipo_acrescimo = 'P', ");
            }
            update.PercentText("perc_acrescimo = %.2f, ", m_Valor);
        } else {
            update.Piece("tipo_acrescimo = 'V', ");
            if (fiscal) {
                update.Piece("perc_acrescimo = 0, ");
            }
        }
        update.MoneyText("valor_acrescimo = %s ", FDController->Cupom_GetSTValorDescAcr());
    } else if (m_eOperacao == DESCONTO) {
        if (m_eTipoValor != VALOR) {
            update.PercentText("perc_desconto = %.2f, ", m_Valor);
        } else {
            update.Piece("tipo_desconto = 'V', ");
            if (fiscal) {
                update.Piece("perc_desconto = 0, ");
            }
        }
        update.MoneyText("valor_desconto = %s ", FDController->Cupom_GetSTValorDescAcr());
    }
    return ExecuteForReceipt(update, *this, db);
}

BOOL CmdCancelaDescAcresSubtotal::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const ReceiptTable table = BeginReceiptUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }

    // Required to be asked whatever the operation.
    const Financial aplicado = FDController->Cupom_GetSTValorDescAcr();
    const Financial cancelado = FDController->Cupom_GetSTValorCanceladoDescAcr();
    const Financial valor = aplicado - cancelado;
    if (m_eOperacao == ACRESCIMO) {
        update.Piece("valor_canc_acrescimo = valor_acrescimo, ");
        update.MoneyText("valor_acrescimo = %s ", valor);
    } else if (m_eOperacao == DESCONTO) {
        update.MoneyText("valor_desconto = %s ", valor);
    }
    return ExecuteForReceipt(update, *this, db);
}
