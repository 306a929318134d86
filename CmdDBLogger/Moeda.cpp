// The currency symbol.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"

BOOL CmdProgramaMoeda::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    insert.Begin("INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (");
    insert.Piece("1,"); // num_ecf
    // Required text: the instant bare, without quotes and without the comma after it. The engine
    // rejects the statement every time.
    insert.DateTimeText("%s", m_dtExecStart); // data_hora_gravacao
    insert.Text("'%s')", m_sSimboloMoeda);    // simbolo_moeda
    return insert.Execute(*this, db);
}
