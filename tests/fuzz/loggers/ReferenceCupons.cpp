// Fiscal and non-fiscal receipts.
#include "FiscalData/RateioSubtotal.h"
#include "tests/fuzz/loggers/Reference.h"

namespace reference
{

void Reference::Of(const CmdAbreCupom& abre)
{
    std::string endereco = TextOf(abre.m_sEnderecoConsumidor);
    endereco.resize(std::min(endereco.size(), sizeof abre.m_sEnderecoConsumidor - 1));
    Say("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, "
        "cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, "
        "valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, "
        "valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado, "
        "id_cupom_adicional, perc_acrescimo, perc_desconto, texto_complementar, chave_cupom) "
        "VALUES (" +
            Counter(COUNTER_COO) + "," + Counter(COUNTER_CCF) + "," + Counter(COUNTER_CRZ, 1) +
            ",'" + Started() + "','" + TextOf(abre.m_sCPF_CNPJ) + "','" +
            TextOf(abre.m_sNomeConsumidor) + "','" + Removed(endereco + ",", '\'') +
            "',' ',0,0,'V',0,'V',0,0,0,' ','N','N',0,0,' ',' ')",
        LARGE_STATEMENT);
}

template <class Venda>
void Reference::LogVenda(const Venda& venda, const std::string& descricao, char issqn)
{
    char text[500];
    const int item = m_model.Cupom_GetQuantidadeDeItens() - 1;
    const std::string tributacao = TextOf(venda.m_sTributacao);
    const int number = venda.m_iIndiceTributacao;
    std::string aliquota = tributacao + std::to_string(number);
    if (tributacao.rfind('T', 0) == 0) {
        aliquota = TaxCode(number, 'T', m_model.Totalizador_GetTotPercTrib(0, 0, number - 1));
    } else if (tributacao.rfind('S', 0) == 0) {
        aliquota = TaxCode(number, issqn, m_model.Totalizador_GetTotPercTrib(0, 1, number - 1));
    }
    const std::string arredTrunc =
        venda.m_cArredTrunc == '\0' ? "'" : std::string("'") + venda.m_cArredTrunc + "',";
    Say("INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, "
        "aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, "
        "valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, "
        "casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) "
        "VALUES (" +
            std::to_string(item + 1) + "," + Counter(COUNTER_COO) + ",'" +
            TextOf(venda.m_sCodigoItem) + "','" + descricao + "'," +
            Replaced(m_model.Cupom_GetItemQtdeStr(item, text, sizeof text), ',', '.') + ",'" +
            aliquota + "','" + TextOf(venda.m_sUnidadeMedida) + "'," +
            Replaced(m_model.Cupom_GetItemValorUnitarioStr(item, text, sizeof text), ',', '.') +
            ",'V',0,'V',0,0," +
            Money(m_model.Cupom_GetItemValorTotal(item), venda.m_iCasasDecimaisValor == 3 ? 3 : 2) +
            "," + std::to_string(venda.m_iCasasDecimaisQtde) + "," +
            std::to_string(venda.m_iCasasDecimaisValor) + "," + arredTrunc + "'N',0,0)",
        LARGE_STATEMENT);
    m_expected.descricao = descricao;
}

void Reference::Of(const CmdVendeItem& vende)
{
    LogVenda(vende, Replaced(TextOf(vende.m_sDescricao), '\'', '`'), 'S');
}

void Reference::Of(const CmdVendeItemDetalhado& vende)
{
    LogVenda(vende, TextOf(vende.m_sDescricao), 'T');
}

void Reference::TotalDoItem(int item)
{
    const std::string total = Money(m_model.Cupom_GetItemValorTotal(item - 1));
    Say((IsFiscal() ? "UPDATE item_cupom_fiscal SET valor_total = "
                    : "UPDATE item_cupom_nf SET valor_total_liquido = ") +
        total + " WHERE cont_coo = " + Counter(COUNTER_COO) +
        " and seq_item = " + std::to_string(item));
}

void Reference::Of(const CmdEfetuaDescAcresItem& efetua)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    const int item =
        efetua.m_iNumeroItem == 0 ? m_model.Cupom_GetQuantidadeDeItens() : efetua.m_iNumeroItem;
    std::string sql = IsFiscal() ? "UPDATE item_cupom_fiscal SET " : "UPDATE item_cupom_nf SET ";
    const bool byValue = efetua.m_eTipoValor == 0;
    if (efetua.m_eOperacao == 1) {
        if (byValue) {
            sql += IsFiscal() ? "tipo_acrescimo = 'V', "
                              : "tipo_acrescimo = 'V', perc_acrescimo = 0, ";
        } else {
            sql += "tipo_acrescimo = 'P', perc_acrescimo = " + Percent(efetua.m_Valor) + ", ";
        }
        sql += "valor_acrescimo = " + Money(m_model.Cupom_GetItemValorAcr(item - 1)) + " ";
    } else if (efetua.m_eOperacao == 0) {
        sql += byValue ? "tipo_desconto = 'V', perc_desconto = 0, "
                       : "tipo_desconto = 'P', perc_desconto = " + Percent(efetua.m_Valor) + ", ";
        sql += "valor_desconto = " + Money(m_model.Cupom_GetItemValorDesc(item - 1)) + " ";
    }
    Say(sql + "WHERE cont_coo = " + Counter(COUNTER_COO) +
        " and seq_item = " + std::to_string(item));
    TotalDoItem(item);
}

void Reference::Of(const CmdCancelaDescAcresItem& cancela)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    const int item = cancela.m_iNumeroItem;
    std::string sql = IsFiscal() ? "UPDATE item_cupom_fiscal SET " : "UPDATE item_cupom_nf SET ";
    if (cancela.m_eOperacao == 1) {
        sql += "valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0 ";
    } else if (cancela.m_eOperacao == 0) {
        sql += "valor_desconto = " + Money(m_model.Cupom_GetItemValorDesc(item - 1)) + " ";
    }
    Say(sql + "WHERE cont_coo = " + Counter(COUNTER_COO) +
        " and seq_item = " + std::to_string(item));
    TotalDoItem(item);
}

void Reference::Of(const CmdEfetuaDescAcresSubtotal& efetua)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    const std::string valor = Money(m_model.Cupom_GetSTValorDescAcr());
    const bool byValue = efetua.m_eTipoValor == 0;
    std::string sql = IsFiscal() ? "UPDATE cupom_fiscal SET " : "UPDATE cupom_nf SET ";
    if (efetua.m_eOperacao == 1) {
        if (byValue) {
            sql += IsFiscal() ? "tipo_acrescimo = 'V', perc_acrescimo = 0, "
                              : "tipo_acrescimo = 'V', ";
        } else {
            sql += (IsFiscal() ? "tipo_acrescimo = 'P', perc_acrescimo = " : "perc_acrescimo = ") +
                   Percent(efetua.m_Valor) + ", ";
        }
        sql += "valor_acrescimo = " + valor + " ";
    } else if (efetua.m_eOperacao == 0) {
        if (byValue) {
            sql +=
                IsFiscal() ? "tipo_desconto = 'V', perc_desconto = 0, " : "tipo_desconto = 'V', ";
        } else {
            sql += "perc_desconto = " + Percent(efetua.m_Valor) + ", ";
        }
        sql += "valor_desconto = " + valor + " ";
    }
    Say(sql + "WHERE cont_coo = " + Counter(COUNTER_COO));
}

void Reference::Of(const CmdCancelaDescAcresSubtotal& cancela)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    const std::string valor =
        Money(m_model.Cupom_GetSTValorDescAcr() - m_model.Cupom_GetSTValorCanceladoDescAcr());
    std::string sql = IsFiscal() ? "UPDATE cupom_fiscal SET " : "UPDATE cupom_nf SET ";
    if (cancela.m_eOperacao == 1) {
        sql += "valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = " + valor + " ";
    } else if (cancela.m_eOperacao == 0) {
        sql += "valor_desconto = " + valor + " ";
    }
    Say(sql + "WHERE cont_coo = " + Counter(COUNTER_COO));
}

void Reference::Pagamento(int coo, const Financial& valor, int parcelas, const std::string& info,
                          int meio)
{
    Say("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
        "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (" +
        std::to_string(coo) + "," + Counter(COUNTER_GNF) + "," + Money(valor) + "," +
        std::to_string(parcelas) + ",'" + info + "'," + std::to_string(meio) + ",'N',0)");
}

void Reference::Of(const CmdEfetuaPagamento& paga)
{
    Pagamento(m_model.Contador_Get(COUNTER_COO), paga.m_finValor, paga.m_iNumParcelas,
              TextOf(paga.m_sInfoAdicional), paga.m_iMeioPagamento);
}

void Reference::Of(const CmdEstornaMeioPagamento& estorna)
{
    Say("UPDATE pagamento_cupom SET valor_estornado = " + Money(estorna.m_finValor) +
        ", valor_pagamento = (valor_pagamento - valor_estornado), id_estornado = 'S' WHERE "
        "cont_coo = " +
        std::to_string(m_model.Cupom_GetCOO()) +
        " AND indice_meio_pagamento = " + std::to_string(estorna.m_iMeioPagamentoOrigem));
    Pagamento(m_model.Cupom_GetCOO(), estorna.m_finValor, estorna.m_iNumParcelas,
              TextOf(estorna.m_sInfoAdicional), estorna.m_iMeioPagamentoDestino);
}

namespace
{

// The consumer's digits behind the label, or nothing.
std::string ConsumerIn(const std::string& message)
{
    const std::string label = "CNPJ/CPF consumidor:";
    const std::size_t at = message.find(label);
    if (at == std::string::npos) {
        return "";
    }
    std::string number = message.substr(at + label.size());
    if (number.rfind(' ', 0) == 0) {
        number.erase(0, 1);
    }
    number = number.substr(0, number.find(' '));
    std::string digits;
    std::copy_if(number.begin(), number.end(), std::back_inserter(digits),
                 [](char character) { return character >= '0' && character <= '9'; });
    digits = digits.substr(0, 14);
    return digits.size() == 11 || digits.size() == 14 ? digits : "";
}

} // namespace

void Reference::Of(const CmdFechaCupom& fecha)
{
    char text[1500];
    char signature[sizeof fecha.m_sAssinaturaDigitalDocumento] = {};
    std::string message = TextOf(fecha.m_sMsgPromocional);
    message.resize(std::min(message.size(), sizeof fecha.m_sMsgPromocional - 1));
    const std::string consumer = ConsumerIn(message);
    m_model.AssinaturaDigital_GetBase64(text, signature);
    std::string sql = std::string("UPDATE cupom_fiscal SET assinatura_documento = '") + text +
                      "', valor_subtotal = " + Money(m_model.Cupom_GetSubTotal()) +
                      ", valor_total = " + Money(m_model.Cupom_GetTotal()) +
                      ", valor_troco = " + Money(m_model.Cupom_GetTroco()) + ", ";
    if (!consumer.empty()) {
        sql += "cpf_cnpj_consumidor = '" + consumer + "', ";
    }
    sql += "texto_suplementar = '" + Replaced(message, '\'', ' ') + "', ";
    m_model.DadosPDV_GetIdAplicativo(text, sizeof text);
    sql += "texto_complementar = '" + Replaced(text, '\'', ' ') + "', ";
    m_model.CFe_GetChaveDeBusca(text, sizeof text);
    sql += "chave_cupom = '" + Replaced(text, '\'', ' ') + "' ";
    if (fecha.m_bCupomAdicional == 1) {
        sql += "id_cupom_adicional = 'S' ";
    }
    Say(sql + "WHERE cont_coo = " + Counter(COUNTER_COO), LARGE_STATEMENT);
    if (GetRatearSubtotal() == 1 &&
        (m_model.Cupom_GetSTDescAplicado() == 1 || m_model.Cupom_GetSTAcrAplicado() == 1)) {
        Rateio();
    }
}

void Reference::Rateio()
{
    const auto copy = std::make_unique<Cupom>();
    if (m_model.Cupom_GetRateioPorItem(copy.get()) == 0) {
        m_expected.answer = FALSE;
        return;
    }
    for (int i = 0; i < copy->m_iQuantidadeDeItens; ++i) {
        const ItemCupom& item = copy->m_Itens[i];
        Say("UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, "
            "valor_acrescimo = " +
                Money(item.m_finValorAcr) +
                ", tipo_desconto = 'V', perc_desconto = 0, valor_desconto = " +
                Money(item.m_finValorDesc) + ", valor_total = " + Money(item.m_finValorTotal) +
                " WHERE cont_coo = " + Counter(COUNTER_COO) +
                " AND seq_item = " + std::to_string(i + 1),
            LARGE_STATEMENT);
    }
}

void Reference::Of(const CmdCancelaItem& cancela)
{
    Say(std::string("UPDATE ") + (IsFiscal() ? "item_cupom_fiscal" : "item_cupom_nf") +
        " SET id_cancelado = 'S' where cont_coo = '" + Counter(COUNTER_COO) + "' and seq_item = '" +
        std::to_string(cancela.m_iNumeroItem) + "'");
}

void Reference::Of(const CmdCancelaCupomFiscalNfEmEmissao&)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    Say(std::string("UPDATE ") + (IsFiscal() ? "cupom_fiscal" : "cupom_nf") +
        " SET id_cancelado = 'S' WHERE cont_coo = '" + Counter(COUNTER_COO) + "'");
}

void Reference::Of(const CmdCancelaCupom& cancela)
{
    if (IsNeither()) {
        m_expected.answer = FALSE;
        return;
    }
    Say(std::string("UPDATE ") + (IsFiscal() ? "cupom_fiscal" : "cupom_nf") +
        " SET id_cancelado = 'S' where cont_coo = '" + std::to_string(cancela.m_iCOOCancelado) +
        "'");
    if (!IsFiscal()) {
        Documento("NC");
    }
}

std::string Reference::InicioCupomNf()
{
    return "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, "
           "valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, "
           "valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, "
           "cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (" +
           Counter(COUNTER_COO) + "," + Counter(COUNTER_CRZ, 1) + "," + Counter(COUNTER_GNF) +
           ",1,'" + Started() + "',";
}

void Reference::Of(const CmdAbreCNF& abre)
{
    Say(InicioCupomNf() + "0,0,'V',0,'V',0,0,'N','" + TextOf(abre.m_sNomeConsumidor) + "','" +
        TextOf(abre.m_sCPF_CNPJ) + "',0,0)");
    Documento("CN");
}

void Reference::Of(const CmdVendeItemNF& vende)
{
    char text[500];
    const int item = m_model.Cupom_GetQuantidadeDeItens() - 1;
    const std::string valor =
        Replaced(m_model.Cupom_GetItemValorUnitarioStr(item, text, sizeof text), ',', '.');
    Say("INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, "
        "valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, "
        "valor_canc_acrescimo, id_cancelado) VALUES (" +
        std::to_string(item + 1) + "," + Counter(COUNTER_COO) + "," +
        std::to_string(vende.m_iIndiceTotalizador) + "," + valor + "," + valor +
        ",'V',0,'V',0,0,'N')");
}

void Reference::Of(const CmdFechaCupomNF&)
{
    Say("UPDATE cupom_nf SET valor_total_cupom = " + Money(m_model.Cupom_GetTotal()) +
        ", valor_subtotal = " + Money(m_model.Cupom_GetSubTotal()) +
        " WHERE cont_coo = " + Counter(COUNTER_COO));
    FimDoDocumento();
}

void Reference::Of(const CmdSangria& sangria)
{
    const std::string valor = Money(m_model.Cupom_GetItemValorTotal(0));
    Say(InicioCupomNf() + valor + "," + valor + ",'V',0,'V',0,0,'N','','',0,0)");
    Say("INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, "
        "valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, "
        "id_cancelado) VALUES (1," +
        Counter(COUNTER_COO) + "," + (sangria.m_eTipoOperacao == 0 ? "1" : "2") + "," + valor +
        "," + valor + ",0,0,0,'N')");
    Documento("CN");
}

} // namespace reference
