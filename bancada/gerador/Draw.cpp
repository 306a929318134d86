#include "bancada/gerador/Draw.h"

#include <limits>

namespace bancada
{

std::uint64_t Draw::Ate(std::uint64_t quantos)
{
    // The draws above the last whole multiple would favour the first results.
    const std::uint64_t maximo = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t limite = maximo - maximo % quantos;
    std::uint64_t sorteado = m_gerador();
    while (sorteado >= limite) {
        sorteado = m_gerador();
    }
    return sorteado % quantos;
}

std::int64_t Draw::Entre(std::int64_t deste, std::int64_t ateEste)
{
    return deste + static_cast<std::int64_t>(Ate(static_cast<std::uint64_t>(ateEste - deste) + 1));
}

std::size_t Draw::Pesado(std::initializer_list<int> pesos)
{
    std::uint64_t soma = 0;
    for (const int peso : pesos) {
        soma += static_cast<std::uint64_t>(peso);
    }
    std::uint64_t sorteado = Ate(soma);
    std::size_t posicao = 0;
    for (const int peso : pesos) {
        const auto este = static_cast<std::uint64_t>(peso);
        if (sorteado < este) {
            break;
        }
        sorteado -= este;
        ++posicao;
    }
    return posicao;
}

} // namespace bancada
