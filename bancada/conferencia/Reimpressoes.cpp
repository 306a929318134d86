#include "bancada/conferencia/Reimpressoes.h"

#include <algorithm>
#include <utility>

namespace bancada::conferencia
{

Reimpressoes::Reimpressoes(const leitura::DatabaseReading& database)
    : m_rows(database, leitura::FitaDetalheTable(), "ORDER BY rowid")
{
    ReadNext();
}

std::int64_t Reimpressoes::CountUntil(const std::string& hora)
{
    if (m_across) {
        // By the clock as it was set, what is left of them may still stand before what comes.
        m_across = false;
        m_ahead = std::move(m_pending);
        m_pending.clear();
        std::sort(m_ahead.begin(), m_ahead.end());
        m_lastHora.clear();
    }
    // Those of an earlier second than the last document stand before it.
    while (!m_pending.empty() && m_pending.front() < m_lastHora) {
        m_pending.pop_front();
    }
    while (!m_ahead.empty() && m_ahead.front() <= hora) {
        m_pending.push_back(std::move(m_ahead.front()));
        m_ahead.pop_front();
    }
    while (m_next && *m_next <= hora) {
        m_pending.push_back(std::move(*m_next));
        ReadNext();
    }
    m_lastHora = hora;
    return static_cast<std::int64_t>(m_pending.size());
}

std::int64_t Reimpressoes::CountAcross(const std::string& de)
{
    const std::int64_t count = CountUntil(de.substr(0, de.find(' ')) + " 23:59:59");
    m_across = true;
    return count;
}

void Reimpressoes::Consume(std::int64_t count)
{
    m_pending.erase(m_pending.begin(), m_pending.begin() + static_cast<std::ptrdiff_t>(count));
}

void Reimpressoes::ReadNext()
{
    leitura::FitaDetalheRow row;
    m_next = m_rows.Next(row) ? std::optional(row.dataHoraEmissao.Value()) : std::nullopt;
}

} // namespace bancada::conferencia
