// The floats among the payment means of a Z.
#pragma once

#include "bancada/leitura/Amount.h"

#include <cstdint>
#include <map>
#include <vector>

namespace bancada::conferencia
{

struct MeioDaReducao {
    leitura::Amount acumulado;  // what the Z says that the means took in
    leitura::Amount pagamentos; // what its payments say
    leitura::Amount fundos;     // the floats that the Z counts with it
};

// By the number of the means.
using MeiosDaReducao = std::map<std::int64_t, MeioDaReducao>;

// A float is paid, but its payment leaves no row, so that the rows do not say in which means; and a
// register of before did not count it at all. A Z counts either every float of its day or none:
// each with one means, so that what a means took in beyond its payments is a sum of floats. Fills
// `fundos` in and answers whether the Z counts them. Where no way explains every means, the floats
// are with the first one that all of them explain, or else not counted.
[[nodiscard]] bool CountFundos(MeiosDaReducao& meios, const std::vector<leitura::Amount>& fundos);

} // namespace bancada::conferencia
