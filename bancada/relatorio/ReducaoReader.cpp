#include "bancada/relatorio/ReducaoReader.h"

#include "bancada/relatorio/DocumentoRows.h"

#include <algorithm>
#include <utility>

namespace bancada::relatorio
{

ReducaoReader::LazyIndex::LazyIndex(const leitura::DatabaseReading& database, std::string table,
                                    std::string column)
    : m_database(&database), m_table(std::move(table)), m_column(std::move(column))
{
}

const leitura::RowIndex& ReducaoReader::LazyIndex::Get()
{
    if (!m_index) {
        m_index = std::make_unique<leitura::RowIndex>(*m_database, m_table, m_column);
    }
    return *m_index;
}

ReducaoReader::ReducaoReader(const leitura::DatabaseReading& database)
    : m_byCrz(database, "reducao_z", "cont_crz"), m_byCoo(database, "reducao_z", "cont_coo"),
      m_totalizadoresByCrz(database, "totalizador_reducao", "cont_crz"),
      m_meiosByCrz(database, "meio_pagamento_reducao", "cont_crz"),
      m_reducao(database, leitura::ReducaoZTable(), "WHERE rowid = ?1"),
      m_totalizador(database, leitura::TotalizadorReducaoTable(), "WHERE rowid = ?1"),
      m_meio(database, leitura::MeioPagamentoReducaoTable(), "WHERE rowid = ?1"),
      m_fim(database,
            "SELECT data_hora_fim_emissao AS fim FROM outros_documentos WHERE cont_coo = ?1"
            " AND id_tipo_documento = 'RZ' AND data_hora_inicio_emissao = ?2 LIMIT 1")
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
        if (m_fim.With(reducao.coo.Value(), reducao.emissao.Value()).Next()) {
            reducao.fim = m_fim.ReadText("fim");
        }
        m_fim.End();
    }
    return reducao;
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
    if (crz.IsKnown()) {
        for (const std::int64_t rowid : m_byCrz.Get().RowsOf(crz.Value())) {
            ReducaoZ reducao = Read(rowid);
            if (reducao.emissao.IsKnown() && reducao.emissao.Value() >= desde.Value()) {
                return reducao;
            }
        }
    }
    return {};
}

void ReducaoReader::Complete(ReducaoZ& reducao)
{
    if (!reducao.crz.IsKnown()) {
        return;
    }
    const std::int64_t crz = reducao.crz.Value();
    const std::vector<std::int64_t> equal = m_byCrz.Get().RowsOf(crz);
    const PlaceAmongEqual place{std::lower_bound(equal.begin(), equal.end(), reducao.rowid) -
                                    equal.begin(),
                                static_cast<std::int64_t>(equal.size())};

    std::vector<TotalizadorReducao> totalizadores;
    for (const std::int64_t rowid : m_totalizadoresByCrz.Get().RowsOf(crz)) {
        leitura::TotalizadorReducaoRow row;
        m_totalizador.With(rowid).Next(row);
        totalizadores.push_back(
            {row.totalizador, row.valorBaseCalculo, row.valorImposto, row.fiscal});
    }
    m_totalizador.End();
    bool uncertain = false;
    // A reduction's fiscal totalizers end with Can-S, its non-fiscal ones follow.
    reducao.totalizadores =
        RowsOf(place, std::move(totalizadores), uncertain,
               [](const TotalizadorReducao& one, const TotalizadorReducao& before) {
                   return one.fiscal.IsSet() &&
                          (!before.fiscal.IsSet() || before.codigo.Value() == "Can-S");
               });

    std::vector<MeioReducao> meios;
    for (const std::int64_t rowid : m_meiosByCrz.Get().RowsOf(crz)) {
        leitura::MeioPagamentoReducaoRow row;
        m_meio.With(rowid).Next(row);
        meios.push_back({row.indiceMeioPagamento, row.descricaoMeioPagamento, row.valorAcumulado});
    }
    m_meio.End();
    reducao.meios = RowsOf(place, std::move(meios), uncertain,
                           [](const MeioReducao& one, const MeioReducao& before) {
                               return one.indice.Value() <= before.indice.Value();
                           });
}

} // namespace bancada::relatorio
