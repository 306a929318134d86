#include "bancada/arquivo/Selecao.h"

#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <map>

namespace bancada::arquivo
{
namespace
{

constexpr std::size_t DATE_SIZE = 10;

std::string DateOf(const std::string& instant)
{
    return instant.substr(0, DATE_SIZE);
}

} // namespace

Selecao::Selecao(const leitura::DatabaseReading& database, const ExportOptions& options)
    : m_from(options.from), m_to(options.to), m_crz(options.crz)
{
    leitura::Rows reducoes(database, leitura::ReducaoZTable(), "ORDER BY rowid");
    leitura::ReducaoZRow row;
    std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> byNumbers;
    while (reducoes.Next(row)) {
        Fechamento one;
        one.rowid = row.rowid;
        one.crz = row.crz.Value();
        one.coo = row.coo.Value();
        one.movimento = DateOf(row.dataMovimento.Value());
        one.emissao = row.dataHoraEmissao.Value();
        one.cro = row.cro.Value();
        one.chosen = HasCrz(one.crz) && HasDate(one.movimento);
        byNumbers[{one.crz, one.coo}] = m_reducoes.size();
        m_reducoes.push_back(one);
    }
    leitura::Rows documentos(database, leitura::OutroDocumentoTable(),
                             "WHERE id_tipo_documento = 'RZ' ORDER BY rowid");
    leitura::OutroDocumentoRow documento;
    while (documentos.Next(documento)) {
        const auto found = byNumbers.find({documento.crz.Value(), documento.coo.Value()});
        if (found != byNumbers.end()) {
            m_ends.emplace_back(documento.rowid, found->second);
        }
    }
}

bool Selecao::HasCrz(std::int64_t crz) const
{
    return !m_crz ||
           leitura::Steps(m_crz->first, crz) <= leitura::Steps(m_crz->first, m_crz->second);
}

bool Selecao::HasDate(const std::string& date) const
{
    return (m_from.empty() || m_from <= date) && (m_to.empty() || date <= m_to);
}

const Fechamento* Selecao::Find(std::int64_t crz) const
{
    // The numbers rise by one a row but where rows are missing or a counter wrapped.
    if (!m_reducoes.empty()) {
        const std::int64_t at = leitura::Steps(m_reducoes.front().crz, crz);
        if (at < static_cast<std::int64_t>(m_reducoes.size()) &&
            m_reducoes[static_cast<std::size_t>(at)].crz == crz) {
            return &m_reducoes[static_cast<std::size_t>(at)];
        }
    }
    const auto found = std::find_if(m_reducoes.begin(), m_reducoes.end(),
                                    [crz](const Fechamento& one) { return one.crz == crz; });
    return found == m_reducoes.end() ? nullptr : &*found;
}

bool Selecao::HasCupom(std::int64_t crz, const std::string& emissao) const
{
    if (IsAll()) {
        return true;
    }
    if (const Fechamento* reducao = Find(crz)) {
        return reducao->chosen;
    }
    return HasCrz(crz) && HasDate(DateOf(emissao));
}

bool Selecao::HasDocumento(std::int64_t rowid, const std::string& inicio) const
{
    if (IsAll()) {
        return true;
    }
    const auto end = std::lower_bound(m_ends.begin(), m_ends.end(), rowid,
                                      [](const std::pair<std::int64_t, std::size_t>& one,
                                         std::int64_t row) { return one.first < row; });
    if (end != m_ends.end()) {
        return m_reducoes[end->second].chosen;
    }
    // The day that is open: its number is the one after the last.
    const std::int64_t last = m_reducoes.empty() ? 0 : m_reducoes.back().crz;
    return HasCrz(leitura::NextNumber(last)) && HasDate(DateOf(inicio));
}

bool Selecao::HasInstante(const std::string& instante) const
{
    if (!m_crz) {
        return HasDate(DateOf(instante));
    }
    // From the day of the first chosen reduction to the issue of the last.
    bool after = false;
    bool before = false;
    for (const Fechamento& one : m_reducoes) {
        after = after || (one.chosen && one.movimento <= DateOf(instante));
        before = before || (one.chosen && instante <= one.emissao);
    }
    return after && before;
}

} // namespace bancada::arquivo
