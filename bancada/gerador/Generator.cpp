#include "bancada/gerador/Generator.h"

#include "bancada/gerador/Jornada.h"
#include "bancada/gerador/Programacao.h"
#include "bancada/gerador/Shop.h"

namespace bancada
{

void GenerateTape(const GeneratorOptions& options, std::ostream& out)
{
    Shop shop{TapeWriter(out, SwitchedOnAt()), Draw(options.seed)};
    WriteProgramacao(shop);
    for (int number = 0; number < options.jornadas && shop.tape.Good(); ++number) {
        WriteJornada(shop, number, options.cuponsPorJornada);
    }
}

} // namespace bancada
