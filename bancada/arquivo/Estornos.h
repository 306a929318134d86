// Which payments of a receipt a reversal made.
#pragma once

#include "bancada/arquivo/Comprovantes.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace bancada::arquivo
{

// A payment as the file tells it, cents. A reversal moves an amount from one means to another: it
// adds a payment in the other, and each payment in the one holds what the reversal before it left
// and tells the amount of the last.
struct PagamentoLido {
    std::int64_t meio = 0; // number from 1; 0: unknown
    std::int64_t valor = 0;
    std::int64_t valorEstornado = 0; // 0: not reversed
    bool daTroco = false;            // the means gives change
};

struct PagamentosLidos {
    std::vector<std::int64_t> valores; // of the payments that were made, in their order, cents
    std::vector<EstornoLido> estornos; // then these
};

// What made the payments of a receipt on which `devido` was due: as few reversals as can be, none
// of which the register refuses. `cancelado`: its cancellation marked them all, so that no payment
// tells of a reversal. `fechado`: it was paid in full, and nothing was paid behind that. Nothing
// where it cannot be told.
std::optional<PagamentosLidos> FindEstornos(const std::vector<PagamentoLido>& pagamentos,
                                            std::int64_t devido, bool fechado, bool cancelado);

} // namespace bancada::arquivo
