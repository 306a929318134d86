#include "bancada/arquivo/Rateio.h"

#include "libs/BigInt.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace bancada::arquivo
{
namespace
{

// a x b / c, cut or, with `rounded`, to the nearest.
std::int64_t Times(std::int64_t a, std::int64_t b, std::int64_t c, bool rounded = false)
{
    const BigInt product = BigInt::FromInt64(a) * BigInt::FromInt64(b);
    const BigInt divisor = BigInt::FromInt64(c);
    std::int64_t cut = product.DividedBy(divisor, Rounding::TOWARD_ZERO).ToInt64();
    if (rounded) {
        const BigInt rest = product - BigInt::FromInt64(cut) * divisor;
        if (rest + rest >= divisor) {
            ++cut;
        }
    }
    return cut;
}

// How many guesses are tried for a receipt.
constexpr int MAX_TRIES = 20000;

class Search
{
  public:
    Search(std::int64_t valor, bool desconto, std::int64_t subtotal,
           const std::vector<ItemRateado>& itens)
        : m_valor(valor), m_desconto(desconto), m_subtotal(subtotal), m_itens(itens)
    {
    }

    std::optional<std::vector<std::int64_t>> Run()
    {
        const std::int64_t total = m_desconto ? m_subtotal - m_valor : m_subtotal + m_valor;
        if (total <= 0 || m_subtotal <= 0) {
            return std::nullopt;
        }
        // A share is less than a cent from its proportion: so far from the guess may the value be.
        m_radius = m_subtotal / total + 1;
        std::vector<std::int64_t> guesses;
        for (const ItemRateado& item : m_itens) {
            guesses.push_back(Times(item.liquido, m_subtotal, total, true));
        }
        // First with as few adjustments of the items' own as can be, then with any.
        for (const bool every : {false, true}) {
            m_values.clear();
            m_free.clear();
            m_tries = 0;
            for (std::size_t i = 0; i < m_itens.size(); ++i) {
                const std::int64_t distance = std::abs(guesses[i] - m_itens[i].limite);
                const bool own = every || distance > m_radius;
                m_values.push_back(own ? guesses[i] : m_itens[i].limite);
                if (own) {
                    m_free.push_back(i);
                }
            }
            if (TryFrom(0)) {
                return m_values;
            }
        }
        return std::nullopt;
    }

  private:
    // Near the guess for each of the free items from `at` on; the last is what is left.
    bool TryFrom(std::size_t at)
    {
        if (at + 1 >= m_free.size()) {
            if (!m_free.empty()) {
                std::int64_t& last = m_values[m_free.back()];
                last +=
                    m_subtotal - std::accumulate(m_values.begin(), m_values.end(), std::int64_t{0});
            }
            return Fits();
        }
        std::int64_t& value = m_values[m_free[at]];
        const std::int64_t first = value;
        for (std::int64_t step = 0; step <= m_radius && m_tries < MAX_TRIES; ++step) {
            for (const std::int64_t signedStep : {step, -step}) {
                value = first + signedStep;
                if (TryFrom(at + 1)) {
                    return true;
                }
            }
        }
        value = first;
        return false;
    }

    bool Fits()
    {
        ++m_tries;
        if (std::accumulate(m_values.begin(), m_values.end(), std::int64_t{0}) != m_subtotal) {
            return false;
        }
        for (std::size_t i = 0; i < m_itens.size(); ++i) {
            const bool own =
                m_desconto ? m_values[i] <= m_itens[i].limite : m_values[i] >= m_itens[i].limite;
            if (!own || m_values[i] < 0) {
                return false;
            }
        }
        const std::vector<std::int64_t> shares = Apportion(m_valor, m_values);
        for (std::size_t i = 0; i < m_itens.size(); ++i) {
            const std::int64_t shared =
                m_desconto ? m_values[i] - shares[i] : m_values[i] + shares[i];
            if (shared != m_itens[i].liquido) {
                return false;
            }
        }
        return true;
    }

    std::int64_t m_valor;
    bool m_desconto;
    std::int64_t m_subtotal;
    const std::vector<ItemRateado>& m_itens;
    std::vector<std::int64_t> m_values;
    std::vector<std::size_t> m_free;
    std::int64_t m_radius = 0;
    int m_tries = 0;
};

} // namespace

std::vector<std::int64_t> Apportion(std::int64_t valor, const std::vector<std::int64_t>& liquidos)
{
    const std::int64_t sum = std::accumulate(liquidos.begin(), liquidos.end(), std::int64_t{0});
    std::vector<std::int64_t> shares(liquidos.size(), 0);
    if (sum <= 0) {
        return shares;
    }
    std::vector<std::pair<BigInt, std::size_t>> rests;
    std::int64_t left = valor;
    for (std::size_t i = 0; i < liquidos.size(); ++i) {
        shares[i] = Times(valor, liquidos[i], sum);
        left -= shares[i];
        rests.emplace_back(BigInt::FromInt64(valor) * BigInt::FromInt64(liquidos[i]) -
                               BigInt::FromInt64(shares[i]) * BigInt::FromInt64(sum),
                           i);
    }
    std::stable_sort(rests.begin(), rests.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (std::size_t i = 0; left > 0 && i < rests.size(); ++i, --left) {
        ++shares[rests[i].second];
    }
    return shares;
}

std::optional<std::vector<std::int64_t>> UndoRateio(std::int64_t valor, bool desconto,
                                                    std::int64_t subtotal,
                                                    const std::vector<ItemRateado>& itens)
{
    return Search(valor, desconto, subtotal, itens).Run();
}

} // namespace bancada::arquivo
