// The document numbers that several documents bear.
#pragma once

#include "bancada/leitura/Cell.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <unordered_set>

namespace bancada::conferencia
{

// Numbers come round again at six digits. Items and payments of receipts that share a number cannot
// be told apart, and what a document's updates write reaches all rows of its number.
class RepeatedCoos
{
  public:
    // Reads the numbers of both kinds of receipts once, in order, and those of the other documents.
    explicit RepeatedCoos(const leitura::DatabaseReading& database);

    // Whether the number is known and names one receipt alone.
    bool IsSingle(const leitura::Integer& coo) const;
    // Whether receipts of several days bear the number: it has come round, and what the rows of the
    // earlier ones hold may have been written for the last.
    bool HasComeRound(const leitura::Integer& coo) const;
    // Whether the number is known and names one row alone of `outros_documentos`.
    bool IsSingleOutro(const leitura::Integer& coo) const;

  private:
    std::unordered_set<std::int64_t> m_repeated;
    std::unordered_set<std::int64_t> m_round;
    std::unordered_set<std::int64_t> m_outros;
};

} // namespace bancada::conferencia
