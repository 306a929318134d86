// The signature of a closed receipt.
#pragma once

#include "Interpreter.h"
#include "bancada/registro/Registro.h"

namespace bancada
{

// Puts the signature of the receipt closed last into the command that closed it.
void SignComando(Command& comando, const Registro& registro);

} // namespace bancada
