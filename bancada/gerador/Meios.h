// The payment means of the shop.
#pragma once

#include <cstdint>

namespace bancada
{

enum Meio : std::int32_t {
    DINHEIRO = 1,
    CHEQUE = 2,
    CREDITO = 3,
    DEBITO = 4,
    VALE = 5,
};

// The others are programmed with a voucher.
constexpr bool GivesTroco(int meio)
{
    return meio == DINHEIRO || meio == CHEQUE;
}

} // namespace bancada
