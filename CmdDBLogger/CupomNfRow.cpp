#include "CmdDBLogger/CupomNfRow.h"

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalData/FiscalDataController.h"
#include "Interpreter.h"

void BeginCupomNf(StatementComposer& insert, const Command& command)
{
    insert.Begin("INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, "
                 "valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, "
                 "tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, "
                 "nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (");
    insert.Integer("%d,", command.FDController->Contador_Get(COUNTER_COO));     // cont_coo
    insert.Integer("%d,", command.FDController->Contador_Get(COUNTER_CRZ) + 1); // cont_crz
    insert.Integer("%d,", command.FDController->Contador_Get(COUNTER_GNF));     // cont_gnf
    insert.Piece("1,");                                                         // num_ecf
    insert.DateTimeText("'%s',", command.m_dtExecStart);                        // data_hora_emissao
}
