#include "bancada/conferencia/Rateio.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace bancada::conferencia
{

std::optional<std::vector<std::int64_t>> Ratear(std::int64_t ajuste,
                                                const std::vector<std::int64_t>& liquidos)
{
    std::int64_t soma = 0;
    for (const std::int64_t liquido : liquidos) {
        if (liquido < 0 || __builtin_add_overflow(soma, liquido, &soma)) {
            return std::nullopt;
        }
    }
    if (ajuste < 0 || soma <= 0) {
        return std::nullopt;
    }
    std::vector<std::int64_t> shares;
    std::vector<std::int64_t> remainders;
    std::int64_t rest = ajuste;
    for (const std::int64_t liquido : liquidos) {
        std::int64_t product = 0;
        if (__builtin_mul_overflow(ajuste, liquido, &product)) {
            return std::nullopt;
        }
        shares.push_back(product / soma);
        remainders.push_back(product % soma);
        rest -= shares.back();
    }
    std::vector<std::size_t> order(liquidos.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&remainders](std::size_t a, std::size_t b) {
        return remainders[a] > remainders[b];
    });
    for (std::size_t i = 0; i < static_cast<std::size_t>(rest); ++i) {
        ++shares[order[i]];
    }
    return shares;
}

} // namespace bancada::conferencia
