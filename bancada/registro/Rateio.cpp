#include "bancada/registro/Rateio.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace bancada
{

namespace
{

BigInt Cents(const Financial& valor)
{
    return valor.nr.DividedBy(BigInt(Financial::SCALE / 100), Rounding::TOWARD_ZERO);
}

} // namespace

std::vector<Financial> ApportionAjuste(const Financial& ajuste,
                                       const std::vector<Financial>& liquidos)
{
    const BigInt total = Cents(ajuste);
    BigInt sum;
    for (const Financial& liquido : liquidos) {
        sum += Cents(liquido);
    }

    std::vector<Financial> shares;
    std::vector<BigInt> remainders;
    shares.reserve(liquidos.size());
    remainders.reserve(liquidos.size());
    BigInt rest = total;
    for (const Financial& liquido : liquidos) {
        const BigInt product = total * Cents(liquido);
        const BigInt share = product.DividedBy(sum, Rounding::TOWARD_ZERO);
        shares.push_back(Financial::FromCents(share.ToInt64()));
        remainders.push_back(product - share * sum);
        rest -= share;
    }

    // The remainders add up to rest x sum and each is less than sum, so there are more than
    // `rest` shares with a remainder: no share that was exact is touched.
    std::vector<std::size_t> order(liquidos.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto count = static_cast<std::ptrdiff_t>(rest.ToInt64());
    std::partial_sort(order.begin(), order.begin() + count, order.end(),
                      [&](std::size_t a, std::size_t b) {
                          const int compared = BigInt::Compare(remainders[a], remainders[b]);
                          return compared != 0 ? compared > 0 : a < b;
                      });
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        shares[order[static_cast<std::size_t>(i)]] += Financial::FromCents(1);
    }
    return shares;
}

} // namespace bancada
