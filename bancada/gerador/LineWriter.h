// One line of the tape.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace bancada
{

// Writes a command while it lives, and ends its line when it goes. Fields stand in the order in
// which they are given. Texts are plain ASCII without quotes, backslashes and control characters.
class LineWriter
{
  public:
    LineWriter(std::ostream& saida, const char* comando);
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    LineWriter& Texto(const char* campo, const std::string& valor);
    LineWriter& Numero(const char* campo, std::int64_t valor);
    LineWriter& Sim(const char* campo);
    // Cents, as "12.50".
    LineWriter& Dinheiro(const char* campo, std::int64_t centavos);
    // A decimal of so many decimals (0 to 3), as "1.500".
    LineWriter& Decimal(const char* campo, std::int64_t unidades, int casas);
    // When the command starts, in seconds since 1970.
    LineWriter& Em(std::int64_t segundos);

  private:
    std::ostream& m_saida;
};

} // namespace bancada
