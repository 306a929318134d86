// The log of documents other than fiscal receipts.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalData/FiscalDataController.h"
#include "Interpreter.h"

namespace
{

// A command whose end is not known yet ended when it started, as far as the log goes.
void SetUnsetEnd(Command& command)
{
    if (command.m_dtExecEnd == RtcAbsoluteTime(matlong[0])) {
        command.m_dtExecEnd = command.m_dtExecStart;
    }
}

} // namespace

BOOL Command::OutrosDocumentosDBLogger(sqlite3* db, const char* tipoDoc)
{
    Statement<SQL_SIZE_CUPOM> insert;

    insert.Begin("INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, "
                 "cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, "
                 "id_tipo_documento) VALUES (");
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    insert.Piece("1,");                                             // num_ecf
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_GNF)); // cont_gnf
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_GRG)); // cont_grg
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_CDC)); // cont_cdc
    // Required: filed under reduction 1 before the first, then under the last one made, where
    // receipts are filed under the next.
    const int crz = FDController->Contador_Get(COUNTER_CRZ);
    insert.Integer("%d,", crz == 0 ? crz + 1 : crz); // cont_crz
    insert.DateTimeText("'%s',", m_dtExecStart);     // data_hora_inicio_emissao
    SetUnsetEnd(*this);
    insert.DateTimeText("'%s',", m_dtExecEnd); // data_hora_fim_emissao
    insert.TextAt("'%s')", tipoDoc);           // id_tipo_documento
    return insert.Execute(*this, db);
}

BOOL Command::OutrosDocumentosDataFinalUpdate(sqlite3* db)
{
    Statement<SQL_SIZE_DATA_FINAL, AUX_SIZE_DATA_FINAL, AUX_SIZE_DATA_FINAL> update;

    SetUnsetEnd(*this);
    const int coo = FDController->Contador_Get(COUNTER_COO);

    update.Begin();
    update.DateTimeText("UPDATE outros_documentos SET data_hora_fim_emissao = '%s'", m_dtExecEnd);
    update.Integer(" WHERE cont_coo = %d", coo);
    return update.Execute(*this, db);
}
