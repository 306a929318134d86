// The apportionment of a subtotal's adjustment, and its undoing.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace bancada::arquivo
{

// Shares `valor` among items of these net values, all in cents: each its proportion, cut; the cents
// left over one each to those that lost most by the cut, of equals to the first. Zeros where the
// items come to nothing.
std::vector<std::int64_t> Apportion(std::int64_t valor, const std::vector<std::int64_t>& liquidos);

// What a file tells of an item after its receipt's adjustment was shared.
struct ItemRateado {
    std::int64_t liquido = 0; // with its share
    std::int64_t limite = 0;  // without a share and without an adjustment of its own of that kind
};

// The net values before the sharing, so that they come to `subtotal` and each with its share is
// what the item tells. An item without an adjustment of its own keeps `limite`. Nothing where none
// are found.
std::optional<std::vector<std::int64_t>> UndoRateio(std::int64_t valor, bool desconto,
                                                    std::int64_t subtotal,
                                                    const std::vector<ItemRateado>& itens);

} // namespace bancada::arquivo
