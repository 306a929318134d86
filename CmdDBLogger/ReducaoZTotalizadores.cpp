// The totalizador_reducao rows of a Z reduction.
//
// Their statements name the same columns in two orders: one for the tax rates, one for all others.
#include "CmdDBLogger/ReducaoZRows.h"

#include <cstring>
#include <initializer_list>

namespace
{

constexpr int ALIQUOTAS = 30;   // positions of tax rates in a tax base
constexpr int ESPECIAIS = 3;    // special totalizers of a code
constexpr int NAO_FISCAIS = 39; // positions of non-fiscal totalizers
constexpr int FISCAL_BASE = BC_IND_FISCAL_ULTIMA_RZ;
constexpr int NAO_FISCAL_BASE = BC_IND_NAO_FISCAL_ULTIMA_RZ;

} // namespace

BOOL ReducaoZRows::Aliquota(const char* codePattern, int taxBase, int i)
{
    if (m_controller.Totalizador_GetTotProgramado(FISCAL_BASE, taxBase, i) == 0) {
        return TRUE;
    }

    m_insert.Begin(
        "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(");
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.TaxCode(codePattern, i + 1,
                     m_controller.Totalizador_GetTotPercTrib(FISCAL_BASE, taxBase, i));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetTot(FISCAL_BASE, taxBase, i));
    m_insert.Piece("'S',"); // id_fiscal
    m_insert.MoneyText("%s)", m_controller.Totalizador_GetTotTrib(FISCAL_BASE, taxBase, i));
    return m_insert.Execute(m_command, m_db);
}

BOOL ReducaoZRows::AliquotasICMS()
{
    for (int i = 0; i < ALIQUOTAS; ++i) {
        if (Aliquota("'%02dT%02d.%02d',", BC_IND_FISCAL_BI_IND_ICMS, i) == 0) {
            return FALSE;
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::AliquotasISSQN()
{
    for (int i = 0; i < ALIQUOTAS; ++i) {
        if (Aliquota("'%02dS%02d.%02d',", BC_IND_FISCAL_BI_IND_ISSQN, i) == 0) {
            return FALSE;
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::Especial(const char* code, BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase,
                            int i)
{
    std::strcpy(m_insert.aux, code);
    const int t_nTotIndex = m_controller.ResolveTotIndex(taxBase, m_insert.aux, i);
    if (m_controller.Totalizador_GetTotProgramado(FISCAL_BASE, taxBase, t_nTotIndex) == 0) {
        return TRUE;
    }

    m_insert.Begin(
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES(");
    m_insert.TextAt("'%s", code);
    m_insert.Integer("%d',", i);
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetTot(FISCAL_BASE, taxBase, t_nTotIndex));
    m_insert.Piece("'S',"); // id_fiscal
    m_insert.Piece("0)");   // valor_imposto
    return m_insert.Execute(m_command, m_db);
}

BOOL ReducaoZRows::EspeciaisICMS()
{
    for (int i = 1; i <= ESPECIAIS; ++i) {
        for (const char* code : {"F", "I", "N"}) {
            if (Especial(code, BC_IND_FISCAL_BI_IND_ICMS, i) == 0) {
                return FALSE;
            }
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::EspeciaisISSQN()
{
    for (int i = 1; i <= ESPECIAIS; ++i) {
        for (const char* code : {"FS", "IS", "NS"}) {
            if (Especial(code, BC_IND_FISCAL_BI_IND_ISSQN, i) == 0) {
                return FALSE;
            }
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::Soma(const char* pattern, const Financial& val)
{
    m_insert.Begin(
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES(");
    m_insert.Integer(pattern, m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.MoneyText("%s,", val);
    m_insert.Piece("'S',"); // id_fiscal
    m_insert.Piece("0)");   // valor_imposto
    return m_insert.Execute(m_command, m_db);
}

BOOL ReducaoZRows::DescontosAcrescimosCancelamentos()
{
    constexpr int icms = BC_IND_FISCAL_BI_IND_ICMS;
    constexpr int issqn = BC_IND_FISCAL_BI_IND_ISSQN;

    if (Soma("'DT',%d,", m_controller.Totalizador_GetSoma_Tot_Desc(FISCAL_BASE, icms)) == 0) {
        return FALSE;
    }
    if (Soma("'DS',%d,", m_controller.Totalizador_GetSoma_Tot_Desc(FISCAL_BASE, issqn)) == 0) {
        return FALSE;
    }
    if (Soma("'AT',%d,", m_controller.Totalizador_GetSoma_Tot_Acr(FISCAL_BASE, icms)) == 0) {
        return FALSE;
    }
    if (Soma("'AS',%d,", m_controller.Totalizador_GetSoma_Tot_Acr(FISCAL_BASE, issqn)) == 0) {
        return FALSE;
    }
    if (Soma("'Can-T',%d,", m_controller.Totalizador_GetSoma_Tot_Canc(FISCAL_BASE, icms)) == 0) {
        return FALSE;
    }
    return Soma("'Can-S',%d,", m_controller.Totalizador_GetSoma_Tot_Canc(FISCAL_BASE, issqn));
}

BOOL ReducaoZRows::NaoFiscal(int i)
{
    if (m_controller.Totalizador_GetTotNFProgramado(NAO_FISCAL_BASE, i) <= 0) {
        return TRUE;
    }

    m_insert.Begin(
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES(");
    m_controller.Totalizador_GetNomeNF(NAO_FISCAL_BASE, i, m_insert.aux, AUX_SIZE);
    m_insert.Text("'%s',", m_insert.aux);
    m_insert.Integer("%d,", m_controller.Contador_Get(COUNTER_CRZ));
    m_insert.MoneyText("%s,", m_controller.Totalizador_GetTotalNF(NAO_FISCAL_BASE, i));
    m_insert.Piece("'N',"); // id_fiscal
    m_insert.Piece("0)");   // valor_imposto
    return m_insert.Execute(m_command, m_db);
}

BOOL ReducaoZRows::NaoFiscais()
{
    for (int i = 0; i < NAO_FISCAIS; ++i) {
        if (NaoFiscal(i) == 0) {
            return FALSE;
        }
    }
    return TRUE;
}
