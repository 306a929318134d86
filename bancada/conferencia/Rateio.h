// A subtotal's adjustment shared among the items, as the bench's register shares it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace bancada::conferencia
{

// What each item gets of `ajuste`, all in cents: in the proportion of the net values, cut to cents,
// and the cents left over one each to those that lost most by the cut, of equals the first. Nothing
// where a product leaves 64 bits, or where the net values come to nothing.
std::optional<std::vector<std::int64_t>> Ratear(std::int64_t ajuste,
                                                const std::vector<std::int64_t>& liquidos);

} // namespace bancada::conferencia
