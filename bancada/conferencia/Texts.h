// How findings write the values of the rows.
#pragma once

#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"

#include <cstdint>
#include <string>

namespace bancada::conferencia
{

// "1234.56"; what stands in the row where that is no amount; "?" for a sum that is not known.
std::string Money(const leitura::Amount& amount);

// The number, or what stands in its place.
std::string Number(const leitura::Integer& integer);

// "COO 120", "CRZ 9".
std::string Coo(const leitura::Integer& coo);
std::string Crz(const leitura::Integer& crz);

// "12 to 15", or "12" where both are the same.
std::string RangeText(std::int64_t first, std::int64_t last);

// The text with a '?' for every control byte, so that it stays on its line.
std::string OneLine(std::string text);

} // namespace bancada::conferencia
