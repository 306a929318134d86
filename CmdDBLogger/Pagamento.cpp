// A payment of the open receipt.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdEfetuaPagamento::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    insert.Begin("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
                 "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (");
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_GNF)); // cont_gnf
    insert.MoneyText("%s,", m_finValor);                            // valor_pagamento
    insert.Integer("%d,", m_iNumParcelas);                          // num_parcelas
    insert.Text("'%s',", m_sInfoAdicional);                         // info_adicional
    insert.Integer("%d,", m_iMeioPagamento);                        // indice_meio_pagamento
    insert.Piece("'N',");                                           // id_estornado
    insert.Piece("0)");                                             // valor_estornado
    return insert.Execute(*this, db);
}
