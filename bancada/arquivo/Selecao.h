// Which documents of a database an exported file holds.
#pragma once

#include "bancada/arquivo/Exportacao.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// A Z reduction, as far as choosing goes.
struct Fechamento {
    std::int64_t rowid = 0;
    std::int64_t crz = 0;
    std::int64_t coo = 0;
    std::string movimento; // yyyy-mm-dd
    std::string emissao;   // yyyy-mm-dd hh:mm:ss
    std::int64_t cro = 0;
    bool chosen = false;
};

// Whole fiscal days: by the Z reduction that closes them, or by the date of their movement. What
// comes after the last reduction is the day still open. Holds the reductions and, of documents
// other than receipts, the row at which each day ends.
class Selecao
{
  public:
    // Throws Unusable.
    Selecao(const leitura::DatabaseReading& database, const ExportOptions& options);

    // In the order of their rows.
    const std::vector<Fechamento>& Reducoes() const { return m_reducoes; }

    // A receipt, by the reduction that it is filed under and its date.
    bool HasCupom(std::int64_t crz, const std::string& emissao) const;
    // A row of outros_documentos and its date.
    bool HasDocumento(std::int64_t rowid, const std::string& inicio) const;
    // What is tied to no day: an intervention, a reprint.
    bool HasInstante(const std::string& instante) const;
    bool IsAll() const { return m_from.empty() && m_to.empty() && !m_crz; }

  private:
    bool HasCrz(std::int64_t crz) const;
    bool HasDate(const std::string& date) const;
    const Fechamento* Find(std::int64_t crz) const;

    std::string m_from, m_to;
    std::optional<std::pair<std::int64_t, std::int64_t>> m_crz;
    std::vector<Fechamento> m_reducoes;
    // By row of outros_documentos: the row of a Z reduction's document and the reduction's place.
    std::vector<std::pair<std::int64_t, std::size_t>> m_ends;
};

} // namespace bancada::arquivo
