#include "bancada/relatorio/ReducaoReader.h"

#include "bancada/relatorio/DocumentoRows.h"

#include <algorithm>
#include <utility>

namespace bancada::relatorio
{

ReducaoReader::LazyIndex::LazyIndex(const leitura::DatabaseReading& database, std::string table,
                                    std::string column, const leitura::RowRange& range)
    : m_database(&database), m_table(std::move(table)), m_column(std::move(column)), m_range(range)
{
}

const leitura::RowIndex& ReducaoReader::LazyIndex::Get()
{
    if (!m_index) {
        m_index = std::make_unique<leitura::RowIndex>(*m_database, m_table, m_column, m_range);
    }
    return *m_index;
}

ReducaoReader::ReducaoReader(const leitura::DatabaseReading& database, const JornadaRange& range)
    : m_byCrz(database, "reducao_z", "cont_crz", range.reducoes),
      m_byCoo(database, "reducao_z", "cont_coo", range.reducoes),
      m_totalizadoresByCrz(database, "totalizador_reducao", "cont_crz", range.totalizadores),
      m_meiosByCrz(database, "meio_pagamento_reducao", "cont_crz", range.meios),
      m_reducao(database, leitura::ReducaoZTable(), "WHERE rowid = ?1"),
      m_totalizador(database, leitura::TotalizadorReducaoTable(), "WHERE rowid = ?1"),
      m_meio(database, leitura::MeioPagamentoReducaoTable(), "WHERE rowid = ?1"),
      m_fim(database,
            "SELECT data_hora_fim_emissao AS fim FROM outros_documentos WHERE cont_coo = ?1"
            " AND id_tipo_documento = 'RZ' AND data_hora_inicio_emissao = ?2 LIMIT 1"),
      m_fins(database, "SELECT data_hora_inicio_emissao AS inicio, data_hora_fim_emissao AS fim"
                       " FROM outros_documentos WHERE cont_coo = ?1 AND id_tipo_documento = 'RZ'")
{
}

ReducaoZ ReducaoReader::Read(std::int64_t rowid)
{
    leitura::ReducaoZRow row;
    m_reducao.With(rowid).Next(row);
    m_reducao.End();
    return ReadReducao(row);
}

ReducaoZ ReducaoReader::ReadReducao(const leitura::ReducaoZRow& row)
{
    ReducaoZ reducao = ReducaoOf(row);
    if (reducao.coo.IsKnown() && reducao.emissao.IsKnown()) {
        reducao.fim = FimOf(reducao);
    }
    return reducao;
}

Text ReducaoReader::FimOf(const ReducaoZ& reducao)
{
    const std::int64_t coo = reducao.coo.Value();
    if (!m_byCoo.Get().IsRepeated(coo)) {
        const bool any = m_fim.With(coo, reducao.emissao.Value()).Next();
        Text fim = any ? m_fim.ReadText("fim") : Text();
        m_fim.End();
        return fim;
    }
    const auto [known, isNew] = m_finsByInicio.try_emplace(coo);
    if (isNew) {
        for (m_fins.With(coo); m_fins.Next();) {
            known->second.try_emplace(m_fins.ReadText("inicio").Value(), m_fins.ReadText("fim"));
        }
    }
    const auto fim = known->second.find(reducao.emissao.Value());
    return fim == known->second.end() ? Text() : fim->second;
}

const ReducaoReader::Repeated& ReducaoReader::RepeatedOf(std::int64_t crz)
{
    std::unique_ptr<Repeated>& known = m_repeated[crz];
    if (known) {
        return *known;
    }
    auto repeated = std::make_unique<Repeated>();
    repeated->reducoes = m_byCrz.Get().RowsOf(crz);
    std::string latest;
    for (const std::int64_t rowid : repeated->reducoes) {
        leitura::ReducaoZRow row;
        m_reducao.With(rowid).Next(row);
        latest = std::max(latest, row.dataHoraEmissao.Value());
        repeated->latest.push_back(latest);
    }
    m_reducao.End();
    // A reduction's fiscal totalizers end with Can-S, its non-fiscal ones follow.
    leitura::TotalizadorReducaoRow before;
    for (const std::int64_t rowid : m_totalizadoresByCrz.Get().RowsOf(crz)) {
        leitura::TotalizadorReducaoRow row;
        m_totalizador.With(rowid).Next(row);
        repeated->totalizadores.Add(
            rowid, row.fiscal.IsSet() &&
                       (!before.fiscal.IsSet() || before.totalizador.Value() == "Can-S"));
        before = row;
    }
    m_totalizador.End();
    std::int64_t last = 0;
    for (const std::int64_t rowid : m_meiosByCrz.Get().RowsOf(crz)) {
        leitura::MeioPagamentoReducaoRow row;
        m_meio.With(rowid).Next(row);
        repeated->meios.Add(rowid, row.indiceMeioPagamento.Value() <= last);
        last = row.indiceMeioPagamento.Value();
    }
    m_meio.End();
    known = std::move(repeated);
    return *known;
}

std::vector<ReducaoZ> ReducaoReader::WithCrz(const Integer& crz)
{
    std::vector<ReducaoZ> reducoes;
    if (crz.IsKnown()) {
        for (const std::int64_t rowid : m_byCrz.Get().RowsOf(crz.Value())) {
            reducoes.push_back(Read(rowid));
        }
    }
    return reducoes;
}

std::vector<ReducaoZ> ReducaoReader::WithCoo(const Integer& coo)
{
    std::vector<ReducaoZ> reducoes;
    if (coo.IsKnown()) {
        for (const std::int64_t rowid : m_byCoo.Get().RowsOf(coo.Value())) {
            reducoes.push_back(Read(rowid));
        }
    }
    return reducoes;
}

bool ReducaoReader::HasCoo(const Integer& coo)
{
    return coo.IsKnown() && m_byCoo.Get().Has(coo.Value());
}

std::optional<ReducaoZ> ReducaoReader::ClosingOf(const Integer& crz, const Text& desde)
{
    if (!crz.IsKnown() || !m_byCrz.Get().Has(crz.Value())) {
        return {};
    }
    if (!m_byCrz.Get().IsRepeated(crz.Value())) {
        ReducaoZ reducao = Read(m_byCrz.Get().RowsOf(crz.Value()).front());
        const bool closes = reducao.emissao.IsKnown() && reducao.emissao.Value() >= desde.Value();
        return closes ? std::optional(reducao) : std::nullopt;
    }
    const Repeated& repeated = RepeatedOf(crz.Value());
    const auto first =
        std::lower_bound(repeated.latest.begin(), repeated.latest.end(), desde.Value());
    if (first == repeated.latest.end()) {
        return {};
    }
    return Read(repeated.reducoes[static_cast<std::size_t>(first - repeated.latest.begin())]);
}

void ReducaoReader::AddTotalizador(std::int64_t rowid, ReducaoZ& reducao)
{
    leitura::TotalizadorReducaoRow row;
    m_totalizador.With(rowid).Next(row);
    m_totalizador.End();
    reducao.totalizadores.push_back(
        {row.totalizador, row.valorBaseCalculo, row.valorImposto, row.fiscal});
}

void ReducaoReader::AddMeio(std::int64_t rowid, ReducaoZ& reducao)
{
    leitura::MeioPagamentoReducaoRow row;
    m_meio.With(rowid).Next(row);
    m_meio.End();
    reducao.meios.push_back(
        {row.indiceMeioPagamento, row.descricaoMeioPagamento, row.valorAcumulado});
}

void ReducaoReader::Complete(ReducaoZ& reducao)
{
    if (!reducao.crz.IsKnown()) {
        return;
    }
    const std::int64_t crz = reducao.crz.Value();
    Share totalizadores;
    Share meios;
    if (m_byCrz.Get().IsRepeated(crz)) {
        const Repeated& repeated = RepeatedOf(crz);
        const PlaceAmongEqual place = PlaceAmong(repeated.reducoes, reducao.rowid);
        totalizadores = repeated.totalizadores.Of(place);
        meios = repeated.meios.Of(place);
        reducao.rowsAtFirst = totalizadores.atFirst || meios.atFirst;
    } else {
        totalizadores.rowids = m_totalizadoresByCrz.Get().RowsOf(crz);
        meios.rowids = m_meiosByCrz.Get().RowsOf(crz);
    }
    for (const std::int64_t rowid : totalizadores.rowids) {
        AddTotalizador(rowid, reducao);
    }
    for (const std::int64_t rowid : meios.rowids) {
        AddMeio(rowid, reducao);
    }
}

} // namespace bancada::relatorio
