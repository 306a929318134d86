// Readings, vouchers, the Z reduction, interventions and reprints.
#include "tests/fuzz/loggers/Reference.h"

namespace reference
{

void Reference::Of(const CmdLeituraX& leitura)
{
    if (leitura.m_eMidia != 2) {
        Documento("LX");
    }
}

void Reference::Of(const CmdLeituraMF&)
{
    Documento("MF");
}

void Reference::Of(const CmdAbreCCD&)
{
    Documento("CC");
}

void Reference::Of(const CmdAbreEstornoCCD&) {}

void Reference::Of(const CmdAbreGerencial&)
{
    Documento("RG");
}

void Reference::Of(const CmdFechaCCDGerencial&)
{
    FimDoDocumento();
}

void Reference::Aliquotas(int taxBase, char letter)
{
    for (int i = 0; i < 30; ++i) {
        if (m_model.Totalizador_GetTotProgramado(2, taxBase, i) != 0) {
            Say("INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, "
                "id_fiscal, valor_imposto) VALUES(" +
                Counter(COUNTER_CRZ) + ",'" +
                TaxCode(i + 1, letter, m_model.Totalizador_GetTotPercTrib(2, taxBase, i)) + "'," +
                Money(m_model.Totalizador_GetTot(2, taxBase, i)) + ",'S'," +
                Money(m_model.Totalizador_GetTotTrib(2, taxBase, i)) + ")");
        }
    }
}

void Reference::Especiais(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase,
                          const std::vector<std::string>& codes)
{
    for (int i = 1; i <= 3; ++i) {
        for (const std::string& code : codes) {
            std::string asked = code;
            const int at = m_model.ResolveTotIndex(taxBase, asked.data(), i);
            if (m_model.Totalizador_GetTotProgramado(2, taxBase, at) != 0) {
                Say("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
                    "id_fiscal, valor_imposto) VALUES('" +
                    code + std::to_string(i) + "'," + Counter(COUNTER_CRZ) + "," +
                    Money(m_model.Totalizador_GetTot(2, taxBase, at)) + ",'S',0)");
            }
        }
    }
}

void Reference::Of(const CmdReducaoZ&)
{
    const RtcAbsoluteTime movimento = m_model.Jornada_GetDataMovimento();
    const UINT32 dia = movimento.s == matlong[0] ? m_command.m_dtExecStart.s : movimento.s;
    std::string sql =
        "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, "
        "cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, "
        "valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, "
        "valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (" +
        Counter(COUNTER_CRZ) + ",1,'" + Started() + "','" + InstantOf(dia, "%Y-%m-%d") +
        " 00:00:00'," + Counter(COUNTER_COO) + "," + Counter(COUNTER_GNF) + "," +
        Counter(COUNTER_CRO) + "," + Money(m_model.Totalizador_GetGT()) + "," +
        Money(m_model.Totalizador_GetVB(2)) + ",";
    for (const int taxBase : {0, 1}) {
        sql += Money(m_model.Totalizador_GetSoma_Tot_VL(2, taxBase)) + "," +
               Money(m_model.Totalizador_GetSoma_TotTrib(2, taxBase)) + "," +
               Money(m_model.Totalizador_GetSoma_Tot_Desc(2, taxBase)) + "," +
               Money(m_model.Totalizador_GetSoma_Tot_Acr(2, taxBase)) + "," +
               Money(m_model.Totalizador_GetSoma_Tot_Canc(2, taxBase)) + ",";
    }
    const auto seconds = [](RtcRelativeTime tempo) {
        return std::to_string(static_cast<std::int32_t>(tempo.s));
    };
    Say(sql + seconds(m_model.Jornada_GetTempoEmitindoDocFiscal()) + "," +
        seconds(m_model.Jornada_GetTempoOperacional(m_command.m_dtExecStart)) + ")");

    Aliquotas(0, 'T');
    Aliquotas(1, 'S');
    Especiais(BC_IND_FISCAL_BI_IND_ICMS, {"F", "I", "N"});
    Especiais(BC_IND_FISCAL_BI_IND_ISSQN, {"FS", "IS", "NS"});

    const auto soma = [this](const char* name, const Financial& value) {
        Say(std::string("INSERT INTO totalizador_reducao(totalizador, cont_crz, "
                        "valor_base_calculo, id_fiscal, valor_imposto) VALUES('") +
            name + "'," + Counter(COUNTER_CRZ) + "," + Money(value) + ",'S',0)");
    };
    soma("DT", m_model.Totalizador_GetSoma_Tot_Desc(2, 0));
    soma("DS", m_model.Totalizador_GetSoma_Tot_Desc(2, 1));
    soma("AT", m_model.Totalizador_GetSoma_Tot_Acr(2, 0));
    soma("AS", m_model.Totalizador_GetSoma_Tot_Acr(2, 1));
    soma("Can-T", m_model.Totalizador_GetSoma_Tot_Canc(2, 0));
    soma("Can-S", m_model.Totalizador_GetSoma_Tot_Canc(2, 1));

    char text[500];
    for (int i = 0; i < 39; ++i) {
        if (m_model.Totalizador_GetTotNFProgramado(3, i) > 0) {
            Say("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
                "id_fiscal, valor_imposto) VALUES('" +
                std::string(m_model.Totalizador_GetNomeNF(3, i, text, sizeof text)) + "'," +
                Counter(COUNTER_CRZ) + "," + Money(m_model.Totalizador_GetTotalNF(3, i)) +
                ",'N',0)");
        }
    }

    const int meios = m_model.BaseFormasPagamento_GetNumeroDeFormasDePagamento();
    const auto meio = [this](int number, const std::string& name, const Financial& value) {
        Say("INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, "
            "descricao_meio_pagamento, valor_acumulado) VALUES(" +
            std::to_string(number) + "," + Counter(COUNTER_CRZ) + ",'" + name + "'," +
            Money(value) + ")");
    };
    for (int i = 0; i < meios; ++i) {
        if (m_model.BaseFormasPagamento_GetMeioPagamentoProgramado(i) != 0) {
            meio(i + 1, m_model.BaseFormasPagamento_GetMeioPagamento(i, text, sizeof text),
                 m_model.BaseFormasPagamento_GetFPTotal(i));
        }
    }
    meio(meios + 1, "TROCO", m_model.BaseFormasPagamento_GetTrocoTotal());
    Documento("RZ");
}

void Reference::Intervencao(const char* tipo)
{
    if (Ask("SELECT count(*) FROM intervencao WHERE cont_cro = " + Counter(COUNTER_CRO)) <= 0) {
        Say("INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, "
            "id_tipo_intervencao, id_perda_dados_mt) VALUES (" +
            Counter(COUNTER_CRO) + ",1,'" + Started() + "','" + tipo + "','N')");
    }
}

void Reference::Of(const CmdEntradaMILInterno&)
{
    Intervencao("L");
    Documento("LX");
}

void Reference::Of(const CmdEntradaMITInterno&)
{
    Intervencao("T");
}

void Reference::Of(const CmdSaidaMILInterno&)
{
    Documento("LX");
}

void Reference::Of(const CmdSaidaMITInterno&)
{
    Documento("LX");
}

void Reference::Of(const CmdReimprimeMFD& reimprime)
{
    const std::string number = Counter(COUNTER_CFD, 1);
    if (Ask("SELECT count(*) FROM fita_detalhe WHERE cont_cfd = " + number) <= 0) {
        Say("INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, "
            "coo_final) VALUES (" +
            number + ",1,'" + Started() + "'," + std::to_string(reimprime.m_iCooInicial) + "," +
            std::to_string(reimprime.m_iCooFinal) + ")");
    }
}

} // namespace reference
