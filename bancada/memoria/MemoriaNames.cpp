#include "bancada/memoria/MemoriaNames.h"

#include "bancada/registro/Totalizadores.h"

namespace bancada
{
namespace
{

using Names = std::array<std::vector<std::string>, BASES_DE_IMPOSTO>;

Names MakeNames()
{
    Names names;
    for (std::vector<std::string>& base : names) {
        base.resize(MAX_TOTALIZADORES);
    }
    for (const char* codigo : {"T", "F", "I", "N", "S", "FS", "IS", "NS"}) {
        for (int number = 1; number <= MAX_ALIQUOTAS; ++number) {
            const TotalizadorPlace place = FindTotalizador(codigo, number);
            if (place.Exists()) {
                names[static_cast<std::size_t>(place.baseImposto)]
                     [static_cast<std::size_t>(place.posicao)] = codigo + std::to_string(number);
            }
        }
    }
    return names;
}

} // namespace

const std::vector<std::string>& TotalizadorNames(std::size_t baseImposto)
{
    static const Names names = MakeNames();
    return names[baseImposto];
}

} // namespace bancada
