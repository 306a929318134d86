// The shop while its tape is written: what every part of the generator works on.
#pragma once

#include "bancada/gerador/Draw.h"
#include "bancada/gerador/TapeWriter.h"

#include <cstdint>

namespace bancada
{

// Amounts are cents.
struct Shop {
    TapeWriter tape;
    Draw draw;
    std::int64_t cash = 0;     // in the till
    std::int64_t lastCash = 0; // that the receipt written last brought into it
};

} // namespace bancada
