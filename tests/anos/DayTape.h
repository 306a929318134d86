// The tape of one day of the years.
#pragma once

#include <cstdint>
#include <string>

namespace anos
{

// Day `day` (from 0, 2026-01-01) with so many documents, its Z reduction the last; the first day
// programs the register too. The same arguments give the same text everywhere.
std::string DayTape(int day, int documents, std::uint32_t seed);

// A day without movement: so many reprints of the detail tape, of documents drawn from 1 to
// `lastCoo`, and no Z reduction. A reprint takes a document number that stands in no row.
std::string ReprintTape(int day, std::int64_t reprints, int lastCoo, std::uint32_t seed);

} // namespace anos
