// The tape of one day of the years.
#pragma once

#include <cstdint>
#include <string>

namespace anos
{

// Day `day` (from 0, 2026-01-01) with so many documents, its Z reduction the last; the first day
// programs the register too. The same arguments give the same text everywhere.
std::string DayTape(int day, int documents, std::uint32_t seed);

} // namespace anos
