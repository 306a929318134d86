// What the receipts tell of a fiscal day.
#pragma once

#include "bancada/leitura/Amount.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bancada::conferencia
{

// An amount of which only the bounds are known.
class AmountRange
{
  public:
    void Add(const leitura::Amount& amount) { Add(amount, amount); }
    void Add(const leitura::Amount& least, const leitura::Amount& most);

    // False also where a bound or the amount is not known.
    bool Contains(const leitura::Amount& amount) const;
    // "1.00", or "1.00 to 2.00".
    std::string Text() const;

  private:
    leitura::Amount m_least, m_most;
};

// Whether both are known and `a` is no more than `b`.
bool IsAtMost(const leitura::Amount& a, const leitura::Amount& b);

// The receipts filed under the Z that closes the day.
struct Jornada {
    // Totals of the valid fiscal receipts; of all valid receipts that were paid; of the valid
    // non-fiscal receipts, floats and withdrawals included.
    AmountRange vendas, recebido;
    leitura::Amount naoFiscais;
    // The floats put into the till, whose payments leave no row.
    std::vector<leitura::Amount> fundosDeTroco;
    // What each payment means took in.
    std::map<std::int64_t, leitura::Amount> meios;
    // Why the means cannot be told from the rows; empty when they can.
    std::string meiosIncertos;
    // The receipts issued first and last.
    std::string primeiraHora, ultimaHora;
    std::int64_t primeiroCoo = 0;
    std::int64_t ultimoCoo = 0;

    void AddCupom(std::int64_t coo, const std::string& hora);
    void AddMeios(const std::map<std::int64_t, leitura::Amount>& porMeio);
};

} // namespace bancada::conferencia
