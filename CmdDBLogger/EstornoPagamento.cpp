// The reversal of a payment.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdEstornaMeioPagamento::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    sql.Begin("UPDATE pagamento_cupom SET ");
    sql.MoneyText("valor_estornado = %s, ", m_finValor);
    // Required text. The engine subtracts the amount that the row held before this statement, so a
    // first reversal leaves the payment as it was.
    sql.Piece("valor_pagamento = (valor_pagamento - valor_estornado), ");
    sql.Piece("id_estornado = 'S' ");
    sql.Integer("WHERE cont_coo = %d ", FDController->Cupom_GetCOO());
    sql.Integer("AND indice_meio_pagamento = %d", m_iMeioPagamentoOrigem);
    if (sql.Execute(*this, db) == FALSE) {
        return FALSE;
    }

    sql.Begin("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
              "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (");
    sql.Integer("%d,", FDController->Cupom_GetCOO());            // cont_coo
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_GNF)); // cont_gnf
    sql.MoneyText("%s,", m_finValor);                            // valor_pagamento
    sql.Integer("%d,", m_iNumParcelas);                          // num_parcelas
    sql.Text("'%s',", m_sInfoAdicional);                         // info_adicional
    sql.Integer("%d,", m_iMeioPagamentoDestino);                 // indice_meio_pagamento
    sql.Piece("'N',");                                           // id_estornado
    sql.Piece("0)");                                             // valor_estornado
    return sql.Execute(*this, db);
}
