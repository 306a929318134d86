// The payments of the receipt issued last, and which of them have a voucher.
#pragma once

#include <cstdint>
#include <vector>

namespace bancada::arquivo
{

// A reversal that is still to come: an amount in cents from one means to another.
struct EstornoLido {
    std::int64_t origem = 0, destino = 0, valor = 0;
};

// As the register stands behind the last line of the tape. Means are numbers from 1. The register
// moves no payment that has a voucher, and cancels no receipt of which one has.
class Comprovantes
{
  public:
    // Another receipt is begun.
    void Clear() { m_pagamentos.clear(); }
    void Pay(std::int64_t meio, std::int64_t valor);

    bool MayMove(const EstornoLido& estorno) const;
    void Move(const EstornoLido& estorno);
    // Whether each may be made, in their order.
    bool AllowsAll(const std::vector<EstornoLido>& pendentes) const;

    // Opens the voucher of a payment in a means of which `vinculado` (from 1 at place 0) says that
    // it may have one: the first that the register has none of, which leaves what `pendentes` are
    // to move, in their order; the first at all where each of them takes some of it. Its means; 0
    // where no payment is left, and nothing is opened.
    std::int64_t Open(const std::vector<bool>& vinculado,
                      const std::vector<EstornoLido>& pendentes);
    // The voucher opened last is reversed. REQUIRES: AnyOpen().
    void Reverse();
    bool AnyOpen() const { return Last() != nullptr; }

  private:
    struct Pagamento {
        std::int64_t meio = 0;
        std::int64_t valor = 0;
        int ordem = 0; // of its voucher, from 1; 0: none, or reversed
    };

    const Pagamento* Last() const;

    std::vector<Pagamento> m_pagamentos;
};

} // namespace bancada::arquivo
