// The items of a closed receipt, each with its share of the subtotal's discount or surcharge.
//
// The receipt's copy is large; this stands in a source of its own so that only the closings that
// need it take its frame.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

int CmdFechaCupom::CalculaRateioItens(sqlite3* db)
{
    Cupom rateio;
    if (FDController->Cupom_GetRateioPorItem(&rateio) == FALSE) {
        return FALSE;
    }

    Statement<SQL_SIZE_CUPOM, AUX_SIZE_FECHAMENTO> update;

    for (int i = 0; i < rateio.GetQuantidadeDeItens(); ++i) {
        const unsigned int index = static_cast<unsigned int>(i);
        BeginItemUpdate(update, ReceiptTable::FISCAL);
        update.MoneyText("tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = %s, ",
                         rateio.GetItemValorAcr(index));
        update.MoneyText("tipo_desconto = 'V', perc_desconto = 0, valor_desconto = %s, ",
                         rateio.GetItemValorDesc(index));
        update.MoneyText("valor_total = %s ", rateio.GetItemValorTotal(index));
        update.Integer("WHERE cont_coo = %d", FDController->Contador_Get(COUNTER_COO));
        update.Integer(" AND seq_item = %d", i + 1);
        if (update.Execute(*this, db) == FALSE) {
            return FALSE;
        }
    }
    return TRUE;
}
