// The register's identity: serial number with the basic software's version, and till number.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

BOOL CmdProgramaNrSerie::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    sql.Begin("SELECT count(*) FROM dados_ecf");
    int rows = CountRows(db, sql);
    if (rows == 0) {
        sql.Begin("INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES (");
        sql.Text("'%s',", m_sNumSerie); // num_serie
        sql.Text("'%s',", m_sMarca);    // marca
        sql.Text("'%s',", m_sModelo);   // modelo
        sql.Text("'%s',", m_sTipo);     // tipo
        FDController->DadosECF_GetNrOrdemSeq(sql.aux, AUX_SIZE);
        if (sql.aux[0] == '\0') {
            sql.Piece("0)"); // num_caixa
        } else {
            sql.Text("%s)", sql.aux); // num_caixa
        }
    } else {
        sql.Begin("UPDATE dados_ecf SET ");
        sql.Text("num_serie = '%s',", m_sNumSerie);
        sql.Text("marca = '%s',", m_sMarca);
        sql.Text("modelo = '%s',", m_sModelo);
        sql.Text("tipo = '%s'", m_sTipo);
        sql.Piece(" WHERE num_ecf = 1");
    }
    if (sql.Execute(*this, db) == FALSE) {
        return FALSE;
    }

    // Required: where the versions cannot be counted, the first count stands.
    sql.Begin("SELECT count(*) FROM versao_sb");
    rows = CountRows(db, sql, rows);
    if (rows != 0) {
        return TRUE;
    }
    sql.Begin("INSERT INTO versao_sb(num_ecf, versao) VALUES(");
    sql.Piece("1,");                                                            // num_ecf
    sql.TextAt("'%s')", FDController->DadosECF_GetVersaoSB(sql.aux, AUX_SIZE)); // versao
    return sql.Execute(*this, db) == FALSE ? FALSE : TRUE;
}

BOOL CmdProgramaSequenciaECF::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> update;

    update.Begin("UPDATE dados_ecf SET ");
    update.Integer("num_caixa = %d", m_iNumCaixa);
    update.Piece(" WHERE num_ecf = 1");
    return update.Execute(*this, db);
}
