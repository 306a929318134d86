// The losses that a firmware log names, found by the numbers that they concern.
#pragma once

#include "bancada/leitura/Amount.h"
#include "bancada/log/Losses.h"
#include "bancada/log/RejectedRow.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace bancada::conferencia
{

// What a rejected insert would have added to its receipt.
struct LostItem {
    std::string aliquota;
    leitura::Amount total;
};
struct LostPagamento {
    std::int64_t meio = 0;
    leitura::Amount valor;
};
// Of one receipt.
struct LostRows {
    std::vector<LostItem> itens;
    std::vector<LostPagamento> pagamentos;

    bool IsEmpty() const { return itens.empty() && pagamentos.empty(); }
    leitura::Amount Itens() const;
    leitura::Amount Pagamentos() const;
};

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

    // Whether one of the lost rows of the document, or of the day, does not tell its amounts: it
    // may explain any.
    bool IsVagueCoo(std::int64_t coo) const { return m_vagueCoos.count(coo) != 0; }
    bool IsVagueCrz(std::int64_t crz) const { return m_vagueCrzs.count(crz) != 0; }
    // The lost items and payments of a receipt.
    const LostRows& Of(std::int64_t coo) const;
    // The receipts of either kind whose own row was lost, with the Z that they are filed under.
    const std::map<std::int64_t, std::int64_t>& Cupons() const { return m_cupons; }
    const std::map<std::int64_t, std::int64_t>& CuponsNf() const { return m_cuponsNf; }

    // The documents of lost rows, and the days that they fell in.
    const std::set<std::int64_t>& Coos() const { return m_coos; }
    void AddCrz(std::int64_t coo, std::int64_t crz);

  private:
    void Add(const RejectedRow& row, const std::string& statement);
    // Answers whether the statement tells its amounts.
    bool AddAmounts(const RejectedRow& row, const std::string& statement);

    const Losses& m_losses;
    std::vector<RejectedRow> m_rows;
    std::set<std::int64_t> m_coos, m_ccfs, m_gnfs, m_crzs, m_cuponsAdicionais;
    std::set<std::int64_t> m_vagueCoos, m_vagueCrzs;
    std::map<std::int64_t, LostRows> m_lost;
    std::map<std::int64_t, std::int64_t> m_cupons, m_cuponsNf;
};

} // namespace bancada::conferencia
