// Runs the logger of every case once between two marks, to be counted from outside: by callgrind on
// the processor of this machine, by the emulator of another. instructions.py says what is counted.
//
// Prints a line a case: its class, its variant, how many texts it hands to the engine and whether
// one of them is rejected, separated by tabs.
#include "benchmarks/Cases.h"

#include <cstdio>

#if defined(__x86_64__)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_DUMP_STATS_AT(name)
#endif

// The two marks. What runs within the first, less the functions that instructions.py names, is the
// module; the second ends a case.
extern "C" {

__attribute__((noinline)) void CountedRun(Case& measured)
{
    measured.Log();
    // Keeps the call from becoming a jump, and the function a function.
    asm volatile("" ::: "memory");
}

__attribute__((noinline)) void CountedCase([[maybe_unused]] const char* name)
{
    CALLGRIND_DUMP_STATS_AT(name);
    asm volatile("" ::: "memory");
}
}

int main()
{
    for (const LoggerCase& logger : LoggerCases()) {
        Case measured(logger);
        CALLGRIND_ZERO_STATS;
        CountedRun(measured);
        CountedCase(logger.Name().c_str());
        std::printf("%s\t%s\t%zu\t%s\n", logger.commandClass.c_str(), logger.variant.c_str(),
                    measured.Texts(), measured.IsRejected() ? "rejected" : "executed");
    }
    return 0;
}
