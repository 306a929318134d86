// The document numbers that several receipts bear.
#pragma once

#include "bancada/leitura/Cell.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <unordered_set>

namespace bancada::conferencia
{

// Numbers come round again at six digits. Items and payments of receipts that share a number cannot
// be told apart.
class RepeatedCoos
{
  public:
    // Reads the numbers of both kinds of receipts once, in order.
    explicit RepeatedCoos(const leitura::DatabaseReading& database);

    // Whether the number is known and names one receipt alone.
    bool IsSingle(const leitura::Integer& coo) const;

  private:
    std::unordered_set<std::int64_t> m_repeated;
};

} // namespace bancada::conferencia
