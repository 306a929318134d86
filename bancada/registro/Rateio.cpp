#include "bancada/registro/Rateio.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace bancada
{

namespace
{

BigInt Centavos(const Financial& valor)
{
    return valor.nr.DividedBy(BigInt(Financial::SCALE / 100), Rounding::TOWARD_ZERO);
}

} // namespace

std::vector<Financial> RateiaAjuste(const Financial& ajuste, const std::vector<Financial>& liquidos)
{
    const BigInt total = Centavos(ajuste);
    BigInt soma;
    for (const Financial& liquido : liquidos) {
        soma += Centavos(liquido);
    }

    std::vector<Financial> partes;
    std::vector<BigInt> restos;
    partes.reserve(liquidos.size());
    restos.reserve(liquidos.size());
    BigInt sobra = total;
    for (const Financial& liquido : liquidos) {
        const BigInt produto = total * Centavos(liquido);
        const BigInt parte = produto.DividedBy(soma, Rounding::TOWARD_ZERO);
        partes.push_back(Financial::FromCents(parte.ToInt64()));
        restos.push_back(produto - parte * soma);
        sobra -= parte;
    }

    // The remainders add up to sobra x soma and each is less than soma, so there are more than
    // `sobra` shares with a remainder: no share that was exact is touched.
    std::vector<std::size_t> ordem(liquidos.size());
    std::iota(ordem.begin(), ordem.end(), std::size_t{0});
    const auto quantos = static_cast<std::ptrdiff_t>(sobra.ToInt64());
    std::partial_sort(ordem.begin(), ordem.begin() + quantos, ordem.end(),
                      [&](std::size_t a, std::size_t b) {
                          const int compara = BigInt::Compare(restos[a], restos[b]);
                          return compara != 0 ? compara > 0 : a < b;
                      });
    for (std::ptrdiff_t i = 0; i < quantos; ++i) {
        partes[ordem[static_cast<std::size_t>(i)]] += Financial::FromCents(1);
    }
    return partes;
}

} // namespace bancada
