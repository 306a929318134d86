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
    void Add(const AmountRange& range) { Add(range.m_least, range.m_most); }

    // Widens it by what lies between the least of one range and the most of another.
    void AddBounds(const AmountRange& from, const AmountRange& to) { Add(from.m_least, to.m_most); }

    bool IsKnown() const { return m_least.IsKnown() && m_most.IsKnown(); }

    // False also where a bound or the amount is not known.
    bool Contains(const leitura::Amount& amount) const;
    // "1.00", or "1.00 to 2.00".
    std::string Text() const;

  private:
    leitura::Amount m_least, m_most;
};

// Whether both are known and `a` is no more than `b`.
bool IsAtMost(const leitura::Amount& a, const leitura::Amount& b);

// The number of the day that a row's counter names: receipts are filed under the next Z, whose
// number may have gone around.
std::int64_t JornadaNumber(const leitura::Integer& crz);

// What a discount or a surcharge by percentage can come to: cut to cents, or rounded up.
AmountRange Percentage(const leitura::Amount& base, const leitura::Amount& percent);

// An item's value with its share of a subtotal's adjustment, positive or negative, which is known
// to the cent: each share is cut, and the cents that are left go to some items.
AmountRange WithShare(const leitura::Amount& item, const leitura::Amount& adjustment,
                      const leitura::Amount& subtotal);

// A number of seconds of which only the bounds are known.
struct SecondsRange {
    std::int64_t least = 0;
    std::int64_t most = 0;

    void Add(std::int64_t atLeast, std::int64_t atMost)
    {
        least += atLeast;
        most += atMost;
    }
};

// Where a receipt stands.
struct CupomPlace {
    const char* table = "";
    std::int64_t rowid = 0;
};

// The receipts filed under the Z that closes the day.
struct Jornada {
    // Totals of the valid fiscal receipts; of all valid receipts that were paid; of the valid
    // non-fiscal receipts, floats and withdrawals included.
    AmountRange vendas, recebido;
    leitura::Amount naoFiscais;
    // The floats put into the till, whose payments leave no row.
    std::vector<leitura::Amount> fundosDeTroco;
    // Sales of the valid fiscal receipts by the tax code of their items, and what the valid
    // non-fiscal receipts booked on each totalizer; of a subtotal's adjustment that is not in the
    // items, each one's share is known to the cent.
    std::map<std::string, AmountRange> porAliquota;
    std::map<std::int64_t, AmountRange> porTotalizadorNf;
    // Everything that was registered, cancelled or not: items with their surcharges, discounts,
    // surcharges. Of a surcharge that was cancelled twice the rows know the last.
    leitura::Amount bruto, descontos, acrescimos;
    bool acrescimoCancelado = false;
    // How long fiscal receipts were being issued; known where the signatures are.
    SecondsRange emissao;
    // Why the items cannot be told from the rows; empty when they can.
    std::string itensIncertos;
    // Why the totals of the receipts cannot be told from the rows; empty when they can.
    std::string totaisIncertos;
    // What each payment means took in.
    std::map<std::int64_t, leitura::Amount> meios;
    // Why the means cannot be told from the rows; empty when they can.
    std::string meiosIncertos;
    // The receipts issued first and last.
    std::string primeiraHora, ultimaHora;
    std::int64_t primeiroCoo = 0;
    std::int64_t ultimoCoo = 0;
    CupomPlace primeiro, ultimo;

    // Adds what another one tells, the certainty of items and means aside.
    void Add(const Jornada& other);
    void AddCupom(std::int64_t coo, const std::string& hora, const CupomPlace& place);
    void AddMeios(const std::map<std::int64_t, leitura::Amount>& porMeio);
};

} // namespace bancada::conferencia
