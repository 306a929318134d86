#include "CmdDBLogger/PagamentoRow.h"

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalData/FiscalDataController.h"
#include "Interpreter.h"

BOOL InsertPagamento(StatementComposer& insert, Command& command, const PagamentoRow& row,
                     sqlite3* db)
{
    insert.Begin("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
                 "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (");
    insert.Integer("%d,", row.coo);                                         // cont_coo
    insert.Integer("%d,", command.FDController->Contador_Get(COUNTER_GNF)); // cont_gnf
    insert.MoneyText("%s,", row.valor);                                     // valor_pagamento
    insert.Integer("%d,", row.parcelas);                                    // num_parcelas
    insert.Text("'%s',", row.infoAdicional);                                // info_adicional
    insert.Integer("%d,", row.meioPagamento);                               // indice_meio_pagamento
    insert.Piece("'N',"                                                     // id_estornado
                 "0)");                                                     // valor_estornado
    return insert.Execute(command, db);
}
