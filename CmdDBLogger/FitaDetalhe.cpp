// A reprint from the detail tape.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

// The counter still stands before this reprint, hence the 1 added to it.
BOOL CmdReimprimeMFD::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    sql.Begin();
    sql.Integer("SELECT count(*) FROM fita_detalhe WHERE cont_cfd = %d",
                FDController->Contador_Get(COUNTER_CFD) + 1);
    if (CountRows(db, sql) != 0) {
        return TRUE;
    }

    sql.Begin("INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, "
              "coo_final) VALUES (");
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CFD) + 1); // cont_cfd
    sql.Piece("1,");                                                 // num_ecf
    sql.DateTimeText("'%s',", m_dtExecStart);                        // data_hora_emissao
    sql.Integer("%d,", m_iCooInicial);                               // coo_inicial
    sql.Integer("%d)", m_iCooFinal);                                 // coo_final
    return sql.Execute(*this, db);
}
