// The programming of the register.
#include "tests/fuzz/loggers/Reference.h"

namespace reference
{

void Reference::Of(const CmdInsereAliquota&) {}

void Reference::Of(const CmdHabilitaTotalizadores&) {}

void Reference::Of(const CmdDesabilitaTotalizadores&) {}

void Reference::Of(const CmdProgramaLoja&) {}

void Reference::Of(const CmdInsereMeiosPagamento& insere)
{
    const std::string number = std::to_string(insere.m_iIndice);
    const int rows = Ask("SELECT count(*) FROM meio_pagamento WHERE num_indice = " + number);
    if (rows < 0) {
        m_expected.answer = FALSE;
        return;
    }
    const std::string descricao = TextOf(insere.m_sDescricao);
    const std::string vinculado = insere.m_eVinculacaoCCD == 0 ? "S" : "N";
    Say(rows == 0 ? "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, "
                    "id_vinculacao_ccd) VALUES (" +
                        number + ",1,'" + descricao + "','" + vinculado + "')"
                  : "UPDATE meio_pagamento SET descricao = '" + descricao +
                        "',id_vinculacao_ccd = '" + vinculado + "' WHERE num_indice = " + number);
}

void Reference::Of(const CmdInsereRegOpeNF& insere)
{
    const std::string number = std::to_string(insere.m_iIndice);
    const std::string descricao = TextOf(insere.m_sDescricao);
    const bool known =
        Ask("SELECT count(*) FROM totalizador_nao_fiscal WHERE num_indice = " + number) > 0;
    Say(known ? "UPDATE totalizador_nao_fiscal SET descricao='" + descricao +
                    "' WHERE num_indice=" + number
              : "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (" + number +
                    ",'" + descricao + "')");
}

void Reference::Of(const CmdProgramaSequenciaECF& programa)
{
    Say("UPDATE dados_ecf SET num_caixa = " + std::to_string(programa.m_iNumCaixa) +
        " WHERE num_ecf = 1");
}

// What both commands write of the owner.
std::string Reference::Nomes()
{
    char text[500];
    std::string names =
        "1,'" + TextAt(m_model.DadosContribuinte_GetEndereco(text, sizeof text)) + "','";
    names += TextAt(m_model.DadosContribuinte_GetNomeFantasia(text, sizeof text)) + "','";
    return names + TextAt(m_model.DadosContribuinte_GetRazaoSocial(text, sizeof text)) + "',";
}

std::string Reference::Programacao()
{
    const int cro = m_model.Contador_Get(COUNTER_CRO);
    return "'" + Started() + "'," + std::to_string(cro == 0 ? 1 : cro) + "," +
           Money(m_model.Totalizador_GetGTIni(0)) + ")";
}

void Reference::Of(const CmdProgramaUsuario&)
{
    const int rows = Ask("SELECT count(*) FROM dados_usuario");
    if (rows < 0) {
        m_expected.answer = FALSE;
        return;
    }
    if (rows == 0) {
        Say("INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, "
            "data_hora_gravacao, cont_cro, valor_gt) VALUES(" +
            Nomes() + Programacao());
        return;
    }
    char text[500];
    std::string sql = "UPDATE dados_usuario SET endereco = '" +
                      TextAt(m_model.DadosContribuinte_GetEndereco(text, sizeof text)) + "',";
    sql += "nome_fantasia = '" +
           TextAt(m_model.DadosContribuinte_GetNomeFantasia(text, sizeof text)) + "',";
    sql += "razao_social = '" +
           TextAt(m_model.DadosContribuinte_GetRazaoSocial(text, sizeof text)) + "', ";
    Say(sql + "cont_cro = " + Counter(COUNTER_CRO) +
        ", valor_gt = " + Money(m_model.Totalizador_GetGTIni(0)) + " WHERE seq_usuario = 1");
}

void Reference::Of(const CmdProgramaCNPJ_IE_IM& programa)
{
    const int rows = Ask("SELECT count(*) FROM dados_usuario");
    if (rows < 0) {
        m_expected.answer = FALSE;
        return;
    }
    if (rows == 0) {
        Say("INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, cnpj, "
            "ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(" +
            Nomes() + "'" + TextOf(programa.m_sCNPJ) + "','" + TextOf(programa.m_sIE) + "','" +
            TextOf(programa.m_sIM) + "','" + TextOf(programa.m_sUF) + "'," + Programacao());
        return;
    }
    char text[500];
    std::string sql = "UPDATE dados_usuario SET cnpj = '" + TextOf(programa.m_sCNPJ) + "', ie = '" +
                      TextOf(programa.m_sIE) + "', uf = '" + TextOf(programa.m_sUF) + "', im = '" +
                      TextOf(programa.m_sIM) + "',cont_cro = " + Counter(COUNTER_CRO) +
                      " ,endereco = '" +
                      TextAt(m_model.DadosContribuinte_GetEndereco(text, sizeof text)) + "',";
    sql += "nome_fantasia = '" +
           TextAt(m_model.DadosContribuinte_GetNomeFantasia(text, sizeof text)) + "',";
    sql += "razao_social = '" +
           TextAt(m_model.DadosContribuinte_GetRazaoSocial(text, sizeof text)) + "', ";
    Say(sql + "valor_gt = " + Money(m_model.Totalizador_GetGTIni(0)) + " WHERE seq_usuario = 1");
}

void Reference::Of(const CmdProgramaNrSerie& programa)
{
    char text[500];
    const int rows = std::max(Ask("SELECT count(*) FROM dados_ecf"), 0);
    if (rows == 0) {
        const std::string caixa = m_model.DadosECF_GetNrOrdemSeq(text, sizeof text);
        Say("INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('" +
            TextOf(programa.m_sNumSerie) + "','" + TextOf(programa.m_sMarca) + "','" +
            TextOf(programa.m_sModelo) + "','" + TextOf(programa.m_sTipo) + "'," +
            (caixa.empty() ? "0" : caixa) + ")");
    } else {
        Say("UPDATE dados_ecf SET num_serie = '" + TextOf(programa.m_sNumSerie) + "',marca = '" +
            TextOf(programa.m_sMarca) + "',modelo = '" + TextOf(programa.m_sModelo) + "',tipo = '" +
            TextOf(programa.m_sTipo) + "' WHERE num_ecf = 1");
    }
    const int versions = Ask("SELECT count(*) FROM versao_sb");
    if ((versions < 0 ? rows : versions) == 0) {
        Say("INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'" +
            TextAt(m_model.DadosECF_GetVersaoSB(text, sizeof text)) + "')");
    }
}

void Reference::Of(const CmdProgramaMoeda& programa)
{
    Say("INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1," + Started() +
        "'" + TextOf(programa.m_sSimboloMoeda) + "')");
}

} // namespace reference
