// The check digits of the taxpayers' numbers.
#pragma once

#include <cstddef>
#include <string>

namespace bancada
{

constexpr std::size_t TAMANHO_CPF = 11;
constexpr std::size_t TAMANHO_CNPJ = 14;

// Whether `numero` is the bare digits of a CPF (11) or of a CNPJ (14), the last two of which check
// the others. A number of one digit repeated checks by chance and is nobody's: it is wrong.
bool CPFCorreto(const std::string& numero);
bool CNPJCorreto(const std::string& numero);

} // namespace bancada
