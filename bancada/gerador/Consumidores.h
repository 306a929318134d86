// The consumers who say who they are.
#pragma once

#include "bancada/gerador/Draw.h"

#include <string>

namespace bancada
{

// Bare digits, the check digits right. All of them are invented.
std::string DrawCpf(Draw& sorteio);
std::string DrawCnpj(Draw& sorteio);

// A first and a last name, within 30 characters.
std::string DrawNome(Draw& sorteio);
std::string DrawEndereco(Draw& sorteio);

// As it is printed: 123.456.789-09.
std::string PunctuatedCpf(const std::string& cpf);

} // namespace bancada
