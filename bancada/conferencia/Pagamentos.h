// What a receipt was paid with.
#pragma once

#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <map>
#include <vector>

namespace bancada::conferencia
{

struct Pagamentos {
    std::map<std::int64_t, leitura::Amount> porMeio;
    leitura::Amount soma;
    // A reversal marks every payment of its means on the receipt, so that with several of them the
    // amount reversed is recorded several times. It is counted once here, which is right unless
    // there was more than one reversal.
    bool incerto = false;
    // In the order of their rows.
    std::vector<leitura::PagamentoCupomRow> rows;
    // The GNFs that reversals of its payments took.
    std::vector<std::int64_t> gnfsDeEstorno;
};

class PagamentosReader
{
  public:
    explicit PagamentosReader(const leitura::DatabaseReading& database);

    // Of the receipt or receipts of this number.
    Pagamentos Read(std::int64_t coo);

  private:
    leitura::Rows<leitura::PagamentoCupomRow> m_rows;
};

} // namespace bancada::conferencia
