#include "bancada/conferencia/Acertos.h"

#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <optional>

namespace bancada::conferencia
{
namespace
{

// The document that a query answers; nothing where there is none.
struct Anterior {
    leitura::Integer coo;
    std::string hora;
};

std::optional<Anterior> Read(leitura::Query& query)
{
    std::optional<Anterior> anterior;
    if (query.Next()) {
        anterior = Anterior{query.ReadInteger("cont_coo"), query.ReadText("hora").Value()};
    }
    query.End();
    return anterior;
}

bool HasIntervencao(const leitura::DatabaseReading& database)
{
    return leitura::Query(database, "SELECT cont_cro FROM intervencao LIMIT 1").Next();
}

} // namespace

Acertos::Acertos(const leitura::DatabaseReading& database, const RepeatedCoos& repeated)
{
    if (!HasIntervencao(database)) {
        return;
    }
    leitura::Rows<leitura::OutroDocumentoRow> leituras(
        database, leitura::OutroDocumentoTable(),
        "WHERE id_tipo_documento IN ('LX', 'MF') ORDER BY rowid");
    leitura::Query outro(database, "SELECT cont_coo, data_hora_inicio_emissao AS hora"
                                   " FROM outros_documentos WHERE rowid < ?1"
                                   " ORDER BY rowid DESC LIMIT 1");
    // Some documents leave no row: the receipt before them is not far.
    leitura::Query fiscal(database, "SELECT cont_coo, data_hora_emissao AS hora FROM cupom_fiscal"
                                    " WHERE cont_coo BETWEEN ?1 - 20 AND ?1 - 1"
                                    " ORDER BY cont_coo DESC LIMIT 1");
    leitura::OutroDocumentoRow row;
    while (leituras.Next(row)) {
        const std::int64_t coo = row.coo.Value();
        std::optional<Anterior> anterior = Read(outro.With(row.rowid));
        const std::optional<Anterior> cupom = Read(fiscal.With(coo));
        if (cupom && repeated.IsSingle(cupom->coo) &&
            (!anterior || leitura::Steps(cupom->coo.Value(), coo) <
                              leitura::Steps(anterior->coo.Value(), coo))) {
            anterior = cupom;
        }
        const std::string& hora = row.dataHoraInicioEmissao.Value();
        if (anterior && !hora.empty() && hora < anterior->hora) {
            m_all.push_back({coo, anterior->hora, hora});
        }
        m_leituras.push_back(hora);
    }
    std::sort(m_leituras.begin(), m_leituras.end());
}

const Acerto* Acertos::FindAt(std::int64_t coo) const
{
    const auto found = std::find_if(m_all.begin(), m_all.end(),
                                    [coo](const Acerto& acerto) { return acerto.coo == coo; });
    return found == m_all.end() ? nullptr : &*found;
}

bool Acertos::HasBetween(std::int64_t first, std::int64_t last) const
{
    return std::any_of(m_all.begin(), m_all.end(), [first, last](const Acerto& acerto) {
        const std::int64_t steps = leitura::Steps(first, acerto.coo);
        return steps > 0 && steps <= leitura::Steps(first, last);
    });
}

bool Acertos::MayBeWithin(const std::string& from, const std::string& to) const
{
    const auto first = std::lower_bound(m_leituras.begin(), m_leituras.end(), from);
    return first != m_leituras.end() && *first <= to;
}

bool Acertos::Cover(const std::string& from, const std::string& to) const
{
    return std::any_of(m_all.begin(), m_all.end(), [&from, &to](const Acerto& acerto) {
        return from <= acerto.de && acerto.para <= to;
    });
}

} // namespace bancada::conferencia
