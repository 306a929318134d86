// The opening of a fiscal receipt.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "libs/CharTools.h"

BOOL CmdAbreCupom::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE_CUPOM> insert;

    insert.Begin("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, "
                 "cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, "
                 "valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, "
                 "valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, "
                 "id_cancelado, id_cupom_adicional, perc_acrescimo, perc_desconto, "
                 "texto_complementar, chave_cupom) VALUES (");
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_CCF)); // cont_ccf
    // Filed under the reduction that will close the current day.
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ) + 1); // cont_crz
    insert.DateTimeText("'%s',", m_dtExecStart);                        // data_hora_emissao
    insert.Text("'%s',", m_sCPF_CNPJ);                                  // cpf_cnpj_consumidor
    insert.Text("'%s',", m_sNomeConsumidor);                            // nome_consumidor
    // Required: the address keeps a comma of its own after it, and of the consumer's three texts it
    // alone loses its apostrophes.
    CharRemove(insert.CopyToAux(m_sEnderecoConsumidor, ","), '\'');
    insert.Text("'%s',", insert.aux); // endereco_consumidor
    insert.Piece("' ',"               // assinatura_documento
                 "0,"                 // valor_subtotal
                 "0,"                 // valor_total
                 "'V',"               // tipo_desconto
                 "0,"                 // valor_desconto
                 "'V',"               // tipo_acrescimo
                 "0,"                 // valor_acrescimo
                 "0,"                 // valor_canc_acrescimo
                 "0,"                 // valor_troco
                 "' ',"               // texto_suplementar
                 "'N',"               // id_cancelado
                 "'N',"               // id_cupom_adicional
                 "0,"                 // perc_acrescimo
                 "0,"                 // perc_desconto
                 "' ',"               // texto_complementar
                 "' ')");             // chave_cupom
    return insert.Execute(*this, db);
}
