#include "bancada/memoria/NomesDaMemoria.h"

#include "bancada/registro/Totalizadores.h"

namespace bancada
{
namespace
{

using Nomes = std::array<std::vector<std::string>, BASES_DE_IMPOSTO>;

Nomes FazNomes()
{
    Nomes nomes;
    for (std::vector<std::string>& base : nomes) {
        base.resize(MAX_TOTALIZADORES);
    }
    for (const char* codigo : {"T", "F", "I", "N", "S", "FS", "IS", "NS"}) {
        for (int numero = 1; numero <= MAX_ALIQUOTAS; ++numero) {
            const TotalizadorPlace lugar = FindTotalizador(codigo, numero);
            if (lugar.Exists()) {
                nomes[static_cast<std::size_t>(lugar.baseImposto)]
                     [static_cast<std::size_t>(lugar.posicao)] = codigo + std::to_string(numero);
            }
        }
    }
    return nomes;
}

} // namespace

const std::vector<std::string>& NomesDosTotalizadores(std::size_t baseImposto)
{
    static const Nomes NOMES = FazNomes();
    return NOMES[baseImposto];
}

std::vector<std::string> NumerosAPartirDeUm(int quantidade)
{
    std::vector<std::string> numeros;
    for (int numero = 1; numero <= quantidade; ++numero) {
        numeros.push_back(std::to_string(numero));
    }
    return numeros;
}

} // namespace bancada
