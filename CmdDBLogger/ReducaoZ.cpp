// The Z reduction: its order, and the reducao_z row.
#include "CmdDBLogger/ReducaoZRows.h"

BOOL CmdReducaoZ::DBLogger(sqlite3* db)
{
    ReducaoZRows rows(*this, db);

    const bool executed =
        rows.Reducao() != FALSE && rows.AliquotasICMS() != FALSE &&
        rows.AliquotasISSQN() != FALSE && rows.EspeciaisICMS() != FALSE &&
        rows.EspeciaisISSQN() != FALSE && rows.DescontosAcrescimosCancelamentos() != FALSE &&
        rows.NaoFiscais() != FALSE && rows.MeiosDePagamento() != FALSE && rows.Troco() != FALSE;
    return executed ? OutrosDocumentosDBLogger(db, "RZ") : FALSE;
}

BOOL ReducaoZRows::Reducao()
{
    sql.Begin("INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, "
              "cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, "
              "valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, "
              "valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, "
              "tempo_operacional, tempo_emitindo_doc) VALUES (");
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ)); // cont_crz
    sql.Piece("1,");                                             // num_ecf
    sql.DateTimeText("'%s',", command.m_dtExecStart);            // data_hora_emissao
    // A day that never opened is dated by the reduction itself.
    RtcAbsoluteTime dataMovimento = command.m_dtExecStart;
    if (FDController->Jornada_GetDataMovimento() != RtcAbsoluteTime(matlong[0])) {
        dataMovimento = FDController->Jornada_GetDataMovimento();
    }
    sql.DateText("'%s", dataMovimento); // data_movimento
    sql.Piece(" 00:00:00',");
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_COO));                 // cont_coo
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_GNF));                 // cont_gnf
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRO));                 // cont_cro
    sql.MoneyText("%s,", FDController->Totalizador_GetGT());                     // valor_gt
    sql.MoneyText("%s,", FDController->Totalizador_GetVB(RZ));                   // valor_vb
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_VL(RZ, ICMS));    // valor_base_icms
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_TotTrib(RZ, ICMS));   // valor_icms
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Desc(RZ, ICMS));  // valor_desc_icms
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Acr(RZ, ICMS));   // valor_acres_icms
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Canc(RZ, ICMS));  // valor_canc_icms
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_VL(RZ, ISSQN));   // valor_base_iss
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_TotTrib(RZ, ISSQN));  // valor_iss
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Desc(RZ, ISSQN)); // valor_desc_iss
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Acr(RZ, ISSQN));  // valor_acres_iss
    sql.MoneyText("%s,", FDController->Totalizador_GetSoma_Tot_Canc(RZ, ISSQN)); // valor_canc_iss
    // Required: the two times stand crossed, the issuing time under tempo_operacional and the
    // operating time under tempo_emitindo_doc.
    RtcRelativeTime tempo = FDController->Jornada_GetTempoEmitindoDocFiscal();
    sql.Integer("%d,", static_cast<int>(tempo.s)); // tempo_operacional
    tempo = FDController->Jornada_GetTempoOperacional(command.m_dtExecStart);
    sql.Integer("%d)", static_cast<int>(tempo.s)); // tempo_emitindo_doc
    return sql.Execute(command, db);
}
