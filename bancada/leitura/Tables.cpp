#include "bancada/leitura/Tables.h"

#include "bancada/leitura/Limits.h"

namespace bancada::leitura
{

const Table<OutroDocumentoRow>& OutroDocumentoTable()
{
    static const Table<OutroDocumentoRow> table(
        "outros_documentos",
        {
            {"cont_coo", &OutroDocumentoRow::coo, Domain::COUNTER},
            {"num_ecf", &OutroDocumentoRow::numEcf, Domain::ECF},
            {"cont_gnf", &OutroDocumentoRow::gnf, Domain::COUNTER_OR_ZERO},
            {"cont_grg", &OutroDocumentoRow::grg, Domain::COUNTER_OR_ZERO},
            {"cont_cdc", &OutroDocumentoRow::cdc, Domain::COUNTER_OR_ZERO},
            {"cont_crz", &OutroDocumentoRow::crz, Domain::COUNTER},
            {"data_hora_inicio_emissao", &OutroDocumentoRow::dataHoraInicioEmissao,
             Domain::INSTANT},
            {"data_hora_fim_emissao", &OutroDocumentoRow::dataHoraFimEmissao, Domain::INSTANT},
            {"id_tipo_documento", &OutroDocumentoRow::tipoDocumento, Domain::DOCUMENT_TYPE},
        });
    return table;
}

const Table<CupomFiscalRow>& CupomFiscalTable()
{
    static const Table<CupomFiscalRow> table(
        "cupom_fiscal",
        {
            {"cont_coo", &CupomFiscalRow::coo, Domain::COUNTER},
            {"cont_ccf", &CupomFiscalRow::ccf, Domain::COUNTER},
            {"cont_crz", &CupomFiscalRow::crz, Domain::NEXT_COUNTER},
            {"data_hora_emissao", &CupomFiscalRow::dataHoraEmissao, Domain::INSTANT},
            {"cpf_cnpj_consumidor", &CupomFiscalRow::cpfCnpjConsumidor, Domain::TEXT},
            {"nome_consumidor", &CupomFiscalRow::nomeConsumidor, Domain::TEXT, Presence::ALWAYS,
             MAX_NOME_CONSUMIDOR},
            {"endereco_consumidor", &CupomFiscalRow::enderecoConsumidor, Domain::TEXT,
             Presence::ALWAYS, MAX_ENDERECO_CONSUMIDOR + 1},
            {"assinatura_documento", &CupomFiscalRow::assinaturaDocumento, Domain::SIGNATURE},
            {"valor_subtotal", &CupomFiscalRow::valorSubtotal, Domain::MONEY},
            {"valor_total", &CupomFiscalRow::valorTotal, Domain::MONEY},
            {"tipo_desconto", &CupomFiscalRow::tipoDesconto, Domain::KIND},
            {"valor_desconto", &CupomFiscalRow::valorDesconto, Domain::MONEY},
            {"tipo_acrescimo", &CupomFiscalRow::tipoAcrescimo, Domain::KIND},
            {"valor_acrescimo", &CupomFiscalRow::valorAcrescimo, Domain::MONEY},
            {"valor_canc_acrescimo", &CupomFiscalRow::valorCancAcrescimo, Domain::MONEY},
            {"valor_troco", &CupomFiscalRow::valorTroco, Domain::MONEY},
            {"texto_suplementar", &CupomFiscalRow::textoSuplementar, Domain::TEXT, Presence::ALWAYS,
             MAX_MENSAGEM},
            {"id_cancelado", &CupomFiscalRow::cancelado, Domain::FLAG},
            {"id_cupom_adicional", &CupomFiscalRow::cupomAdicional, Domain::FLAG},
            {"perc_acrescimo", &CupomFiscalRow::percAcrescimo, Domain::PERCENT},
            {"perc_desconto", &CupomFiscalRow::percDesconto, Domain::PERCENT},
            {"texto_complementar", &CupomFiscalRow::textoComplementar, Domain::TEXT},
            {"chave_cupom", &CupomFiscalRow::chaveCupom, Domain::TEXT},
        });
    return table;
}

const Table<ItemCupomFiscalRow>& ItemCupomFiscalTable()
{
    static const Table<ItemCupomFiscalRow> table(
        "item_cupom_fiscal",
        {
            {"seq_item", &ItemCupomFiscalRow::seqItem, Domain::ITEM},
            {"cont_coo", &ItemCupomFiscalRow::coo, Domain::COUNTER},
            {"cod_item", &ItemCupomFiscalRow::codItem, Domain::TEXT, Presence::ALWAYS,
             MAX_CODIGO_ITEM},
            {"descricao", &ItemCupomFiscalRow::descricao, Domain::TEXT, Presence::ALWAYS,
             MAX_DESCRICAO_ITEM},
            {"quantidade", &ItemCupomFiscalRow::quantidade, Domain::QUANTITY},
            {"aliquota", &ItemCupomFiscalRow::aliquota, Domain::TAX_CODE},
            {"un_medida", &ItemCupomFiscalRow::unMedida, Domain::TEXT, Presence::ALWAYS,
             MAX_UNIDADE},
            {"valor_unitario", &ItemCupomFiscalRow::valorUnitario, Domain::QUANTITY},
            {"tipo_acrescimo", &ItemCupomFiscalRow::tipoAcrescimo, Domain::KIND},
            {"valor_acrescimo", &ItemCupomFiscalRow::valorAcrescimo, Domain::MONEY_OF_ITEM},
            {"tipo_desconto", &ItemCupomFiscalRow::tipoDesconto, Domain::KIND},
            {"valor_desconto", &ItemCupomFiscalRow::valorDesconto, Domain::MONEY_OF_ITEM},
            {"valor_canc_acrescimo", &ItemCupomFiscalRow::valorCancAcrescimo,
             Domain::MONEY_OF_ITEM},
            {"valor_total", &ItemCupomFiscalRow::valorTotal, Domain::MONEY_OF_ITEM},
            {"casas_decimais_quantidade", &ItemCupomFiscalRow::casasDecimaisQuantidade,
             Domain::CASAS},
            {"casas_decimais_valor", &ItemCupomFiscalRow::casasDecimaisValor, Domain::CASAS},
            {"id_arred_trunc_valor", &ItemCupomFiscalRow::arredTruncValor, Domain::ROUNDING},
            {"id_cancelado", &ItemCupomFiscalRow::cancelado, Domain::FLAG},
            {"perc_acrescimo", &ItemCupomFiscalRow::percAcrescimo, Domain::PERCENT},
            {"perc_desconto", &ItemCupomFiscalRow::percDesconto, Domain::PERCENT},
        });
    return table;
}

const Table<PagamentoCupomRow>& PagamentoCupomTable()
{
    static const Table<PagamentoCupomRow> table(
        "pagamento_cupom",
        {
            {"cont_coo", &PagamentoCupomRow::coo, Domain::COUNTER},
            {"cont_gnf", &PagamentoCupomRow::gnf, Domain::COUNTER_OR_ZERO},
            {"valor_pagamento", &PagamentoCupomRow::valorPagamento, Domain::SIGNED_MONEY},
            {"num_parcelas", &PagamentoCupomRow::numParcelas, Domain::PARCELAS},
            {"info_adicional", &PagamentoCupomRow::infoAdicional, Domain::TEXT, Presence::ALWAYS,
             MAX_INFO_ADICIONAL},
            {"indice_meio_pagamento", &PagamentoCupomRow::indiceMeioPagamento, Domain::MEIO},
            {"id_estornado", &PagamentoCupomRow::estornado, Domain::FLAG},
            {"valor_estornado", &PagamentoCupomRow::valorEstornado, Domain::MONEY},
        });
    return table;
}

const Table<CupomNfRow>& CupomNfTable()
{
    static const Table<CupomNfRow> table(
        "cupom_nf", {
                        {"cont_coo", &CupomNfRow::coo, Domain::COUNTER},
                        {"cont_crz", &CupomNfRow::crz, Domain::NEXT_COUNTER},
                        {"cont_gnf", &CupomNfRow::gnf, Domain::COUNTER_OR_ZERO},
                        {"num_ecf", &CupomNfRow::numEcf, Domain::ECF},
                        {"data_hora_emissao", &CupomNfRow::dataHoraEmissao, Domain::INSTANT},
                        {"valor_subtotal", &CupomNfRow::valorSubtotal, Domain::MONEY},
                        {"valor_total_cupom", &CupomNfRow::valorTotalCupom, Domain::MONEY},
                        {"tipo_acrescimo", &CupomNfRow::tipoAcrescimo, Domain::KIND},
                        {"valor_acrescimo", &CupomNfRow::valorAcrescimo, Domain::MONEY},
                        {"tipo_desconto", &CupomNfRow::tipoDesconto, Domain::KIND},
                        {"valor_desconto", &CupomNfRow::valorDesconto, Domain::MONEY},
                        {"valor_canc_acrescimo", &CupomNfRow::valorCancAcrescimo, Domain::MONEY},
                        {"id_cancelado", &CupomNfRow::cancelado, Domain::FLAG},
                        {"nome_consumidor", &CupomNfRow::nomeConsumidor, Domain::TEXT,
                         Presence::ALWAYS, MAX_NOME_CONSUMIDOR},
                        {"cpf_cnpj_consumidor", &CupomNfRow::cpfCnpjConsumidor, Domain::TEXT},
                        {"perc_acrescimo", &CupomNfRow::percAcrescimo, Domain::PERCENT},
                        {"perc_desconto", &CupomNfRow::percDesconto, Domain::PERCENT},
                    });
    return table;
}

const Table<ItemCupomNfRow>& ItemCupomNfTable()
{
    static const Table<ItemCupomNfRow> table(
        "item_cupom_nf",
        {
            {"seq_item", &ItemCupomNfRow::seqItem, Domain::ITEM},
            {"cont_coo", &ItemCupomNfRow::coo, Domain::COUNTER},
            {"indice_totalizador_nf", &ItemCupomNfRow::indiceTotalizadorNf, Domain::TOTALIZADOR_NF},
            {"valor_total", &ItemCupomNfRow::valorTotal, Domain::MONEY_OF_ITEM},
            {"valor_total_liquido", &ItemCupomNfRow::valorTotalLiquido, Domain::MONEY_OF_ITEM},
            {"tipo_acrescimo", &ItemCupomNfRow::tipoAcrescimo, Domain::KIND, Presence::MAY_BE_NULL},
            {"valor_acrescimo", &ItemCupomNfRow::valorAcrescimo, Domain::MONEY_OF_ITEM},
            {"tipo_desconto", &ItemCupomNfRow::tipoDesconto, Domain::KIND, Presence::MAY_BE_NULL},
            {"valor_desconto", &ItemCupomNfRow::valorDesconto, Domain::MONEY_OF_ITEM},
            {"valor_canc_acrescimo", &ItemCupomNfRow::valorCancAcrescimo, Domain::MONEY_OF_ITEM},
            {"id_cancelado", &ItemCupomNfRow::cancelado, Domain::FLAG},
            {"perc_acrescimo", &ItemCupomNfRow::percAcrescimo, Domain::PERCENT,
             Presence::MAY_BE_NULL},
            {"perc_desconto", &ItemCupomNfRow::percDesconto, Domain::PERCENT,
             Presence::MAY_BE_NULL},
        });
    return table;
}

const Table<ReducaoZRow>& ReducaoZTable()
{
    static const Table<ReducaoZRow> table(
        "reducao_z", {
                         {"cont_crz", &ReducaoZRow::crz, Domain::COUNTER},
                         {"num_ecf", &ReducaoZRow::numEcf, Domain::ECF},
                         {"data_hora_emissao", &ReducaoZRow::dataHoraEmissao, Domain::INSTANT},
                         {"data_movimento", &ReducaoZRow::dataMovimento, Domain::DAY},
                         {"cont_coo", &ReducaoZRow::coo, Domain::COUNTER},
                         {"cont_gnf", &ReducaoZRow::gnf, Domain::COUNTER_OR_ZERO},
                         {"cont_cro", &ReducaoZRow::cro, Domain::COUNTER_OR_ZERO},
                         {"valor_gt", &ReducaoZRow::valorGt, Domain::MONEY},
                         {"valor_vb", &ReducaoZRow::valorVb, Domain::MONEY},
                         {"valor_base_icms", &ReducaoZRow::valorBaseIcms, Domain::MONEY},
                         {"valor_icms", &ReducaoZRow::valorIcms, Domain::MONEY},
                         {"valor_desc_icms", &ReducaoZRow::valorDescIcms, Domain::MONEY},
                         {"valor_acres_icms", &ReducaoZRow::valorAcresIcms, Domain::MONEY},
                         {"valor_canc_icms", &ReducaoZRow::valorCancIcms, Domain::MONEY},
                         {"valor_base_iss", &ReducaoZRow::valorBaseIss, Domain::MONEY},
                         {"valor_iss", &ReducaoZRow::valorIss, Domain::MONEY},
                         {"valor_desc_iss", &ReducaoZRow::valorDescIss, Domain::MONEY},
                         {"valor_acres_iss", &ReducaoZRow::valorAcresIss, Domain::MONEY},
                         {"valor_canc_iss", &ReducaoZRow::valorCancIss, Domain::MONEY},
                         {"tempo_operacional", &ReducaoZRow::segundosEmitindo, Domain::SECONDS},
                         {"tempo_emitindo_doc", &ReducaoZRow::segundosOperacional, Domain::SECONDS},
                     });
    return table;
}

const Table<TotalizadorReducaoRow>& TotalizadorReducaoTable()
{
    static const Table<TotalizadorReducaoRow> table(
        "totalizador_reducao",
        {
            {"cont_crz", &TotalizadorReducaoRow::crz, Domain::COUNTER},
            {"totalizador", &TotalizadorReducaoRow::totalizador, Domain::NAME, Presence::ALWAYS,
             MAX_NOME_TOTALIZADOR},
            {"valor_base_calculo", &TotalizadorReducaoRow::valorBaseCalculo, Domain::MONEY},
            {"id_fiscal", &TotalizadorReducaoRow::fiscal, Domain::FLAG},
            {"valor_imposto", &TotalizadorReducaoRow::valorImposto, Domain::MONEY},
        });
    return table;
}

const Table<MeioPagamentoReducaoRow>& MeioPagamentoReducaoTable()
{
    static const Table<MeioPagamentoReducaoRow> table(
        "meio_pagamento_reducao",
        {
            {"indice_meio_pagamento", &MeioPagamentoReducaoRow::indiceMeioPagamento,
             Domain::MEIO_OR_TROCO},
            {"cont_crz", &MeioPagamentoReducaoRow::crz, Domain::COUNTER},
            {"descricao_meio_pagamento", &MeioPagamentoReducaoRow::descricaoMeioPagamento,
             Domain::NAME, Presence::ALWAYS, MAX_NOME_MEIO},
            {"valor_acumulado", &MeioPagamentoReducaoRow::valorAcumulado, Domain::MONEY},
        });
    return table;
}

const Table<IntervencaoRow>& IntervencaoTable()
{
    static const Table<IntervencaoRow> table(
        "intervencao",
        {
            {"cont_cro", &IntervencaoRow::cro, Domain::COUNTER_OR_ZERO},
            {"num_ecf", &IntervencaoRow::numEcf, Domain::ECF},
            {"data_hora_intervencao", &IntervencaoRow::dataHoraIntervencao, Domain::INSTANT},
            {"id_tipo_intervencao", &IntervencaoRow::tipoIntervencao, Domain::MODE},
            {"id_perda_dados_mt", &IntervencaoRow::perdaDadosMt, Domain::FLAG},
        });
    return table;
}

const Table<FitaDetalheRow>& FitaDetalheTable()
{
    static const Table<FitaDetalheRow> table(
        "fita_detalhe",
        {
            {"cont_cfd", &FitaDetalheRow::cfd, Domain::COUNTER},
            {"num_ecf", &FitaDetalheRow::numEcf, Domain::ECF},
            {"data_hora_emissao", &FitaDetalheRow::dataHoraEmissao, Domain::INSTANT},
            {"coo_inicial", &FitaDetalheRow::cooInicial, Domain::COUNTER},
            {"coo_final", &FitaDetalheRow::cooFinal, Domain::COUNTER},
        });
    return table;
}

const Table<MeioPagamentoRow>& MeioPagamentoTable()
{
    static const Table<MeioPagamentoRow> table(
        "meio_pagamento", {
                              {"num_indice", &MeioPagamentoRow::numIndice, Domain::MEIO},
                              {"num_ecf", &MeioPagamentoRow::numEcf, Domain::ECF},
                              {"descricao", &MeioPagamentoRow::descricao, Domain::NAME,
                               Presence::ALWAYS, MAX_NOME_MEIO},
                              {"id_vinculacao_ccd", &MeioPagamentoRow::vinculacaoCcd, Domain::FLAG},
                          });
    return table;
}

const Table<TotalizadorNaoFiscalRow>& TotalizadorNaoFiscalTable()
{
    static const Table<TotalizadorNaoFiscalRow> table(
        "totalizador_nao_fiscal",
        {
            {"num_indice", &TotalizadorNaoFiscalRow::numIndice, Domain::TOTALIZADOR_NF},
            {"descricao", &TotalizadorNaoFiscalRow::descricao, Domain::NAME, Presence::ALWAYS,
             MAX_NOME_TOTALIZADOR},
        });
    return table;
}

const Table<DadosUsuarioRow>& DadosUsuarioTable()
{
    static const Table<DadosUsuarioRow> table(
        "dados_usuario",
        {
            {"seq_usuario", &DadosUsuarioRow::seqUsuario, Domain::ECF},
            {"endereco", &DadosUsuarioRow::endereco, Domain::TEXT, Presence::ALWAYS,
             MAX_CONTRIBUINTE},
            {"nome_fantasia", &DadosUsuarioRow::nomeFantasia, Domain::TEXT, Presence::ALWAYS,
             MAX_CONTRIBUINTE},
            {"razao_social", &DadosUsuarioRow::razaoSocial, Domain::TEXT, Presence::ALWAYS,
             MAX_CONTRIBUINTE},
            {"cnpj", &DadosUsuarioRow::cnpj, Domain::CNPJ, Presence::MAY_BE_NULL},
            {"ie", &DadosUsuarioRow::ie, Domain::TEXT, Presence::MAY_BE_NULL, MAX_INSCRICAO},
            {"im", &DadosUsuarioRow::im, Domain::TEXT, Presence::MAY_BE_NULL, MAX_INSCRICAO},
            {"uf", &DadosUsuarioRow::uf, Domain::UF, Presence::MAY_BE_NULL},
            {"data_hora_gravacao", &DadosUsuarioRow::dataHoraGravacao, Domain::INSTANT},
            {"cont_cro", &DadosUsuarioRow::cro, Domain::COUNTER_OR_ZERO},
            {"valor_gt", &DadosUsuarioRow::valorGt, Domain::MONEY},
        });
    return table;
}

const Table<MoedaRow>& MoedaTable()
{
    static const Table<MoedaRow> table(
        "moeda", {
                     {"num_ecf", &MoedaRow::numEcf, Domain::ECF},
                     {"data_hora_gravacao", &MoedaRow::dataHoraGravacao, Domain::INSTANT},
                     {"simbolo_moeda", &MoedaRow::simboloMoeda, Domain::TEXT},
                 });
    return table;
}

const Table<DadosEcfRow>& DadosEcfTable()
{
    static const Table<DadosEcfRow> table(
        "dados_ecf",
        {
            {"num_ecf", &DadosEcfRow::numEcf, Domain::ECF},
            {"num_serie", &DadosEcfRow::numSerie, Domain::NAME, Presence::ALWAYS, MAX_NUM_SERIE},
            {"marca", &DadosEcfRow::marca, Domain::TEXT, Presence::ALWAYS, MAX_MARCA},
            {"modelo", &DadosEcfRow::modelo, Domain::TEXT, Presence::ALWAYS, MAX_MODELO},
            {"tipo", &DadosEcfRow::tipo, Domain::TEXT, Presence::ALWAYS, MAX_TIPO_ECF},
            {"num_caixa", &DadosEcfRow::numCaixa, Domain::CAIXA},
        });
    return table;
}

const Table<VersaoSbRow>& VersaoSbTable()
{
    static const Table<VersaoSbRow> table("versao_sb",
                                          {
                                              {"num_ecf", &VersaoSbRow::numEcf, Domain::ECF},
                                              {"versao", &VersaoSbRow::versao, Domain::TEXT},
                                          });
    return table;
}

void RequireTables(const DatabaseReading& database)
{
    ForEachTable([&database](const auto& table) { Rows(database, table, "LIMIT 0"); });
}

} // namespace bancada::leitura
