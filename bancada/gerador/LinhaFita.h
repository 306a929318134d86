// One line of the tape.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace bancada
{

// Writes a command while it lives, and ends its line when it goes. Fields stand in the order in
// which they are given. Texts are plain ASCII without quotes, backslashes and control characters.
class LinhaFita
{
  public:
    LinhaFita(std::ostream& saida, const char* comando);
    ~LinhaFita();
    LinhaFita(const LinhaFita&) = delete;
    LinhaFita& operator=(const LinhaFita&) = delete;

    LinhaFita& Texto(const char* campo, const std::string& valor);
    LinhaFita& Numero(const char* campo, std::int64_t valor);
    LinhaFita& Sim(const char* campo);
    // Cents, as "12.50".
    LinhaFita& Dinheiro(const char* campo, std::int64_t centavos);
    // A decimal of so many decimals (0 to 3), as "1.500".
    LinhaFita& Decimal(const char* campo, std::int64_t unidades, int casas);
    // When the command starts, in seconds since 1970.
    LinhaFita& Em(std::int64_t segundos);

  private:
    std::ostream& m_saida;
};

} // namespace bancada
