// The tables of a logging database, each as a record: what its rows say, with no opinion about
// whether it is right. Tables.cpp lists each table's columns once, by name.
#pragma once

#include "bancada/leitura/Table.h"

namespace bancada::leitura
{

// Documents other than fiscal receipts.
struct OutroDocumentoRow : Row {
    Integer coo, numEcf, gnf, grg, cdc, crz;
    Text dataHoraInicioEmissao, dataHoraFimEmissao, tipoDocumento;
};
const Table<OutroDocumentoRow>& OutroDocumentoTable();

// Fiscal receipts. The signature is written by the closing.
struct CupomFiscalRow : Row {
    Integer coo, ccf, crz;
    Text dataHoraEmissao, cpfCnpjConsumidor, nomeConsumidor, enderecoConsumidor;
    Text assinaturaDocumento;
    Amount valorSubtotal, valorTotal;
    Text tipoDesconto;
    Amount valorDesconto;
    Text tipoAcrescimo;
    Amount valorAcrescimo, valorCancAcrescimo, valorTroco;
    Text textoSuplementar;
    Flag cancelado, cupomAdicional;
    Amount percAcrescimo, percDesconto;
    Text textoComplementar, chaveCupom;
};
const Table<CupomFiscalRow>& CupomFiscalTable();

// Items of fiscal receipts. Money has three decimals, as the total of an item whose unit price has
// three is written with three.
struct ItemCupomFiscalRow : Row {
    Integer seqItem, coo;
    Text codItem, descricao;
    Amount quantidade{0, 4};
    Text aliquota, unMedida;
    Amount valorUnitario{0, 4};
    Text tipoAcrescimo;
    Amount valorAcrescimo{0, 3};
    Text tipoDesconto;
    Amount valorDesconto{0, 3}, valorCancAcrescimo{0, 3}, valorTotal{0, 3};
    Integer casasDecimaisQuantidade, casasDecimaisValor;
    Text arredTruncValor;
    Flag cancelado;
    Amount percAcrescimo, percDesconto;
};
const Table<ItemCupomFiscalRow>& ItemCupomFiscalTable();

// Payments of receipts of either kind.
struct PagamentoCupomRow : Row {
    Integer coo, gnf;
    Amount valorPagamento;
    Integer numParcelas;
    Text infoAdicional;
    Integer indiceMeioPagamento;
    Flag estornado;
    Amount valorEstornado;
};
const Table<PagamentoCupomRow>& PagamentoCupomTable();

// Non-fiscal receipts, withdrawals and floats included.
struct CupomNfRow : Row {
    Integer coo, crz, gnf, numEcf;
    Text dataHoraEmissao;
    Amount valorSubtotal, valorTotalCupom;
    Text tipoAcrescimo;
    Amount valorAcrescimo;
    Text tipoDesconto;
    Amount valorDesconto, valorCancAcrescimo;
    Flag cancelado;
    Text nomeConsumidor, cpfCnpjConsumidor;
    Amount percAcrescimo, percDesconto;
};
const Table<CupomNfRow>& CupomNfTable();

// Items of non-fiscal receipts. The insert of a float or a withdrawal names no kind of adjustment,
// none names the percentages.
struct ItemCupomNfRow : Row {
    Integer seqItem, coo, indiceTotalizadorNf;
    Amount valorTotal{0, 3}, valorTotalLiquido{0, 3};
    Text tipoAcrescimo;
    Amount valorAcrescimo{0, 3};
    Text tipoDesconto;
    Amount valorDesconto{0, 3}, valorCancAcrescimo{0, 3};
    Flag cancelado;
    Amount percAcrescimo, percDesconto;
};
const Table<ItemCupomNfRow>& ItemCupomNfTable();

// Z reductions. The table holds the two times crossed over: the seconds spent issuing documents
// stand in tempo_operacional, the operating time in tempo_emitindo_doc. The members say what they
// mean.
struct ReducaoZRow : Row {
    Integer crz, numEcf;
    Text dataHoraEmissao, dataMovimento;
    Integer coo, gnf, cro;
    Amount valorGt, valorVb, valorBaseIcms, valorIcms, valorDescIcms, valorAcresIcms;
    Amount valorCancIcms, valorBaseIss, valorIss, valorDescIss, valorAcresIss;
    Amount valorCancIss;
    Integer segundosEmitindo, segundosOperacional;
};
const Table<ReducaoZRow>& ReducaoZTable();

// Totalizers of Z reductions; a base and a tax of a fiscal one.
struct TotalizadorReducaoRow : Row {
    Integer crz;
    Text totalizador;
    Amount valorBaseCalculo;
    Flag fiscal;
    Amount valorImposto;
};
const Table<TotalizadorReducaoRow>& TotalizadorReducaoTable();

// Payment means of Z reductions; the last one is the change, TROCO.
struct MeioPagamentoReducaoRow : Row {
    Integer indiceMeioPagamento, crz;
    Text descricaoMeioPagamento;
    Amount valorAcumulado;
};
const Table<MeioPagamentoReducaoRow>& MeioPagamentoReducaoTable();

// Technical interventions.
struct IntervencaoRow : Row {
    Integer cro, numEcf;
    Text dataHoraIntervencao, tipoIntervencao;
    Flag perdaDadosMt;
};
const Table<IntervencaoRow>& IntervencaoTable();

// Reprints from the detail tape.
struct FitaDetalheRow : Row {
    Integer cfd, numEcf;
    Text dataHoraEmissao;
    Integer cooInicial, cooFinal;
};
const Table<FitaDetalheRow>& FitaDetalheTable();

// Programmed payment means.
struct MeioPagamentoRow : Row {
    Integer numIndice, numEcf;
    Text descricao;
    Flag vinculacaoCcd;
};
const Table<MeioPagamentoRow>& MeioPagamentoTable();

// Programmed non-fiscal totalizers.
struct TotalizadorNaoFiscalRow : Row {
    Integer numIndice;
    Text descricao;
};
const Table<TotalizadorNaoFiscalRow>& TotalizadorNaoFiscalTable();

// The owner. The programming of the address alone leaves the registrations out.
struct DadosUsuarioRow : Row {
    Integer seqUsuario;
    Text endereco, nomeFantasia, razaoSocial, cnpj, ie, im, uf, dataHoraGravacao;
    Integer cro;
    Amount valorGt;
};
const Table<DadosUsuarioRow>& DadosUsuarioTable();

// Currency symbols.
struct MoedaRow : Row {
    Integer numEcf;
    Text dataHoraGravacao, simboloMoeda;
};
const Table<MoedaRow>& MoedaTable();

// The register's identity. num_ecf is the row's own number.
struct DadosEcfRow : Row {
    Integer numEcf;
    Text numSerie, marca, modelo, tipo;
    Integer numCaixa;
};
const Table<DadosEcfRow>& DadosEcfTable();

// Versions of the basic software.
struct VersaoSbRow : Row {
    Integer numEcf;
    Text versao;
};
const Table<VersaoSbRow>& VersaoSbTable();

// Calls `visit` with every table.
template <typename Visit>
void ForEachTable(Visit&& visit)
{
    visit(CupomFiscalTable());
    visit(OutroDocumentoTable());
    visit(ItemCupomFiscalTable());
    visit(PagamentoCupomTable());
    visit(CupomNfTable());
    visit(ItemCupomNfTable());
    visit(ReducaoZTable());
    visit(TotalizadorReducaoTable());
    visit(MeioPagamentoReducaoTable());
    visit(IntervencaoTable());
    visit(FitaDetalheTable());
    visit(MeioPagamentoTable());
    visit(TotalizadorNaoFiscalTable());
    visit(DadosUsuarioTable());
    visit(MoedaTable());
    visit(DadosEcfTable());
    visit(VersaoSbTable());
}

// Throws Unusable for the database of another program: one that lacks a table or a column that is
// read. Asked before anything is told of a database.
void RequireTables(const DatabaseReading& database);

} // namespace bancada::leitura
