// The losses that a firmware log names, found by the numbers that they concern.
#pragma once

#include "bancada/log/Losses.h"
#include "bancada/log/RejectedRow.h"

#include <cstdint>
#include <set>
#include <vector>

namespace bancada::conferencia
{

class LossIndex
{
  public:
    // `losses` must outlive this object.
    explicit LossIndex(const Losses& losses);

    const Losses& All() const { return m_losses; }
    // The rows of the rejected statements, in their order.
    const std::vector<RejectedRow>& Rows() const { return m_rows; }

    // Whether a row was lost of this document, this fiscal or non-fiscal number, this Z. A
    // statement that is always rejected is reckoned with and explains no document.
    bool HasCoo(std::int64_t coo) const { return m_coos.count(coo) != 0; }
    bool HasCcf(std::int64_t ccf) const { return m_ccfs.count(ccf) != 0; }
    bool HasGnf(std::int64_t gnf) const { return m_gnfs.count(gnf) != 0; }
    bool HasCrz(std::int64_t crz) const { return m_crzs.count(crz) != 0; }
    // Whether the closing of this receipt was rejected as that of an additional receipt.
    bool HasCupomAdicional(std::int64_t coo) const { return m_cuponsAdicionais.count(coo) != 0; }

    // The documents of lost rows, and the days that they fell in.
    const std::set<std::int64_t>& Coos() const { return m_coos; }
    void AddCrz(std::int64_t crz) { m_crzs.insert(crz); }

  private:
    const Losses& m_losses;
    std::vector<RejectedRow> m_rows;
    std::set<std::int64_t> m_coos, m_ccfs, m_gnfs, m_crzs, m_cuponsAdicionais;
};

} // namespace bancada::conferencia
