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
    LineWriter(std::ostream& out, const char* command);
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    LineWriter& Text(const char* field, const std::string& value);
    LineWriter& Number(const char* field, std::int64_t value);
    LineWriter& True(const char* field);
    // Cents, as "12.50".
    LineWriter& Money(const char* field, std::int64_t cents);
    // A decimal of so many decimals (0 to 3), as "1.500".
    LineWriter& Decimal(const char* field, std::int64_t units, int decimals);
    // When the command starts, in seconds since 1970.
    LineWriter& Em(std::int64_t seconds);

  private:
    std::ostream& m_out;
};

} // namespace bancada
