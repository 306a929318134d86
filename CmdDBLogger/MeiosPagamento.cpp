// The programming of a payment means.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"

BOOL CmdInsereMeiosPagamento::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    sql.Begin();
    sql.Integer("SELECT count(*) FROM meio_pagamento WHERE num_indice = %d", m_iIndice);
    CountingQuery query(db, sql);
    if (!query.HasRow()) {
        return FALSE; // required: the statement stays open
    }
    const int rows = query.Count(0);
    query.Finalize();

    const char vinculado = m_eVinculacaoCCD == COM_CCD ? 'S' : 'N';
    if (rows == 0) {
        sql.Begin("INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, "
                  "id_vinculacao_ccd) VALUES (");
        sql.Integer("%d,", m_iIndice);     // num_indice
        sql.Piece("1,");                   // num_ecf
        sql.Text("'%s',", m_sDescricao);   // descricao
        sql.Character("'%c')", vinculado); // id_vinculacao_ccd
    } else {
        sql.Begin("UPDATE meio_pagamento SET ");
        sql.Text("descricao = '%s',", m_sDescricao);
        sql.Character("id_vinculacao_ccd = '%c' ", vinculado);
        sql.Integer("WHERE num_indice = %d", m_iIndice);
    }
    return sql.Execute(*this, db);
}
