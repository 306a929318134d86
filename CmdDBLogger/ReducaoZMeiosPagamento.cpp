// The meio_pagamento_reducao rows of a Z reduction.
#include "CmdDBLogger/ReducaoZRows.h"

BOOL ReducaoZRows::MeioDePagamento(int i)
{
    if (m_controller.BaseFormasPagamento_GetMeioPagamentoProgramado(i) == 0) {
        return TRUE;
    }

    m_insert.Begin(
        "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(");
    m_insert.Integer("%d,", i + 1);
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_controller.BaseFormasPagamento_GetMeioPagamento(i, m_insert.aux, AUX_SIZE);
    m_insert.Text("'%s',", m_insert.aux);
    m_insert.MoneyText("%s)", m_controller.BaseFormasPagamento_GetFPTotal(i));
    return m_insert.Execute(m_command, m_db);
}

BOOL ReducaoZRows::MeiosDePagamento()
{
    m_nMaxFP = m_controller.BaseFormasPagamento_GetNumeroDeFormasDePagamento();
    for (int i = 0; i < m_nMaxFP; ++i) {
        if (MeioDePagamento(i) == 0) {
            return FALSE;
        }
    }
    return TRUE;
}

// Its index is one past the last position, programmed or not.
BOOL ReducaoZRows::Troco()
{
    m_insert.Begin(
        "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(");
    m_insert.Integer("%d,", m_nMaxFP + 1);
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.Piece("'TROCO',");
    m_insert.MoneyText("%s)", m_controller.BaseFormasPagamento_GetTrocoTotal());
    return m_insert.Execute(m_command, m_db);
}
