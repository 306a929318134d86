// How long the numbers of the tape may be. Money and quantities stay far within Financial and
// within 64 bits, so that nothing that a tape says overflows on its way to the register, which has
// its own rules about what is too much.
#pragma once

#include <cstddef>

namespace bancada
{

inline constexpr int MONEY_DIGITS = 15; // before the point
inline constexpr int MONEY_DECIMALS = 2;
inline constexpr int QUANTITY_DIGITS = 12;
inline constexpr int QUANTITY_DECIMALS = 6; // the most that a field may ask for
inline constexpr int PERCENT_DIGITS = 5;
inline constexpr int PERCENT_DECIMALS = 2;

// Fields of the law's audit file that are longer than a command's array, in bytes.
inline constexpr std::size_t LAW_NOME_CONSUMIDOR = 40;
inline constexpr std::size_t LAW_MARCA = 20;

static_assert(MONEY_DIGITS + MONEY_DECIMALS <= 18 && QUANTITY_DIGITS + QUANTITY_DECIMALS <= 18,
              "18 digits fit 64 bits");
static_assert(PERCENT_DIGITS + PERCENT_DECIMALS <= 9, "9 digits fit 32 bits");

} // namespace bancada
