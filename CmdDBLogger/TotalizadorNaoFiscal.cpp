// The programming of a non-fiscal totalizer.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"

BOOL CmdInsereRegOpeNF::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    sql.Begin();
    sql.Integer("SELECT count(*) FROM totalizador_nao_fiscal WHERE num_indice = %d", m_iIndice);
    // Required: the statement stays open.
    const int rows = CountingQuery(db, sql).Count(0);

    if (rows != 0) {
        sql.Begin();
        sql.Text("UPDATE totalizador_nao_fiscal SET descricao='%s'", m_sDescricao);
        sql.Integer(" WHERE num_indice=%d", m_iIndice);
    } else {
        sql.Begin("INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (");
        sql.Integer("%d,", m_iIndice);   // num_indice
        sql.Text("'%s')", m_sDescricao); // descricao
    }
    return sql.Execute(*this, db);
}
