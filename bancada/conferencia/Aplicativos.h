// The identification of the point-of-sale application on the closed receipts.
#pragma once

#include "bancada/conferencia/FindingReport.h"
#include "bancada/leitura/Tables.h"

#include <optional>
#include <string>

namespace bancada::conferencia
{

// A till changes its application now and then, never for one receipt: what stands on one alone,
// between two of one mind, is told.
class Aplicativos
{
  public:
    // Closed receipts are given in their order.
    void Check(FindingReport& findings, const leitura::CupomFiscalRow& cupom);

  private:
    std::optional<std::string> m_before;
    std::optional<leitura::CupomFiscalRow> m_last;
};

} // namespace bancada::conferencia
