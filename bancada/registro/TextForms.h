// Text forms of the register's values, for the facade and for what it tells the operator.
#pragma once

#include "RtcClasses.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <string>

namespace bancada
{

// Copies `text` into `out`, cut to `size` bytes with the terminator, and answers `out`. A `size`
// below 1 writes nothing.
char* CopyText(const std::string& text, char* out, int size);

// "1,500" for {1500, 3}, "3" for {3, 0}: as it was given, not grouped.
std::string DecimalToText(const Decimal& numero);

std::string ValorToText(const Financial& valor);    // "1234.50"
std::string DateToText(RtcAbsoluteTime instant);    // "2024-01-31"
std::string InstantToText(RtcAbsoluteTime instant); // "2024-01-31 08:00:00"

} // namespace bancada
