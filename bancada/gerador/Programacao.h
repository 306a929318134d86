// The programming of the register, at the beginning of the tape.
#pragma once

#include "bancada/gerador/Shop.h"

namespace bancada
{

// Settings, identity, owner, rates, totalizers and payment means. Its first command says when it
// starts.
void WriteProgramacao(Shop& shop);

} // namespace bancada
