#include "bancada/leitura/Tables.h"

namespace bancada::leitura
{

const Table<OutroDocumentoRow>& OutroDocumentoTable()
{
    static const Table<OutroDocumentoRow> table(
        "outros_documentos",
        {
            {"cont_coo", &OutroDocumentoRow::coo},
            {"num_ecf", &OutroDocumentoRow::numEcf},
            {"cont_gnf", &OutroDocumentoRow::gnf},
            {"cont_grg", &OutroDocumentoRow::grg},
            {"cont_cdc", &OutroDocumentoRow::cdc},
            {"cont_crz", &OutroDocumentoRow::crz},
            {"data_hora_inicio_emissao", &OutroDocumentoRow::dataHoraInicioEmissao},
            {"data_hora_fim_emissao", &OutroDocumentoRow::dataHoraFimEmissao},
            {"id_tipo_documento", &OutroDocumentoRow::tipoDocumento},
        });
    return table;
}

const Table<CupomFiscalRow>& CupomFiscalTable()
{
    static const Table<CupomFiscalRow> table(
        "cupom_fiscal", {
                            {"cont_coo", &CupomFiscalRow::coo},
                            {"cont_ccf", &CupomFiscalRow::ccf},
                            {"cont_crz", &CupomFiscalRow::crz},
                            {"data_hora_emissao", &CupomFiscalRow::dataHoraEmissao},
                            {"cpf_cnpj_consumidor", &CupomFiscalRow::cpfCnpjConsumidor},
                            {"nome_consumidor", &CupomFiscalRow::nomeConsumidor},
                            {"endereco_consumidor", &CupomFiscalRow::enderecoConsumidor},
                            {"assinatura_documento", &CupomFiscalRow::assinaturaDocumento},
                            {"valor_subtotal", &CupomFiscalRow::valorSubtotal},
                            {"valor_total", &CupomFiscalRow::valorTotal},
                            {"tipo_desconto", &CupomFiscalRow::tipoDesconto},
                            {"valor_desconto", &CupomFiscalRow::valorDesconto},
                            {"tipo_acrescimo", &CupomFiscalRow::tipoAcrescimo},
                            {"valor_acrescimo", &CupomFiscalRow::valorAcrescimo},
                            {"valor_canc_acrescimo", &CupomFiscalRow::valorCancAcrescimo},
                            {"valor_troco", &CupomFiscalRow::valorTroco},
                            {"texto_suplementar", &CupomFiscalRow::textoSuplementar},
                            {"id_cancelado", &CupomFiscalRow::cancelado},
                            {"id_cupom_adicional", &CupomFiscalRow::cupomAdicional},
                            {"perc_acrescimo", &CupomFiscalRow::percAcrescimo},
                            {"perc_desconto", &CupomFiscalRow::percDesconto},
                            {"texto_complementar", &CupomFiscalRow::textoComplementar},
                            {"chave_cupom", &CupomFiscalRow::chaveCupom},
                        });
    return table;
}

const Table<ItemCupomFiscalRow>& ItemCupomFiscalTable()
{
    static const Table<ItemCupomFiscalRow> table(
        "item_cupom_fiscal",
        {
            {"seq_item", &ItemCupomFiscalRow::seqItem},
            {"cont_coo", &ItemCupomFiscalRow::coo},
            {"cod_item", &ItemCupomFiscalRow::codItem},
            {"descricao", &ItemCupomFiscalRow::descricao},
            {"quantidade", &ItemCupomFiscalRow::quantidade},
            {"aliquota", &ItemCupomFiscalRow::aliquota},
            {"un_medida", &ItemCupomFiscalRow::unMedida},
            {"valor_unitario", &ItemCupomFiscalRow::valorUnitario},
            {"tipo_acrescimo", &ItemCupomFiscalRow::tipoAcrescimo},
            {"valor_acrescimo", &ItemCupomFiscalRow::valorAcrescimo},
            {"tipo_desconto", &ItemCupomFiscalRow::tipoDesconto},
            {"valor_desconto", &ItemCupomFiscalRow::valorDesconto},
            {"valor_canc_acrescimo", &ItemCupomFiscalRow::valorCancAcrescimo},
            {"valor_total", &ItemCupomFiscalRow::valorTotal},
            {"casas_decimais_quantidade", &ItemCupomFiscalRow::casasDecimaisQuantidade},
            {"casas_decimais_valor", &ItemCupomFiscalRow::casasDecimaisValor},
            {"id_arred_trunc_valor", &ItemCupomFiscalRow::arredTruncValor},
            {"id_cancelado", &ItemCupomFiscalRow::cancelado},
            {"perc_acrescimo", &ItemCupomFiscalRow::percAcrescimo},
            {"perc_desconto", &ItemCupomFiscalRow::percDesconto},
        });
    return table;
}

const Table<PagamentoCupomRow>& PagamentoCupomTable()
{
    static const Table<PagamentoCupomRow> table(
        "pagamento_cupom", {
                               {"cont_coo", &PagamentoCupomRow::coo},
                               {"cont_gnf", &PagamentoCupomRow::gnf},
                               {"valor_pagamento", &PagamentoCupomRow::valorPagamento},
                               {"num_parcelas", &PagamentoCupomRow::numParcelas},
                               {"info_adicional", &PagamentoCupomRow::infoAdicional},
                               {"indice_meio_pagamento", &PagamentoCupomRow::indiceMeioPagamento},
                               {"id_estornado", &PagamentoCupomRow::estornado},
                               {"valor_estornado", &PagamentoCupomRow::valorEstornado},
                           });
    return table;
}

const Table<CupomNfRow>& CupomNfTable()
{
    static const Table<CupomNfRow> table(
        "cupom_nf", {
                        {"cont_coo", &CupomNfRow::coo},
                        {"cont_crz", &CupomNfRow::crz},
                        {"cont_gnf", &CupomNfRow::gnf},
                        {"num_ecf", &CupomNfRow::numEcf},
                        {"data_hora_emissao", &CupomNfRow::dataHoraEmissao},
                        {"valor_subtotal", &CupomNfRow::valorSubtotal},
                        {"valor_total_cupom", &CupomNfRow::valorTotalCupom},
                        {"tipo_acrescimo", &CupomNfRow::tipoAcrescimo},
                        {"valor_acrescimo", &CupomNfRow::valorAcrescimo},
                        {"tipo_desconto", &CupomNfRow::tipoDesconto},
                        {"valor_desconto", &CupomNfRow::valorDesconto},
                        {"valor_canc_acrescimo", &CupomNfRow::valorCancAcrescimo},
                        {"id_cancelado", &CupomNfRow::cancelado},
                        {"nome_consumidor", &CupomNfRow::nomeConsumidor},
                        {"cpf_cnpj_consumidor", &CupomNfRow::cpfCnpjConsumidor},
                        {"perc_acrescimo", &CupomNfRow::percAcrescimo},
                        {"perc_desconto", &CupomNfRow::percDesconto},
                    });
    return table;
}

const Table<ItemCupomNfRow>& ItemCupomNfTable()
{
    static const Table<ItemCupomNfRow> table(
        "item_cupom_nf",
        {
            {"seq_item", &ItemCupomNfRow::seqItem},
            {"cont_coo", &ItemCupomNfRow::coo},
            {"indice_totalizador_nf", &ItemCupomNfRow::indiceTotalizadorNf},
            {"valor_total", &ItemCupomNfRow::valorTotal},
            {"valor_total_liquido", &ItemCupomNfRow::valorTotalLiquido},
            {"tipo_acrescimo", &ItemCupomNfRow::tipoAcrescimo, Presence::MAY_BE_NULL},
            {"valor_acrescimo", &ItemCupomNfRow::valorAcrescimo},
            {"tipo_desconto", &ItemCupomNfRow::tipoDesconto, Presence::MAY_BE_NULL},
            {"valor_desconto", &ItemCupomNfRow::valorDesconto},
            {"valor_canc_acrescimo", &ItemCupomNfRow::valorCancAcrescimo},
            {"id_cancelado", &ItemCupomNfRow::cancelado},
            {"perc_acrescimo", &ItemCupomNfRow::percAcrescimo, Presence::MAY_BE_NULL},
            {"perc_desconto", &ItemCupomNfRow::percDesconto, Presence::MAY_BE_NULL},
        });
    return table;
}

const Table<ReducaoZRow>& ReducaoZTable()
{
    static const Table<ReducaoZRow> table(
        "reducao_z", {
                         {"cont_crz", &ReducaoZRow::crz},
                         {"num_ecf", &ReducaoZRow::numEcf},
                         {"data_hora_emissao", &ReducaoZRow::dataHoraEmissao},
                         {"data_movimento", &ReducaoZRow::dataMovimento},
                         {"cont_coo", &ReducaoZRow::coo},
                         {"cont_gnf", &ReducaoZRow::gnf},
                         {"cont_cro", &ReducaoZRow::cro},
                         {"valor_gt", &ReducaoZRow::valorGt},
                         {"valor_vb", &ReducaoZRow::valorVb},
                         {"valor_base_icms", &ReducaoZRow::valorBaseIcms},
                         {"valor_icms", &ReducaoZRow::valorIcms},
                         {"valor_desc_icms", &ReducaoZRow::valorDescIcms},
                         {"valor_acres_icms", &ReducaoZRow::valorAcresIcms},
                         {"valor_canc_icms", &ReducaoZRow::valorCancIcms},
                         {"valor_base_iss", &ReducaoZRow::valorBaseIss},
                         {"valor_iss", &ReducaoZRow::valorIss},
                         {"valor_desc_iss", &ReducaoZRow::valorDescIss},
                         {"valor_acres_iss", &ReducaoZRow::valorAcresIss},
                         {"valor_canc_iss", &ReducaoZRow::valorCancIss},
                         {"tempo_operacional", &ReducaoZRow::segundosEmitindo},
                         {"tempo_emitindo_doc", &ReducaoZRow::segundosOperacional},
                     });
    return table;
}

const Table<TotalizadorReducaoRow>& TotalizadorReducaoTable()
{
    static const Table<TotalizadorReducaoRow> table(
        "totalizador_reducao", {
                                   {"cont_crz", &TotalizadorReducaoRow::crz},
                                   {"totalizador", &TotalizadorReducaoRow::totalizador},
                                   {"valor_base_calculo", &TotalizadorReducaoRow::valorBaseCalculo},
                                   {"id_fiscal", &TotalizadorReducaoRow::fiscal},
                                   {"valor_imposto", &TotalizadorReducaoRow::valorImposto},
                               });
    return table;
}

const Table<MeioPagamentoReducaoRow>& MeioPagamentoReducaoTable()
{
    static const Table<MeioPagamentoReducaoRow> table(
        "meio_pagamento_reducao",
        {
            {"indice_meio_pagamento", &MeioPagamentoReducaoRow::indiceMeioPagamento},
            {"cont_crz", &MeioPagamentoReducaoRow::crz},
            {"descricao_meio_pagamento", &MeioPagamentoReducaoRow::descricaoMeioPagamento},
            {"valor_acumulado", &MeioPagamentoReducaoRow::valorAcumulado},
        });
    return table;
}

const Table<IntervencaoRow>& IntervencaoTable()
{
    static const Table<IntervencaoRow> table(
        "intervencao", {
                           {"cont_cro", &IntervencaoRow::cro},
                           {"num_ecf", &IntervencaoRow::numEcf},
                           {"data_hora_intervencao", &IntervencaoRow::dataHoraIntervencao},
                           {"id_tipo_intervencao", &IntervencaoRow::tipoIntervencao},
                           {"id_perda_dados_mt", &IntervencaoRow::perdaDadosMt},
                       });
    return table;
}

const Table<FitaDetalheRow>& FitaDetalheTable()
{
    static const Table<FitaDetalheRow> table(
        "fita_detalhe", {
                            {"cont_cfd", &FitaDetalheRow::cfd},
                            {"num_ecf", &FitaDetalheRow::numEcf},
                            {"data_hora_emissao", &FitaDetalheRow::dataHoraEmissao},
                            {"coo_inicial", &FitaDetalheRow::cooInicial},
                            {"coo_final", &FitaDetalheRow::cooFinal},
                        });
    return table;
}

const Table<MeioPagamentoRow>& MeioPagamentoTable()
{
    static const Table<MeioPagamentoRow> table(
        "meio_pagamento", {
                              {"num_indice", &MeioPagamentoRow::numIndice},
                              {"num_ecf", &MeioPagamentoRow::numEcf},
                              {"descricao", &MeioPagamentoRow::descricao},
                              {"id_vinculacao_ccd", &MeioPagamentoRow::vinculacaoCcd},
                          });
    return table;
}

const Table<TotalizadorNaoFiscalRow>& TotalizadorNaoFiscalTable()
{
    static const Table<TotalizadorNaoFiscalRow> table(
        "totalizador_nao_fiscal", {
                                      {"num_indice", &TotalizadorNaoFiscalRow::numIndice},
                                      {"descricao", &TotalizadorNaoFiscalRow::descricao},
                                  });
    return table;
}

const Table<DadosUsuarioRow>& DadosUsuarioTable()
{
    static const Table<DadosUsuarioRow> table(
        "dados_usuario", {
                             {"seq_usuario", &DadosUsuarioRow::seqUsuario},
                             {"endereco", &DadosUsuarioRow::endereco},
                             {"nome_fantasia", &DadosUsuarioRow::nomeFantasia},
                             {"razao_social", &DadosUsuarioRow::razaoSocial},
                             {"cnpj", &DadosUsuarioRow::cnpj, Presence::MAY_BE_NULL},
                             {"ie", &DadosUsuarioRow::ie, Presence::MAY_BE_NULL},
                             {"im", &DadosUsuarioRow::im, Presence::MAY_BE_NULL},
                             {"uf", &DadosUsuarioRow::uf, Presence::MAY_BE_NULL},
                             {"data_hora_gravacao", &DadosUsuarioRow::dataHoraGravacao},
                             {"cont_cro", &DadosUsuarioRow::cro},
                             {"valor_gt", &DadosUsuarioRow::valorGt},
                         });
    return table;
}

const Table<MoedaRow>& MoedaTable()
{
    static const Table<MoedaRow> table("moeda",
                                       {
                                           {"num_ecf", &MoedaRow::numEcf},
                                           {"data_hora_gravacao", &MoedaRow::dataHoraGravacao},
                                           {"simbolo_moeda", &MoedaRow::simboloMoeda},
                                       });
    return table;
}

const Table<DadosEcfRow>& DadosEcfTable()
{
    static const Table<DadosEcfRow> table("dados_ecf", {
                                                           {"num_ecf", &DadosEcfRow::numEcf},
                                                           {"num_serie", &DadosEcfRow::numSerie},
                                                           {"marca", &DadosEcfRow::marca},
                                                           {"modelo", &DadosEcfRow::modelo},
                                                           {"tipo", &DadosEcfRow::tipo},
                                                           {"num_caixa", &DadosEcfRow::numCaixa},
                                                       });
    return table;
}

const Table<VersaoSbRow>& VersaoSbTable()
{
    static const Table<VersaoSbRow> table("versao_sb", {
                                                           {"num_ecf", &VersaoSbRow::numEcf},
                                                           {"versao", &VersaoSbRow::versao},
                                                       });
    return table;
}

void RequireTables(const DatabaseReading& database)
{
    ForEachTable([&database](const auto& table) { Rows(database, table, "LIMIT 0"); });
}

} // namespace bancada::leitura
