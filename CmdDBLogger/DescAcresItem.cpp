// Discounts and surcharges on an item, and their cancellation.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

namespace
{

// Ends the statement with the row it is for and executes it.
BOOL ExecuteForItem(StatementComposer& update, Command& command, int numeroItem, sqlite3* db)
{
    update.Integer("WHERE cont_coo = %d", command.FDController->Contador_Get(COUNTER_COO));
    update.Integer(" and seq_item = %d", numeroItem);
    return update.Execute(command, db);
}

// Writes the total that the adjustment left. On a non-fiscal item it has a column of its own.
BOOL RewriteTotal(StatementComposer& update, Command& command, int numeroItem, sqlite3* db)
{
    const Financial total = command.FDController->Cupom_GetItemValorTotal(numeroItem - 1);

    if (command.FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        BeginItemUpdate(update, ReceiptTable::FISCAL);
        update.MoneyText("valor_total = %s ", total);
    } else {
        BeginItemUpdate(update, ReceiptTable::NAO_FISCAL);
        update.MoneyText("valor_total_liquido = %s ", total);
    }
    return ExecuteForItem(update, command, numeroItem, db);
}

} // namespace

BOOL CmdEfetuaDescAcresItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const int numeroItem =
        m_iNumeroItem == 0 ? FDController->Cupom_GetQuantidadeDeItens() : m_iNumeroItem;
    const ReceiptTable table = BeginItemUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }

    if (m_eOperacao == ACRESCIMO) {
        if (m_eTipoValor != VALOR) {
            update.Piece("tipo_acrescimo = 'P', ");
            update.PercentText("perc_acrescimo = %.2f, ", m_Valor);
        } else {
            update.Piece("tipo_acrescimo = 'V', ");
            if (table != ReceiptTable::FISCAL) { // required: there the percentage stays
                update.Piece("perc_acrescimo = 0, ");
            }
        }
        update.MoneyText("valor_acrescimo = %s ",
                         FDController->Cupom_GetItemValorAcr(numeroItem - 1));
    } else if (m_eOperacao == DESCONTO) {
        if (m_eTipoValor != VALOR) {
            update.Piece("tipo_desconto = 'P', ");
            update.PercentText("perc_desconto = %.2f, ", m_Valor);
        } else {
            update.Piece("tipo_desconto = 'V', perc_desconto = 0, ");
        }
        update.MoneyText("valor_desconto = %s ",
                         FDController->Cupom_GetItemValorDesc(numeroItem - 1));
    }
    if (ExecuteForItem(update, *this, numeroItem, db) == FALSE) {
        return FALSE;
    }
    return RewriteTotal(update, *this, numeroItem, db);
}

BOOL CmdCancelaDescAcresItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const int numeroItem = m_iNumeroItem; // 0 has no meaning of its own here
    const ReceiptTable table = BeginItemUpdate(update, *this);
    if (table == ReceiptTable::NONE) {
        return FALSE;
    }

    if (m_eOperacao == ACRESCIMO) {
        update.Piece("valor_canc_acrescimo = valor_acrescimo, "
                     "valor_acrescimo = 0 ");
    } else if (m_eOperacao == DESCONTO) {
        update.MoneyText("valor_desconto = %s ",
                         FDController->Cupom_GetItemValorDesc(numeroItem - 1));
    }
    if (ExecuteForItem(update, *this, numeroItem, db) == FALSE) {
        return FALSE;
    }
    return RewriteTotal(update, *this, numeroItem, db);
}
