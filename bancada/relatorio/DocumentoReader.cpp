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

} // namespace

bool IsIssuedBefore(const Documento& a, const Documento& b)
{
    if (a.inicio.Value() != b.inicio.Value()) {
        return a.inicio.Value() < b.inicio.Value();
    }
    return leitura::ComesBefore(a.coo.Value(), b.coo.Value());
}

DocumentoReader::DocumentoReader(const leitura::DatabaseReading& database, Cadastro& cadastro,
                                 ReducaoReader& reducoes)
    : m_cadastro(cadastro), m_reducoes(reducoes),
      m_fiscais(database, leitura::CupomFiscalTable(), OF_COO),
      m_nfs(database, leitura::CupomNfTable(), OF_COO),
      m_outros(database, leitura::OutroDocumentoTable(), OF_COO),
      m_itensFiscais(database, leitura::ItemCupomFiscalTable(), OF_COO),
      m_itensNf(database, leitura::ItemCupomNfTable(), OF_COO),
      m_pagamentos(database, leitura::PagamentoCupomTable(), OF_COO),
      m_placeOfFiscal(database, "SELECT count(*) FILTER (WHERE rowid < ?2) AS place, count(*) AS"
                                " documents FROM cupom_fiscal WHERE cont_coo = ?1"),
      m_placeOfNf(database, "SELECT count(*) FILTER (WHERE rowid < ?2) AS place, count(*) AS"
                            " documents FROM cupom_nf WHERE cont_coo = ?1"),
      m_gnfs(database, "SELECT cont_gnf FROM cupom_nf WHERE cont_coo = ?1"),
      m_fimOfComprovante(database, "SELECT max(data_hora_fim_emissao) AS fim FROM outros_documentos"
                                   " WHERE cont_coo = ?1 AND id_tipo_documento = 'CN'"),
      m_hasComprovante(database, "SELECT 1 FROM cupom_nf WHERE cont_coo = ?1 LIMIT 1"),
      m_cuponsOfCrz(database, "SELECT (SELECT count(*) FROM cupom_fiscal WHERE cont_crz = ?1) +"
                              " (SELECT count(*) FROM cupom_nf WHERE cont_crz = ?1) AS cupons")
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
    leitura::OutroDocumentoRow row;
    for (m_outros.With(coo); m_outros.Next(row);) {
        if (!IsDocumentoItself(row)) {
            continue;
        }
        Documento outro = OutroDocumentoOf(row);
        // The row of a non-fiscal receipt whose own row is lost says when that receipt was issued.
        const auto orphan =
            std::find_if(documentos.begin(), documentos.end(), [&outro](const Documento& d) {
                return !d.hasAbertura && outro.codigo.Value() == "CN" &&
                       d.tipo == TipoDocumento::COMPROVANTE_NF;
            });
        if (orphan == documentos.end()) {
            documentos.push_back(std::move(outro));
        } else {
            orphan->crz = outro.crz;
            orphan->gnf = outro.gnf;
            orphan->inicio = outro.inicio;
            orphan->fim = outro.fim;
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
    if (row.coo.IsKnown()) {
        m_fimOfComprovante.With(row.coo.Value()).Next();
        // The greatest of no rows is NULL.
        const Text fim = m_fimOfComprovante.ReadText("fim");
        documento.fim = fim.State() == leitura::CellState::NULL_VALUE ? Text() : fim;
        m_fimOfComprovante.End();
    }
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
    if (documento.IsCupom() && documento.coo.IsKnown()) {
        documento.itens = ReadItens(documento, documento.rowsUncertain);
        documento.pagamentos = ReadPagamentos(documento, documento.rowsUncertain);
    }
}

PlaceAmongEqual DocumentoReader::PlaceOf(leitura::Query& query, const Documento& documento)
{
    query.With(documento.coo.Value(), documento.rowid).Next();
    const PlaceAmongEqual place{query.ReadInteger("place").Value(),
                                query.ReadInteger("documents").Value()};
    query.End();
    return place;
}

std::vector<Item> DocumentoReader::ReadItens(const Documento& documento, bool& uncertain)
{
    const bool fiscal = documento.tipo == TipoDocumento::CUPOM_FISCAL;
    std::vector<Item> itens;
    if (fiscal) {
        leitura::ItemCupomFiscalRow row;
        for (m_itensFiscais.With(documento.coo.Value()); m_itensFiscais.Next(row);) {
            itens.push_back(ItemOf(row));
        }
    } else {
        leitura::ItemCupomNfRow row;
        for (m_itensNf.With(documento.coo.Value()); m_itensNf.Next(row);) {
            itens.push_back(ItemOf(row));
            itens.back().descricao = m_cadastro.FindTotalizador(itens.back().totalizador);
        }
    }
    PlaceAmongEqual place;
    if (documento.hasAbertura) {
        place = PlaceOf(fiscal ? m_placeOfFiscal : m_placeOfNf, documento);
    }
    return RowsOf(place, std::move(itens), uncertain, [](const Item& one, const Item& before) {
        return one.numero.Value() <= before.numero.Value();
    });
}

std::vector<Pagamento> DocumentoReader::ReadPagamentos(const Documento& documento, bool& uncertain)
{
    std::vector<Pagamento> pagamentos;
    leitura::PagamentoCupomRow row;
    for (m_pagamentos.With(documento.coo.Value()); m_pagamentos.Next(row);) {
        pagamentos.push_back(PagamentoOf(row));
        pagamentos.back().nome = m_cadastro.FindMeio(pagamentos.back().meio);
    }
    if (!documento.hasAbertura) {
        return pagamentos;
    }

    const PlaceAmongEqual place = PlaceOf(m_placeOfFiscal, documento);
    std::vector<std::int64_t> gnfs;
    for (m_gnfs.With(documento.coo.Value()); m_gnfs.Next();) {
        gnfs.push_back(m_gnfs.ReadInteger("cont_gnf").Value());
    }
    if (place.all + static_cast<std::int64_t>(gnfs.size()) <= 1) {
        return pagamentos;
    }

    const bool fiscal = documento.tipo == TipoDocumento::CUPOM_FISCAL;
    const auto isAnothers = [&](const Pagamento& p) {
        return fiscal ? std::find(gnfs.begin(), gnfs.end(), p.gnf.Value()) != gnfs.end()
                      : p.gnf.Value() != documento.gnf.Value();
    };
    pagamentos.erase(std::remove_if(pagamentos.begin(), pagamentos.end(), isAnothers),
                     pagamentos.end());
    if (!fiscal) {
        return pagamentos;
    }
    return RowsOf(place, std::move(pagamentos), uncertain,
                  [](const Pagamento& one, const Pagamento& before) {
                      return one.gnf.Value() != before.gnf.Value();
                  });
}

std::int64_t DocumentoReader::CountCuponsOf(std::int64_t crz)
{
    m_cuponsOfCrz.With(crz).Next();
    const std::int64_t cupons = m_cuponsOfCrz.ReadInteger("cupons").Value();
    m_cuponsOfCrz.End();
    return cupons;
}

} // namespace bancada::relatorio
