// Percentages as the register reckons them.
#pragma once

#include <cstdint>

namespace bancada::arquivo
{

// The percentage of `base` that comes to `valor`, both in cents, the result in hundredths of a
// percent, 1 to 99999; 0 where none does.
std::int64_t PercentualOf(std::int64_t base, std::int64_t valor);

} // namespace bancada::arquivo
