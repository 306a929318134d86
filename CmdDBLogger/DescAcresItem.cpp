// Discounts and surcharges on an item, and their cancellation.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

namespace
{

void BeginItemUpdate(StatementComposer& update, ReceiptTable table)
{
    update.Begin(table == ReceiptTable::FISCAL ? "UPDATE item_cupom_fiscal SET "
                                               : "UPDATE item_cupom_nf SET ");
}

// Ends the statement with the row it is for and executes it.
BOOL ExecuteForItem(StatementComposer& update, Command& command, int t_nNumeroItemIndex,
                    sqlite3* db)
{
    update.Integer("WHERE cont_coo = %d", command.FDController->Contador_Get(COUNTER_COO));
    update.Integer(" and seq_item = %d", t_nNumeroItemIndex);
    return update.Execute(command, db);
}

// Writes the total that the adjustment left. On a non-fiscal item it has a column of its own.
BOOL RewriteTotal(StatementComposer& update, Command& command, int t_nNumeroItemIndex, sqlite3* db)
{
    FiscalDataController* const FDController = command.FDController;
    const Financial total = FDController->Cupom_GetItemValorTotal(t_nNumeroItemIndex - 1);

    update.Begin();
    if (FDController->Cupom_GetTipoCupom() == CUPOM_FISCAL) {
        update.MoneyText("UPDATE item_cupom_fiscal SET valor_total = %s ", total);
    } else {
        update.MoneyText("UPDATE item_cupom_nf SET valor_total_liquido = %s ", total);
    }
    return ExecuteForItem(update, command, t_nNumeroItemIndex, db);
}

} // namespace

BOOL CmdEfetuaDescAcresItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const int t_nNumeroItemIndex =
        m_iNumeroItem == 0 ? FDController->Cupom_GetQuantidadeDeItens() : m_iNumeroItem;
    const ReceiptTable table = ChooseReceiptTable(*FDController);
    if (table == ReceiptTable::NONE) {
        return 0;
    }

    BeginItemUpdate(update, table);
    if (m_eOperacao == ACRESCIMO) {
        if (m_eTipoValor != VALOR) {
            update.Piece("tipo_acrescimo = 'P', ");
            update.PercentText("perc_acrescimo = %.2f, ", m_Valor);
        } else if (table == ReceiptTable::FISCAL) {
            update.Piece("tipo_acrescimo = 'V', "); // required: the percentage stays
        } else {
            update.Piece("tipo_acrescimo = 'V', perc_acrescimo = 0, ");
        }
        update.MoneyText("valor_acrescimo = %s ",
                         FDController->Cupom_GetItemValorAcr(t_nNumeroItemIndex - 1));
    } else if (m_eOperacao == DESCONTO) {
        if (m_eTipoValor != VALOR) {
            update.Piece("tipo_desconto = 'P', ");
            update.PercentText("perc_desconto = %.2f, ", m_Valor);
        } else {
            update.Piece("tipo_desconto = 'V', perc_desconto = 0, ");
        }
        update.MoneyText("valor_desconto = %s ",
                         FDController->Cupom_GetItemValorDesc(t_nNumeroItemIndex - 1));
    }
    if (ExecuteForItem(update, *this, t_nNumeroItemIndex, db) == 0) {
        return 0;
    }
    return RewriteTotal(update, *this, t_nNumeroItemIndex, db);
}

BOOL CmdCancelaDescAcresItem::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    const int t_nNumeroItemIndex = m_iNumeroItem; // 0 has no meaning of its own here
    const ReceiptTable table = ChooseReceiptTable(*FDController);
    if (table == ReceiptTable::NONE) {
        return 0;
    }

    BeginItemUpdate(update, table);
    if (m_eOperacao == ACRESCIMO) {
        update.Piece("valor_canc_acrescimo = valor_acrescimo, ");
        update.Piece("valor_acrescimo = 0 ");
    } else if (m_eOperacao == DESCONTO) {
        update.MoneyText("valor_desconto = %s ",
                         FDController->Cupom_GetItemValorDesc(t_nNumeroItemIndex - 1));
    }
    if (ExecuteForItem(update, *this, t_nNumeroItemIndex, db) == 0) {
        return 0;
    }
    return RewriteTotal(update, *this, t_nNumeroItemIndex, db);
}
