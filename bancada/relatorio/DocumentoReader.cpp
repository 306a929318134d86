#include "bancada/relatorio/DocumentoReader.h"

#include "bancada/leitura/Counter.h"
#include "bancada/relatorio/DocumentoRows.h"

#include <algorithm>
#include <utility>

namespace bancada::relatorio
{
namespace
{

// The rows of one COO, in their order.
constexpr const char* OF_COO = "WHERE cont_coo = ?1 ORDER BY rowid";
constexpr const char* OF_ROW = "WHERE rowid = ?1";

// The rows of items, one run of rising numbers after the other.
RowGroups ReadRuns(leitura::Query& itens, std::int64_t coo)
{
    RowGroups runs;
    std::int64_t last = 0;
    for (itens.With(coo); itens.Next();) {
        const std::int64_t numero = itens.ReadInteger("seq_item").Value();
        runs.Add(itens.ReadInteger("row").Value(), numero <= last);
        last = numero;
    }
    return runs;
}

} // namespace

bool IsIssuedBefore(const Documento& a, const Documento& b)
{
    if (a.inicio.Value() != b.inicio.Value()) {
        return a.inicio.Value() < b.inicio.Value();
    }
    return leitura::ComesBefore(a.coo.Value(), b.coo.Value());
}

DocumentoReader::DocumentoReader(const leitura::DatabaseReading& database,
                                 const JornadaRange& range, Cadastro& cadastro,
                                 ReducaoReader& reducoes)
    : m_cadastro(cadastro), m_reducoes(reducoes),
      m_fiscais(database, leitura::CupomFiscalTable(), OF_COO),
      m_nfs(database, leitura::CupomNfTable(), OF_COO),
      m_outros(database, leitura::OutroDocumentoTable(), OF_COO),
      m_itensFiscais(database, leitura::ItemCupomFiscalTable(), OF_COO),
      m_itensNf(database, leitura::ItemCupomNfTable(), OF_COO),
      m_pagamentos(database, leitura::PagamentoCupomTable(), OF_COO),
      m_itemFiscal(database, leitura::ItemCupomFiscalTable(), OF_ROW),
      m_itemNf(database, leitura::ItemCupomNfTable(), OF_ROW),
      m_pagamento(database, leitura::PagamentoCupomTable(), OF_ROW),
      m_firstTwo(database, "SELECT 1 FROM cupom_fiscal WHERE cont_coo = ?1 UNION ALL"
                           " SELECT 1 FROM cupom_nf WHERE cont_coo = ?1 LIMIT 2"),
      m_fiscaisInOrder(database, "SELECT rowid AS row FROM cupom_fiscal WHERE cont_coo = ?1"
                                 " ORDER BY rowid"),
      m_nfsInOrder(database, "SELECT rowid AS row, cont_gnf FROM cupom_nf WHERE cont_coo = ?1"
                             " ORDER BY rowid"),
      m_itensFiscaisInOrder(database, "SELECT rowid AS row, seq_item FROM item_cupom_fiscal"
                                      " WHERE cont_coo = ?1 ORDER BY rowid"),
      m_itensNfInOrder(database, "SELECT rowid AS row, seq_item FROM item_cupom_nf"
                                 " WHERE cont_coo = ?1 ORDER BY rowid"),
      m_pagamentosInOrder(database, "SELECT rowid AS row, cont_gnf FROM pagamento_cupom"
                                    " WHERE cont_coo = ?1 ORDER BY rowid"),
      m_fimOfComprovante(database, "SELECT max(data_hora_fim_emissao) AS fim, count(*) AS documents"
                                   " FROM outros_documentos"
                                   " WHERE cont_coo = ?1 AND id_tipo_documento = 'CN'"),
      m_hasComprovante(database, "SELECT 1 FROM cupom_nf WHERE cont_coo = ?1 LIMIT 1"),
      m_cuponsOfCrz(database, "SELECT (SELECT count(*) FROM cupom_fiscal WHERE " +
                                  Within(range.cuponsFiscais) +
                                  " AND cont_crz = ?1) + (SELECT count(*) FROM cupom_nf WHERE " +
                                  Within(range.cuponsNf) + " AND cont_crz = ?1) AS cupons")
{
}

std::vector<Documento> DocumentoReader::WithCoo(std::int64_t coo)
{
    std::vector<Documento> documentos;
    leitura::CupomFiscalRow fiscal;
    for (m_fiscais.With(coo); m_fiscais.Next(fiscal);) {
        documentos.push_back(CupomFiscalOf(fiscal));
    }
    leitura::CupomNfRow nf;
    for (m_nfs.With(coo); m_nfs.Next(nf);) {
        documentos.push_back(ReadComprovante(nf));
    }
    if (documentos.empty()) {
        documentos = WithoutAbertura(coo);
    }
    const bool isWithoutAbertura = !documentos.empty() && !documentos.front().hasAbertura;
    leitura::OutroDocumentoRow row;
    for (m_outros.With(coo); m_outros.Next(row);) {
        if (!IsDocumentoItself(row)) {
            continue;
        }
        Documento outro = OutroDocumentoOf(row);
        // The row of a non-fiscal receipt whose own row is lost says when that receipt was issued.
        if (isWithoutAbertura && outro.codigo.Value() == "CN" &&
            documentos.front().tipo == TipoDocumento::COMPROVANTE_NF) {
            Documento& orphan = documentos.front();
            orphan.crz = outro.crz;
            orphan.gnf = outro.gnf;
            orphan.inicio = outro.inicio;
            orphan.fim = outro.fim;
        } else {
            documentos.push_back(std::move(outro));
        }
    }
    for (const ReducaoZ& reducao : m_reducoes.WithCoo(coo)) {
        documentos.push_back(DocumentoOf(reducao));
    }
    for (Documento& documento : documentos) {
        Complete(documento);
    }
    std::stable_sort(documentos.begin(), documentos.end(), IsIssuedBefore);
    return documentos;
}

std::vector<Documento> DocumentoReader::WithoutAbertura(std::int64_t coo)
{
    leitura::ItemCupomFiscalRow itemFiscal;
    const bool fiscal = m_itensFiscais.With(coo).Next(itemFiscal);
    m_itensFiscais.End();
    leitura::ItemCupomNfRow itemNf;
    const bool nf = m_itensNf.With(coo).Next(itemNf);
    m_itensNf.End();
    leitura::PagamentoCupomRow pagamento;
    const bool paid = m_pagamentos.With(coo).Next(pagamento);
    m_pagamentos.End();
    if (!fiscal && !nf && !paid) {
        return {};
    }
    Documento lost;
    lost.coo = coo;
    lost.hasAbertura = false;
    if (nf && !fiscal) {
        lost.tipo = TipoDocumento::COMPROVANTE_NF;
        lost.codigo = std::string("CN");
    } else {
        lost.tipo = TipoDocumento::CUPOM_FISCAL;
    }
    return {lost};
}

Documento DocumentoReader::ReadComprovante(const leitura::CupomNfRow& row)
{
    Documento documento = ComprovanteNfOf(row);
    if (!row.coo.IsKnown()) {
        return documento;
    }
    if (const auto known = m_fins.find(row.coo.Value()); known != m_fins.end()) {
        documento.fim = known->second;
        return documento;
    }
    m_fimOfComprovante.With(row.coo.Value()).Next();
    // The greatest of no rows is NULL.
    const Text fim = m_fimOfComprovante.ReadText("fim");
    documento.fim = fim.State() == leitura::CellState::NULL_VALUE ? Text() : fim;
    if (m_fimOfComprovante.ReadInteger("documents").Value() > 1) {
        m_fins[row.coo.Value()] = documento.fim;
    }
    m_fimOfComprovante.End();
    return documento;
}

bool DocumentoReader::IsDocumentoItself(const leitura::OutroDocumentoRow& row)
{
    if (row.tipoDocumento.Value() == "RZ") {
        return !m_reducoes.HasCoo(row.coo);
    }
    if (row.tipoDocumento.Value() == "CN" && row.coo.IsKnown()) {
        const bool has = m_hasComprovante.With(row.coo.Value()).Next();
        m_hasComprovante.End();
        return !has;
    }
    return true;
}

void DocumentoReader::Complete(Documento& documento)
{
    if (documento.reducao) {
        m_reducoes.Complete(*documento.reducao);
    }
    if (!documento.IsCupom() || !documento.coo.IsKnown()) {
        return;
    }
    if (documento.hasAbertura && IsRepeated(documento.coo.Value())) {
        CompleteRepeated(documento);
    } else {
        CompleteSingle(documento);
    }
}

Item DocumentoReader::ReadItem(const leitura::ItemCupomNfRow& row)
{
    Item item = ItemOf(row);
    item.descricao = m_cadastro.FindTotalizador(item.totalizador);
    return item;
}

Pagamento DocumentoReader::ReadPagamento(const leitura::PagamentoCupomRow& row)
{
    Pagamento pagamento = PagamentoOf(row);
    pagamento.nome = m_cadastro.FindMeio(pagamento.meio);
    return pagamento;
}

void DocumentoReader::CompleteSingle(Documento& documento)
{
    const std::int64_t coo = documento.coo.Value();
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL) {
        leitura::ItemCupomFiscalRow row;
        for (m_itensFiscais.With(coo); m_itensFiscais.Next(row);) {
            documento.itens.push_back(ItemOf(row));
        }
    } else {
        leitura::ItemCupomNfRow row;
        for (m_itensNf.With(coo); m_itensNf.Next(row);) {
            documento.itens.push_back(ReadItem(row));
        }
    }
    for (std::size_t i = 1; i < documento.itens.size(); ++i) {
        if (documento.itens[i].numero.Value() <= documento.itens[i - 1].numero.Value()) {
            documento.rowsUncertain = true;
        }
    }
    leitura::PagamentoCupomRow row;
    for (m_pagamentos.With(coo); m_pagamentos.Next(row);) {
        documento.pagamentos.push_back(ReadPagamento(row));
    }
}

bool DocumentoReader::IsRepeated(std::int64_t coo)
{
    const bool repeated = m_firstTwo.With(coo).Next() && m_firstTwo.Next();
    m_firstTwo.End();
    return repeated;
}

const DocumentoReader::Repeated& DocumentoReader::RepeatedOf(std::int64_t coo)
{
    std::unique_ptr<Repeated>& known = m_repeated[coo];
    if (known) {
        return *known;
    }
    auto repeated = std::make_unique<Repeated>();
    for (m_fiscaisInOrder.With(coo); m_fiscaisInOrder.Next();) {
        repeated->fiscais.push_back(m_fiscaisInOrder.ReadInteger("row").Value());
    }
    for (m_nfsInOrder.With(coo); m_nfsInOrder.Next();) {
        const std::int64_t row = m_nfsInOrder.ReadInteger("row").Value();
        repeated->nfs.push_back(row);
        repeated->byGnf[m_nfsInOrder.ReadInteger("cont_gnf").Value()].nfs.push_back(row);
    }
    repeated->itensFiscais = ReadRuns(m_itensFiscaisInOrder, coo);
    repeated->itensNf = ReadRuns(m_itensNfInOrder, coo);
    std::int64_t last = 0;
    for (m_pagamentosInOrder.With(coo); m_pagamentosInOrder.Next();) {
        const std::int64_t row = m_pagamentosInOrder.ReadInteger("row").Value();
        const std::int64_t gnf = m_pagamentosInOrder.ReadInteger("cont_gnf").Value();
        if (const auto nf = repeated->byGnf.find(gnf); nf != repeated->byGnf.end()) {
            nf->second.pagamentos.Add(row, false);
        } else {
            repeated->pagamentosFiscais.Add(row, gnf != last);
            last = gnf;
        }
    }
    known = std::move(repeated);
    return *known;
}

void DocumentoReader::CompleteRepeated(Documento& documento)
{
    const Repeated& repeated = RepeatedOf(documento.coo.Value());
    Share itens;
    Share pagamentos;
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL) {
        const PlaceAmongEqual place = PlaceAmong(repeated.fiscais, documento.rowid);
        itens = repeated.itensFiscais.Of(place);
        for (const std::int64_t rowid : itens.rowids) {
            leitura::ItemCupomFiscalRow row;
            m_itemFiscal.With(rowid).Next(row);
            documento.itens.push_back(ItemOf(row));
        }
        pagamentos = repeated.pagamentosFiscais.Of(place);
    } else {
        itens = repeated.itensNf.Of(PlaceAmong(repeated.nfs, documento.rowid));
        for (const std::int64_t rowid : itens.rowids) {
            leitura::ItemCupomNfRow row;
            m_itemNf.With(rowid).Next(row);
            documento.itens.push_back(ReadItem(row));
        }
        const Repeated::OfGnf& ofGnf = repeated.byGnf.at(documento.gnf.Value());
        pagamentos = ofGnf.pagamentos.Of(PlaceAmong(ofGnf.nfs, documento.rowid));
    }
    for (const std::int64_t rowid : pagamentos.rowids) {
        leitura::PagamentoCupomRow row;
        m_pagamento.With(rowid).Next(row);
        documento.pagamentos.push_back(ReadPagamento(row));
    }
    m_itemFiscal.End();
    m_itemNf.End();
    m_pagamento.End();
    documento.rowsUncertain = itens.uncertain || pagamentos.uncertain;
    documento.rowsAtFirst = itens.atFirst || pagamentos.atFirst;
}

std::int64_t DocumentoReader::CountCuponsOf(std::int64_t crz)
{
    m_cuponsOfCrz.With(crz).Next();
    const std::int64_t cupons = m_cuponsOfCrz.ReadInteger("cupons").Value();
    m_cuponsOfCrz.End();
    return cupons;
}

} // namespace bancada::relatorio
