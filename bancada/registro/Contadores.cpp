#include "bancada/registro/Contadores.h"

namespace bancada
{

int AdvanceContador(Memoria& memoria, FISCALDATA_COUNTER_INDEX contador)
{
    int& valor = memoria.contadores[static_cast<std::size_t>(contador)];
    valor = valor >= MAX_CONTADOR ? 1 : valor + 1;
    return valor;
}

} // namespace bancada
