// A cash withdrawal or a till float: a non-fiscal receipt of one item, logged at once.
#include "CmdDBLogger/CupomNfRow.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

namespace
{

// The non-fiscal totalizers that the two operations are booked on.
constexpr int TOTALIZADOR_FUNDO_TROCO = 1;
constexpr int TOTALIZADOR_SANGRIA = 2;

} // namespace

BOOL CmdSangria::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    const int item = 0;

    BeginCupomNf(insert, *this);
    const Financial valor = FDController->Cupom_GetItemValorTotal(item);
    insert.MoneyText("%s,", valor); // valor_subtotal
    insert.MoneyText("%s,", valor); // valor_total_cupom
    insert.Piece("'V',"             // tipo_acrescimo
                 "0,"               // valor_acrescimo
                 "'V',"             // tipo_desconto
                 "0,"               // valor_desconto
                 "0,"               // valor_canc_acrescimo
                 "'N',"             // id_cancelado
                 "'',"              // nome_consumidor
                 "'',"              // cpf_cnpj_consumidor
                 "0,"               // perc_acrescimo
                 "0)");             // perc_desconto
    if (insert.Execute(*this, db) == FALSE) {
        return FALSE;
    }

    // Required: nine columns, without the kinds of surcharge and discount.
    insert.Begin("INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, "
                 "valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, "
                 "valor_canc_acrescimo, id_cancelado) VALUES (");
    insert.Integer("%d,", item + 1);                                // seq_item
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    const int totalizador =
        m_eTipoOperacao == FUNDO_TROCO ? TOTALIZADOR_FUNDO_TROCO : TOTALIZADOR_SANGRIA;
    insert.Integer("%d,", totalizador); // indice_totalizador_nf
    const Financial valorItem = FDController->Cupom_GetItemValorTotal(item);
    insert.MoneyText("%s,", valorItem); // valor_total
    insert.MoneyText("%s,", valorItem); // valor_total_liquido
    insert.Piece("0,"                   // valor_acrescimo
                 "0,"                   // valor_desconto
                 "0,"                   // valor_canc_acrescimo
                 "'N')");               // id_cancelado
    if (insert.Execute(*this, db) == FALSE) {
        return FALSE;
    }
    return OutrosDocumentosDBLogger(db, "CN");
}
