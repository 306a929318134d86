#include "bancada/arquivo/Estornos.h"

#include <algorithm>
#include <numeric>

namespace bancada::arquivo
{
namespace
{

class Search
{
  public:
    Search(const std::vector<PagamentoLido>& pagamentos, std::int64_t devido, bool fechado,
           bool cancelado)
        : m_pagamentos(pagamentos), m_devido(devido), m_fechado(fechado), m_cancelado(cancelado)
    {
    }

    std::optional<PagamentosLidos> Run()
    {
        for (std::size_t count = 0; count <= MAX_ESTORNOS && count <= m_pagamentos.size();
             ++count) {
            m_first = m_pagamentos.size() - count;
            m_origens.clear();
            if (Choose()) {
                return m_found;
            }
        }
        return std::nullopt;
    }

  private:
    // More than anybody makes of a receipt: so many are looked for.
    static constexpr std::size_t MAX_ESTORNOS = 5;

    // The sources of the reversals that made the payments from m_first on.
    bool Choose()
    {
        const std::size_t at = m_first + m_origens.size();
        if (at == m_pagamentos.size()) {
            return Holds();
        }
        std::vector<std::int64_t> tried;
        for (std::size_t i = 0; i < at; ++i) {
            const std::int64_t origem = m_pagamentos[i].meio;
            if (origem == m_pagamentos[at].meio ||
                std::find(tried.begin(), tried.end(), origem) != tried.end()) {
                continue;
            }
            tried.push_back(origem);
            m_origens.push_back(origem);
            if (Choose()) {
                return true;
            }
            m_origens.pop_back();
        }
        return false;
    }

    // What each payment held when it was made: what it holds and what all its reversals but the
    // last took.
    bool Undo(std::vector<std::int64_t>& made) const
    {
        made.clear();
        for (std::size_t i = 0; i < m_pagamentos.size(); ++i) {
            made.push_back(m_pagamentos[i].valor);
        }
        // From the last reversal back: its amount is that of its payment, which is known then.
        std::vector<std::int64_t> told(m_pagamentos.size(), 0);
        for (std::size_t k = m_origens.size(); k-- > 0;) {
            const std::int64_t valor = made[m_first + k];
            for (std::size_t i = 0; i < m_first + k; ++i) {
                if (m_pagamentos[i].meio != m_origens[k]) {
                    continue;
                }
                if (told[i] == 0) {
                    told[i] = valor;
                } else {
                    made[i] += valor;
                }
            }
        }
        for (std::size_t i = 0; i < told.size(); ++i) {
            if (!m_cancelado && told[i] != m_pagamentos[i].valorEstornado) {
                return false;
            }
        }
        return true;
    }

    bool IsPaid(const std::vector<std::int64_t>& made) const
    {
        if (!m_fechado || m_first == 0) {
            return !m_fechado || m_devido <= 0;
        }
        const auto last = made.begin() + static_cast<std::ptrdiff_t>(m_first) - 1;
        const std::int64_t before = std::accumulate(made.begin(), last, std::int64_t{0});
        return before < m_devido && before + *last >= m_devido;
    }

    bool AreAllowed(const std::vector<std::int64_t>& made) const
    {
        std::vector<std::int64_t> left = made;
        const auto first = left.begin() + static_cast<std::ptrdiff_t>(m_first);
        const std::int64_t troco = std::accumulate(left.begin(), first, std::int64_t{0}) - m_devido;
        for (std::size_t k = 0; k < m_origens.size(); ++k) {
            std::int64_t rest = made[m_first + k];
            std::int64_t comTroco = 0;
            bool daTroco = false;
            for (std::size_t i = 0; i < m_first + k; ++i) {
                comTroco += m_pagamentos[i].daTroco ? left[i] : 0;
                if (m_pagamentos[i].meio == m_origens[k]) {
                    daTroco = m_pagamentos[i].daTroco;
                    const std::int64_t share = std::min(rest, left[i]);
                    left[i] -= share;
                    rest -= share;
                }
            }
            const bool coversTroco = !daTroco || m_pagamentos[m_first + k].daTroco ||
                                     comTroco - made[m_first + k] >= troco;
            if (rest != 0 || !coversTroco) {
                return false;
            }
        }
        return true;
    }

    bool Holds()
    {
        std::vector<std::int64_t> made;
        if (!Undo(made) || !IsPaid(made) || !AreAllowed(made)) {
            return false;
        }
        m_found.valores.assign(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(m_first));
        m_found.estornos.clear();
        for (std::size_t k = 0; k < m_origens.size(); ++k) {
            m_found.estornos.push_back(
                {m_origens[k], m_pagamentos[m_first + k].meio, made[m_first + k]});
        }
        return true;
    }

    const std::vector<PagamentoLido>& m_pagamentos;
    std::int64_t m_devido;
    bool m_fechado;
    bool m_cancelado;
    std::size_t m_first = 0; // of the payments that reversals made
    std::vector<std::int64_t> m_origens;
    PagamentosLidos m_found;
};

} // namespace

std::optional<PagamentosLidos> FindEstornos(const std::vector<PagamentoLido>& pagamentos,
                                            std::int64_t devido, bool fechado, bool cancelado)
{
    return Search(pagamentos, devido, fechado, cancelado).Run();
}

} // namespace bancada::arquivo
