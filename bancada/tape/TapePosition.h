// How far a tape was read.
#pragma once

#include <cstdint>
#include <string>

namespace bancada
{

// Behind a line. The digest tells whether another tape begins with the same bytes.
struct TapePosition {
    int line = 0; // lines read
    std::int64_t bytes = 0;
    std::string digest; // SHA-256 of these bytes, 64 hexadecimal digits; empty where there are none
};

} // namespace bancada
