// The check digits of the taxpayers' numbers.
#pragma once

#include <cstddef>
#include <string>

namespace bancada
{

constexpr std::size_t CPF_DIGITS = 11;
constexpr std::size_t CNPJ_DIGITS = 14;

// Whether `numero` is the bare digits of a CPF (11) or of a CNPJ (14), the last two of which check
// the others. A number of one digit repeated checks by chance and is nobody's: it is wrong.
[[nodiscard]] bool IsCPF(const std::string& numero);
[[nodiscard]] bool IsCNPJ(const std::string& numero);

} // namespace bancada
