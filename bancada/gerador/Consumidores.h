// The consumers who say who they are.
#pragma once

#include "bancada/gerador/Sorteio.h"

#include <string>

namespace bancada
{

// Bare digits, the check digits right. All of them are invented.
std::string SorteiaCpf(Sorteio& sorteio);
std::string SorteiaCnpj(Sorteio& sorteio);

// A first and a last name, within 30 characters.
std::string SorteiaNome(Sorteio& sorteio);
std::string SorteiaEndereco(Sorteio& sorteio);

// As it is printed: 123.456.789-09.
std::string CpfPontuado(const std::string& cpf);

} // namespace bancada
