#include "bancada/registro/Memoria.h"

namespace bancada
{

Memoria::Memoria()
{
    naoFiscal.nome[NUMERO_NF_FUNDO_TROCO - 1] = "FUNDO DE TROCO";
    naoFiscal.nome[NUMERO_NF_SANGRIA - 1] = "SANGRIA";
}

} // namespace bancada
