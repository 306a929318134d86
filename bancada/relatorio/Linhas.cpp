#include "bancada/relatorio/Linhas.h"

#include <algorithm>
#include <cstdint>

namespace bancada::relatorio
{

const char* const SELECT_FISCAL =
    "SELECT rowid, cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor,"
    " nome_consumidor, endereco_consumidor, assinatura_documento, valor_subtotal, valor_total,"
    " tipo_desconto, perc_desconto, valor_desconto, tipo_acrescimo, perc_acrescimo,"
    " valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado,"
    " id_cupom_adicional, texto_complementar, chave_cupom FROM cupom_fiscal";

Documento cupomFiscal(const Consulta& linha)
{
    Documento d;
    d.tipo = TipoDocumento::CUPOM_FISCAL;
    d.linha = linha.inteiro(0);
    d.coo = linha.inteiro(1);
    d.ccf = linha.inteiro(2);
    d.crz = linha.inteiro(3);
    d.inicio = linha.texto(4);
    d.cpfCnpj = linha.texto(5);
    d.nome = linha.texto(6);
    d.endereco = linha.texto(7);
    // The opening writes a comma behind the address, behind an empty one too.
    if (!d.endereco.empty() && d.endereco.back() == ',') {
        d.endereco.pop_back();
    }
    d.assinatura = linha.texto(8);
    d.subtotal = linha.decimal(9, 2);
    d.total = linha.decimal(10, 2);
    d.desconto = {linha.texto(11), linha.decimal(12, 2), linha.decimal(13, 2)};
    d.acrescimo = {linha.texto(14), linha.decimal(15, 2), linha.decimal(16, 2)};
    d.acrescimoCancelado = linha.decimal(17, 2);
    d.troco = linha.decimal(18, 2);
    d.mensagem = linha.texto(19);
    d.cancelado = linha.sim(20);
    d.adicional = linha.sim(21);
    d.aplicativo = linha.texto(22);
    d.chave = linha.texto(23);
    return d;
}

const char* const SELECT_NF =
    "SELECT n.rowid, n.cont_coo, n.cont_crz, n.cont_gnf, n.data_hora_emissao, n.valor_subtotal,"
    " n.valor_total_cupom, n.tipo_desconto, n.perc_desconto, n.valor_desconto, n.tipo_acrescimo,"
    " n.perc_acrescimo, n.valor_acrescimo, n.valor_canc_acrescimo, n.id_cancelado,"
    " n.nome_consumidor, n.cpf_cnpj_consumidor,"
    " (SELECT max(o.data_hora_fim_emissao) FROM outros_documentos o"
    "  WHERE o.cont_coo = n.cont_coo AND o.id_tipo_documento = 'CN') FROM cupom_nf n";

Documento cupomNf(const Consulta& linha)
{
    Documento d;
    d.tipo = TipoDocumento::COMPROVANTE_NF;
    d.codigo = "CN";
    d.linha = linha.inteiro(0);
    d.coo = linha.inteiro(1);
    d.crz = linha.inteiro(2);
    d.gnf = linha.inteiro(3);
    d.inicio = linha.texto(4);
    d.subtotal = linha.decimal(5, 2);
    d.total = linha.decimal(6, 2);
    d.desconto = {linha.texto(7), linha.decimal(8, 2), linha.decimal(9, 2)};
    d.acrescimo = {linha.texto(10), linha.decimal(11, 2), linha.decimal(12, 2)};
    d.acrescimoCancelado = linha.decimal(13, 2);
    d.cancelado = linha.sim(14);
    d.nome = linha.texto(15);
    d.cpfCnpj = linha.texto(16);
    d.fim = linha.texto(17);
    return d;
}

const char* const SELECT_OUTRO =
    "SELECT o.rowid, o.cont_coo, o.cont_gnf, o.cont_grg, o.cont_cdc, o.cont_crz,"
    " o.data_hora_inicio_emissao, o.data_hora_fim_emissao, o.id_tipo_documento"
    " FROM outros_documentos o WHERE NOT (o.id_tipo_documento IS 'CN' AND"
    " EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo = o.cont_coo)) AND"
    " NOT (o.id_tipo_documento IS 'RZ' AND"
    " EXISTS (SELECT 1 FROM reducao_z z WHERE z.cont_coo = o.cont_coo))";

Documento outroDocumento(const Consulta& linha)
{
    Documento d;
    d.linha = linha.inteiro(0);
    d.coo = linha.inteiro(1);
    d.gnf = linha.inteiro(2);
    d.grg = linha.inteiro(3);
    d.cdc = linha.inteiro(4);
    d.crz = linha.inteiro(5);
    d.inicio = linha.texto(6);
    d.fim = linha.texto(7);
    d.codigo = linha.texto(8);
    return d;
}

// The last two columns are crossed over in the table: each holds what the other is called.
const char* const SELECT_REDUCAO =
    "SELECT rowid, cont_crz, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro,"
    " valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms,"
    " valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss,"
    " tempo_operacional, tempo_emitindo_doc FROM reducao_z";

ReducaoZ reducaoZ(const Consulta& linha)
{
    const auto soma = [&linha](int primeira) {
        return SomaImposto{linha.decimal(primeira, 2), linha.decimal(primeira + 1, 2),
                           linha.decimal(primeira + 2, 2), linha.decimal(primeira + 3, 2),
                           linha.decimal(primeira + 4, 2)};
    };
    ReducaoZ z;
    z.linha = linha.inteiro(0);
    z.crz = linha.inteiro(1);
    z.emissao = linha.texto(2);
    z.movimento = linha.texto(3).substr(0, 10);
    z.coo = linha.inteiro(4);
    z.gnf = linha.inteiro(5);
    z.cro = linha.inteiro(6);
    z.gt = linha.decimal(7, 2);
    z.vb = linha.decimal(8, 2);
    z.icms = soma(9);
    z.issqn = soma(14);
    z.segundosEmitindo = linha.inteiro(19);
    z.segundosOperacional = linha.inteiro(20);
    return z;
}

Documento documentoDaReducao(const ReducaoZ& reducao)
{
    Documento d;
    d.tipo = TipoDocumento::REDUCAO_Z;
    d.codigo = "RZ";
    d.linha = reducao.linha;
    d.coo = reducao.coo;
    d.crz = reducao.crz;
    d.gnf = reducao.gnf;
    d.inicio = reducao.emissao;
    d.total = reducao.vb;
    d.reducao = reducao;
    return d;
}

const char* const SELECT_ITENS_FISCAIS =
    "SELECT seq_item, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario,"
    " tipo_desconto, perc_desconto, valor_desconto, tipo_acrescimo, perc_acrescimo,"
    " valor_acrescimo, valor_canc_acrescimo, valor_total, id_arred_trunc_valor, id_cancelado,"
    " casas_decimais_quantidade, casas_decimais_valor FROM item_cupom_fiscal WHERE cont_coo = ?1 ORDER BY rowid";

Item itemFiscal(const Consulta& linha)
{
    Item i;
    i.numero = linha.inteiro(0);
    i.codigo = linha.texto(1);
    i.descricao = linha.texto(2);
    i.quantidade = linha.decimal(3, 4);
    i.aliquota = linha.texto(4);
    i.unidade = linha.texto(5);
    i.valorUnitario = linha.decimal(6, 4);
    i.desconto = {linha.texto(7), linha.decimal(8, 2), linha.decimal(9, 3)};
    i.acrescimo = {linha.texto(10), linha.decimal(11, 2), linha.decimal(12, 3)};
    i.acrescimoCancelado = linha.decimal(13, 3);
    i.liquido = linha.decimal(14, 3);
    i.arredondaTrunca = linha.texto(15);
    i.cancelado = linha.sim(16);
    i.casasQuantidade = static_cast<int>(std::clamp<std::int64_t>(linha.inteiro(17), 0, 4));
    i.casasValor = static_cast<int>(std::clamp<std::int64_t>(linha.inteiro(18), 2, 4));
    return i;
}

const char* const SELECT_ITENS_NF =
    "SELECT seq_item, indice_totalizador_nf, valor_total_liquido, tipo_desconto, perc_desconto,"
    " valor_desconto, tipo_acrescimo, perc_acrescimo, valor_acrescimo, valor_canc_acrescimo,"
    " id_cancelado FROM item_cupom_nf WHERE cont_coo = ?1 ORDER BY rowid";

Item itemNf(const Consulta& linha)
{
    Item i;
    i.numero = linha.inteiro(0);
    i.totalizador = linha.inteiro(1);
    i.liquido = linha.decimal(2, 3);
    i.desconto = {linha.texto(3), linha.decimal(4, 2), linha.decimal(5, 3)};
    i.acrescimo = {linha.texto(6), linha.decimal(7, 2), linha.decimal(8, 3)};
    i.acrescimoCancelado = linha.decimal(9, 3);
    i.cancelado = linha.sim(10);
    return i;
}

const char* const SELECT_PAGAMENTOS =
    "SELECT cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento,"
    " id_estornado, valor_estornado FROM pagamento_cupom WHERE cont_coo = ?1 ORDER BY rowid";

Pagamento pagamento(const Consulta& linha)
{
    Pagamento p;
    p.contGnf = linha.inteiro(0);
    p.valor = linha.decimal(1, 2);
    p.parcelas = linha.inteiro(2);
    p.info = linha.texto(3);
    p.meio = linha.inteiro(4);
    p.estornado = linha.sim(5);
    p.valorEstornado = linha.decimal(6, 2);
    return p;
}

} // namespace bancada::relatorio
