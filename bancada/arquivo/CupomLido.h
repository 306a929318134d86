// A receipt as its records tell it, and what they may mean.
#pragma once

#include "bancada/arquivo/ArquivoLido.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// Amounts in cents.
struct ItemLido {
    Record record;
    std::int64_t bruto = 0;
    std::int64_t desconto = 0; // its own
    std::int64_t acrescimo = 0;
    std::int64_t liquido = 0; // as the file tells it
    bool cancelado = false;   // by itself
};

struct CupomLido {
    Record record; // E14 or E19
    std::vector<ItemLido> itens;
    std::vector<Record> pagamentos;
    std::int64_t subtotal = 0, desconto = 0, acrescimo = 0, acrescimoCancelado = 0, total = 0;
    bool cancelado = false;

    // What an interpretation adds.
    bool rateado = false;   // the adjustment was shared; the items' own are without their shares
    bool adicional = false; // its closing left the totals of its opening, which are none
    bool somado = true;     // the items come to the subtotal
    bool semCotas = true;   // no share is left in the items' own adjustments
    bool duvidoso = false;  // it may be another that comes to other totals of its day
    bool impostoDuvidoso = false; // so may the tax of a totalizer
    // Of totalizers with the letter T whether they are of ISSQN, against what the rest of the file
    // says.
    std::map<std::string, bool> detalhados{};

    // Only a fiscal receipt shares its adjustment among its items, and is an additional one.
    bool IsFiscal() const { return record.Type() == "E14"; }
    bool IsAdjusted() const { return desconto != 0 || acrescimo != 0; }
    bool HasTotals() const { return total != 0 || subtotal != 0; }
    bool WasClosed() const { return HasTotals() || adicional; }
    // What is due: the items as registered and adjusted, which the register reckons itself.
    std::int64_t Due() const;
};

// A receipt of the file. Throws as ArquivoLido::Read. REQUIRES: the file has its E14 or E19.
CupomLido ReadCupom(ArquivoLido& arquivo, std::int64_t coo);
CupomLido ReadCupomNf(ArquivoLido& arquivo, std::int64_t coo);

// What the records of a receipt may mean, the likelier first, at least one: whether its items
// stand with their shares of its adjustment, which of them were cancelled before it was, whether
// it was additional. `mayBeCancelledLater`: a number without a record follows, which a cancellation
// of the closed receipt takes; one in issue takes none.
std::vector<CupomLido> Interpretacoes(const CupomLido& cupom, bool mayBeCancelledLater);

} // namespace bancada::arquivo
