// The owner's data: names and address by one command, registrations by the other.
#include "CmdDBLogger/CountingQuery.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

namespace
{

// Counts the rows. Answers false where they cannot be counted; the statement then stays open, as
// required.
bool CountUsuarios(StatementComposer& sql, sqlite3* db, int& rows)
{
    sql.Begin("SELECT count(*) FROM dados_usuario");
    CountingQuery query(db, sql);
    if (!query.HasRow()) {
        return false;
    }
    rows = query.Count(0);
    query.Finalize();
    return true;
}

using UsuarioSql = Statement<SQL_SIZE>;

void InsertNames(UsuarioSql& sql, FiscalDataController& FDController)
{
    sql.Piece("1,"); // seq_usuario
    const char* text = FDController.DadosContribuinte_GetEndereco(sql.aux, AUX_SIZE);
    sql.TextAt("'%s',", text); // endereco
    text = FDController.DadosContribuinte_GetNomeFantasia(sql.aux, AUX_SIZE);
    sql.TextAt("'%s',", text); // nome_fantasia
    text = FDController.DadosContribuinte_GetRazaoSocial(sql.aux, AUX_SIZE);
    sql.TextAt("'%s',", text); // razao_social
}

void InsertProgramming(UsuarioSql& sql, const Command& command)
{
    sql.DateTimeText("'%s',", command.m_dtExecStart); // data_hora_gravacao
    // A new row counts a restart before there was any.
    const int cro = command.FDController->Contador_Get(COUNTER_CRO);
    sql.Integer("%d,", cro == 0 ? 1 : cro);                              // cont_cro
    sql.MoneyText("%s)", command.FDController->Totalizador_GetGTIni(0)); // valor_gt
}

void UpdateNames(UsuarioSql& sql, FiscalDataController& FDController)
{
    sql.TextAt("endereco = '%s',", FDController.DadosContribuinte_GetEndereco(sql.aux, AUX_SIZE));
    sql.TextAt("nome_fantasia = '%s',",
               FDController.DadosContribuinte_GetNomeFantasia(sql.aux, AUX_SIZE));
    sql.TextAt("razao_social = '%s', ",
               FDController.DadosContribuinte_GetRazaoSocial(sql.aux, AUX_SIZE));
}

void EndUpdate(UsuarioSql& sql, FiscalDataController& FDController)
{
    sql.MoneyText("valor_gt = %s ", FDController.Totalizador_GetGTIni(0));
    sql.Piece("WHERE seq_usuario = 1");
}

} // namespace

BOOL CmdProgramaUsuario::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    int rows = 0;
    if (!CountUsuarios(sql, db, rows)) {
        return FALSE;
    }

    if (rows == 0) {
        sql.Begin("INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, "
                  "data_hora_gravacao, cont_cro, valor_gt) VALUES(");
        InsertNames(sql, *FDController); // seq_usuario to razao_social
        InsertProgramming(sql, *this);   // data_hora_gravacao to valor_gt
    } else {
        sql.Begin("UPDATE dados_usuario SET ");
        UpdateNames(sql, *FDController);
        sql.Integer("cont_cro = %d, ", FDController->Contador_Get(COUNTER_CRO));
        EndUpdate(sql, *FDController);
    }
    return sql.Execute(*this, db);
}

BOOL CmdProgramaCNPJ_IE_IM::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    int rows = 0;
    if (!CountUsuarios(sql, db, rows)) {
        return FALSE;
    }

    if (rows == 0) {
        sql.Begin("INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, "
                  "cnpj, ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(");
        InsertNames(sql, *FDController); // seq_usuario to razao_social
        sql.Text("'%s',", m_sCNPJ);      // cnpj
        sql.Text("'%s',", m_sIE);        // ie
        sql.Text("'%s',", m_sIM);        // im
        sql.Text("'%s',", m_sUF);        // uf
        InsertProgramming(sql, *this);   // data_hora_gravacao to valor_gt
    } else {
        // Required text: UF before IM, and the blanks around the commas as they stand.
        sql.Begin("UPDATE dados_usuario SET ");
        sql.Text("cnpj = '%s', ", m_sCNPJ);
        sql.Text("ie = '%s', ", m_sIE);
        sql.Text("uf = '%s', ", m_sUF);
        sql.Text("im = '%s',", m_sIM);
        sql.Integer("cont_cro = %d ,", FDController->Contador_Get(COUNTER_CRO));
        UpdateNames(sql, *FDController);
        EndUpdate(sql, *FDController);
    }
    return sql.Execute(*this, db);
}
