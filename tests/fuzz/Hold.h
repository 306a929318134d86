// How a fuzzer says what it has found.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program, with the place, where the claim does not hold.
inline void Hold(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    if (!holds) {
        std::fprintf(stderr, "%s:%d: this does not hold\n", file, line);
        std::abort();
    }
}
