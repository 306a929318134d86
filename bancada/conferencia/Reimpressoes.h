// Reprints of the detail tape, which take a COO and have their row in fita_detalhe.
#pragma once

#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace bancada::conferencia
{

class Reimpressoes
{
  public:
    explicit Reimpressoes(const leitura::DatabaseReading& database);

    // How many may stand between the document asked about last and one issued at `hora`. Documents
    // are asked about in the order of their issue.
    std::int64_t CountUntil(const std::string& hora);
    // The same for the first document behind a setting of the clock; the one before it was issued
    // at `de`. What was reprinted later on that day counts, by whichever clock.
    std::int64_t CountAcross(const std::string& de);
    // So many of them were found to have taken a number.
    void Consume(std::int64_t count);

  private:
    void ReadNext();

    leitura::Rows<leitura::FitaDetalheRow> m_rows;
    std::optional<std::string> m_next;
    std::deque<std::string> m_pending;
    // Read already, and not yet asked for.
    std::deque<std::string> m_ahead;
    bool m_across = false; // what is pending was counted across a setting of the clock
    std::string m_lastHora;
};

} // namespace bancada::conferencia
