// Runs one side of a case a given number of times, to be counted from outside by callgrind. Without
// arguments, lists the cases.
#include "benchmarks/Cases.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    if (argc == 1) {
        for (const std::string& name : Case::Names()) {
            std::printf("%s\n", name.c_str());
        }
        return 0;
    }
    const bool logger = argc == 4 && std::strcmp(argv[2], "logger") == 0;
    const bool engine = argc == 4 && std::strcmp(argv[2], "engine") == 0;
    if (!logger && !engine) {
        std::fprintf(stderr, "usage: %s [CASE logger|engine RUNS]\n", argv[0]);
        return 2;
    }
    Case measured(argv[1]);
    for (int run = std::atoi(argv[3]); run > 0; --run) {
        if (logger) {
            measured.Log();
        } else {
            measured.Execute();
        }
    }
    return 0;
}
