// The engine's calls that change a file, counted.
#pragma once

#include <cstdint>

struct FileCalls {
    std::int64_t writes = 0;
    std::int64_t bytes = 0; // written
    std::int64_t syncs = 0;
};

// The name of a file layer that is the engine's own and counts.
const char* CountingLayer();

// Of all files of that layer since the program began.
const FileCalls& CountFileCalls();
