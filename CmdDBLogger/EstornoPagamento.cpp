// The reversal of a payment.
#include "CmdDBLogger/PagamentoRow.h"
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
    sql.Piece("valor_pagamento = (valor_pagamento - valor_estornado), "
              "id_estornado = 'S' ");
    sql.Integer("WHERE cont_coo = %d ", FDController->Cupom_GetCOO());
    sql.Integer("AND indice_meio_pagamento = %d", m_iMeioPagamentoOrigem);
    if (sql.Execute(*this, db) == FALSE) {
        return FALSE;
    }

    const int coo = FDController->Cupom_GetCOO();
    return InsertPagamento(
        sql, *this, {coo, m_finValor, m_iNumParcelas, m_sInfoAdicional, m_iMeioPagamentoDestino},
        db);
}
