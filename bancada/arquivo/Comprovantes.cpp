#include "bancada/arquivo/Comprovantes.h"

#include <algorithm>

namespace bancada::arquivo
{

void Comprovantes::Pay(std::int64_t meio, std::int64_t valor)
{
    m_pagamentos.push_back({meio, valor, 0});
}

bool Comprovantes::MayMove(const EstornoLido& estorno) const
{
    std::int64_t left = estorno.valor;
    for (const Pagamento& one : m_pagamentos) {
        left -= one.meio == estorno.origem && one.ordem == 0 ? one.valor : 0;
    }
    return left <= 0;
}

void Comprovantes::Move(const EstornoLido& estorno)
{
    std::int64_t left = estorno.valor;
    for (Pagamento& one : m_pagamentos) {
        if (one.meio == estorno.origem && one.ordem == 0) {
            const std::int64_t share = std::min(left, one.valor);
            one.valor -= share;
            left -= share;
        }
    }
    Pay(estorno.destino, estorno.valor);
}

const Comprovantes::Pagamento* Comprovantes::Last() const
{
    const Pagamento* last = nullptr;
    for (const Pagamento& one : m_pagamentos) {
        if (one.ordem > (last == nullptr ? 0 : last->ordem)) {
            last = &one;
        }
    }
    return last;
}

bool Comprovantes::AllowsAll(const std::vector<EstornoLido>& pendentes) const
{
    Comprovantes after = *this;
    return std::all_of(pendentes.begin(), pendentes.end(), [&after](const EstornoLido& estorno) {
        const bool may = after.MayMove(estorno);
        after.Move(estorno);
        return may;
    });
}

std::int64_t Comprovantes::Open(const std::vector<bool>& vinculado,
                                const std::vector<EstornoLido>& pendentes)
{
    const int ordem = AnyOpen() ? Last()->ordem + 1 : 1;
    std::vector<std::int64_t> tried;
    Pagamento* first = nullptr;
    for (Pagamento& one : m_pagamentos) {
        if (!vinculado[static_cast<std::size_t>(one.meio) - 1] || one.ordem != 0 ||
            one.valor == 0 || std::find(tried.begin(), tried.end(), one.meio) != tried.end()) {
            continue;
        }
        tried.push_back(one.meio); // the register takes the first of the means
        first = first == nullptr ? &one : first;
        one.ordem = ordem;
        if (AllowsAll(pendentes)) {
            return one.meio;
        }
        one.ordem = 0;
    }
    if (first == nullptr) {
        return 0;
    }
    first->ordem = ordem;
    return first->meio;
}

void Comprovantes::Reverse()
{
    const Pagamento* last = Last();
    for (Pagamento& one : m_pagamentos) {
        if (&one == last) {
            one.ordem = 0;
        }
    }
}

} // namespace bancada::arquivo
