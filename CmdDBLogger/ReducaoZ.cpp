// The Z reduction: its order, and the reducao_z row.
#include "CmdDBLogger/ReducaoZRows.h"

BOOL CmdReducaoZ::DBLogger(sqlite3* db)
{
    ReducaoZRows rows(*this, db);

    if (rows.Reducao() == 0) {
        return 0;
    }
    if (rows.AliquotasICMS() == 0) {
        return 0;
    }
    if (rows.AliquotasISSQN() == 0) {
        return 0;
    }
    if (rows.EspeciaisICMS() == 0) {
        return 0;
    }
    if (rows.EspeciaisISSQN() == 0) {
        return 0;
    }
    if (rows.DescontosAcrescimosCancelamentos() == 0) {
        return 0;
    }
    if (rows.NaoFiscais() == 0) {
        return 0;
    }
    if (rows.MeiosDePagamento() == 0) {
        return 0;
    }
    if (rows.Troco() == 0) {
        return 0;
    }
    return OutrosDocumentosDBLogger(db, "RZ");
}

BOOL ReducaoZRows::Reducao()
{
    constexpr int base = BC_IND_FISCAL_ULTIMA_RZ;
    constexpr int icms = BC_IND_FISCAL_BI_IND_ICMS;
    constexpr int issqn = BC_IND_FISCAL_BI_IND_ISSQN;

    // A day that never opened is dated by the reduction itself.
    RtcAbsoluteTime dataMovimento = m_command.m_dtExecStart;
    if (m_controller.Jornada_GetDataMovimento() != RtcAbsoluteTime(matlong[0])) {
        dataMovimento = m_controller.Jornada_GetDataMovimento();
    }

    m_insert.Begin(
        "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (");
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.Integer("%d,", 1); // num_ecf
    m_insert.DateTimeText("'%s',", m_command.m_dtExecStart);
    m_insert.DateText("'%s", dataMovimento);
    m_insert.Piece(" 00:00:00',");
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_COO));
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_GNF));
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRO));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetGT());
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetVB(base));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_VL(base, icms));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_TotTrib(base, icms));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Desc(base, icms));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Acr(base, icms));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Canc(base, icms));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_VL(base, issqn));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_TotTrib(base, issqn));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Desc(base, issqn));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Acr(base, issqn));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetSoma_Tot_Canc(base, issqn));
    // Required: the two times stand crossed, the issuing time under tempo_operacional and the
    // operating time under tempo_emitindo_doc.
    m_insert.Integer("%d,", static_cast<int>(m_controller.Jornada_GetTempoEmitindoDocFiscal().s));
    m_insert.Integer(
        "%d)",
        static_cast<int>(m_controller.Jornada_GetTempoOperacional(m_command.m_dtExecStart).s));
    return m_insert.Execute(m_command, m_db);
}
