// The life of a non-fiscal receipt.
#include "CmdDBLogger/CupomNfRow.h"
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdAbreCNF::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    BeginCupomNf(insert, *this);
    insert.Piece("0,"                        // valor_subtotal
                 "0,"                        // valor_total_cupom
                 "'V',"                      // tipo_acrescimo
                 "0,"                        // valor_acrescimo
                 "'V',"                      // tipo_desconto
                 "0,"                        // valor_desconto
                 "0,"                        // valor_canc_acrescimo
                 "'N',");                    // id_cancelado
    insert.Text("'%s',", m_sNomeConsumidor); // nome_consumidor
    insert.Text("'%s',", m_sCPF_CNPJ);       // cpf_cnpj_consumidor
    insert.Piece("0,"                        // perc_acrescimo
                 "0)");                      // perc_desconto
    if (insert.Execute(*this, db) == FALSE) {
        return FALSE;
    }
    return OutrosDocumentosDBLogger(db, "CN");
}

BOOL CmdVendeItemNF::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    const int item = FDController->Cupom_GetQuantidadeDeItens() - 1; // the one just registered

    insert.Begin("INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, "
                 "valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, "
                 "tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (");
    insert.Integer("%d,", item + 1);                                // seq_item
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    insert.Integer("%d,", m_iIndiceTotalizador);                    // indice_totalizador_nf
    FDController->Cupom_GetItemValorUnitarioStr(item, insert.aux, AUX_SIZE);
    insert.DecimalText("%s,", insert.aux); // valor_total
    insert.DecimalText("%s,", insert.aux); // valor_total_liquido
    insert.Piece("'V',"                    // tipo_acrescimo
                 "0,"                      // valor_acrescimo
                 "'V',"                    // tipo_desconto
                 "0,"                      // valor_desconto
                 "0,"                      // valor_canc_acrescimo
                 "'N')");                  // id_cancelado
    return insert.Execute(*this, db);
}

BOOL CmdFechaCupomNF::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    update.Begin("UPDATE cupom_nf SET ");
    update.MoneyText("valor_total_cupom = %s, ", FDController->Cupom_GetTotal());
    update.MoneyText("valor_subtotal = %s ", FDController->Cupom_GetSubTotal());
    if (ExecuteForReceipt(update, *this, db) != TRUE) {
        return FALSE;
    }
    return OutrosDocumentosDataFinalUpdate(db);
}
