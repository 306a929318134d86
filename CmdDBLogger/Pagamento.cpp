// A payment of the open receipt.
#include "CmdDBLogger/PagamentoRow.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdEfetuaPagamento::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    const int coo = FDController->Contador_Get(COUNTER_COO);
    return InsertPagamento(
        insert, *this, {coo, m_finValor, m_iNumParcelas, m_sInfoAdicional, m_iMeioPagamento}, db);
}
