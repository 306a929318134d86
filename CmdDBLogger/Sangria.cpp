// A cash withdrawal or a till float: a non-fiscal receipt of one item, logged at once.
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

    insert.Begin("INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, "
                 "valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, "
                 "tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, "
                 "nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (");
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO));     // cont_coo
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ) + 1); // cont_crz
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_GNF));     // cont_gnf
    insert.Integer("%d,", 1);                                           // num_ecf
    insert.DateTimeText("'%s',", m_dtExecStart);                        // data_hora_emissao
    const Financial valor = FDController->Cupom_GetItemValorTotal(item);
    insert.MoneyText("%s,", valor); // valor_subtotal
    insert.MoneyText("%s,", valor); // valor_total_cupom
    insert.Piece("'V',");           // tipo_acrescimo
    insert.Piece("0,");             // valor_acrescimo
    insert.Piece("'V',");           // tipo_desconto
    insert.Piece("0,");             // valor_desconto
    insert.Piece("0,");             // valor_canc_acrescimo
    insert.Piece("'N',");           // id_cancelado
    insert.Piece("'',");            // nome_consumidor
    insert.Piece("'',");            // cpf_cnpj_consumidor
    insert.Piece("0,");             // perc_acrescimo
    insert.Piece("0)");             // perc_desconto
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
    insert.Piece("0,");                 // valor_acrescimo
    insert.Piece("0,");                 // valor_desconto
    insert.Piece("0,");                 // valor_canc_acrescimo
    insert.Piece("'N')");               // id_cancelado
    if (insert.Execute(*this, db) == FALSE) {
        return FALSE;
    }
    return OutrosDocumentosDBLogger(db, "CN");
}
