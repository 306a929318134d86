// The consumers who say who they are.
#pragma once

#include "bancada/gerador/Draw.h"

#include <string>

namespace bancada
{

// Bare digits, the check digits right. All of them are invented.
std::string DrawCpf(Draw& draw);
std::string DrawCnpj(Draw& draw);

// A first and a last name, within 30 characters.
std::string DrawNome(Draw& draw);
std::string DrawEndereco(Draw& draw);

// As it is printed: 123.456.789-09.
std::string PunctuatedCpf(const std::string& cpf);

} // namespace bancada
