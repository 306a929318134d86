// Technical interventions: entering and leaving the modes L and T.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

namespace
{

// How many interventions carry the current number of restarts.
int CountIntervencoes(StatementComposer& sql, Command& command, sqlite3* db)
{
    sql.Begin();
    sql.Integer("SELECT count(*) FROM intervencao WHERE cont_cro = %d",
                command.FDController->Contador_Get(COUNTER_CRO));
    return CountRows(db, sql);
}

BOOL InsertIntervencao(StatementComposer& sql, Command& command, const char (&tipo)[5], sqlite3* db)
{
    sql.Begin("INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, "
              "id_tipo_intervencao, id_perda_dados_mt) VALUES (");
    sql.Integer("%d,", command.FDController->Contador_Get(COUNTER_CRO)); // cont_cro
    sql.Piece("1,");                                                     // num_ecf
    sql.DateTimeText("'%s',", command.m_dtExecStart);                    // data_hora_intervencao
    sql.Piece(tipo);                                                     // id_tipo_intervencao
    sql.Piece("'N')");                                                   // id_perda_dados_mt
    return sql.Execute(command, db);
}

} // namespace

// Entering the mode L is a document each time, its row written or not.
BOOL CmdEntradaMILInterno::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    if (CountIntervencoes(sql, *this, db) == 0) {
        // Required to be asked; the answer is not used.
        FDController->Cupom_GetQuantidadeDeItens();
        if (InsertIntervencao(sql, *this, "'L',", db) == FALSE) {
            return FALSE;
        }
    }
    return OutrosDocumentosDBLogger(db, "LX");
}

// Entering the mode T is none.
BOOL CmdEntradaMITInterno::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    if (CountIntervencoes(sql, *this, db) != 0) {
        return TRUE;
    }
    // Required to be asked; the answer is not used.
    FDController->Cupom_GetQuantidadeDeItens();
    return InsertIntervencao(sql, *this, "'T',", db);
}

BOOL CmdSaidaMILInterno::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDBLogger(db, "LX");
}

BOOL CmdSaidaMITInterno::DBLogger(sqlite3* db)
{
    return OutrosDocumentosDBLogger(db, "LX");
}
