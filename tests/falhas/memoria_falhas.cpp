// Every allocation of the engine fails once, and from there on for ever.
#include "tests/falhas/AllocationFaults.h"
#include "tests/falhas/Jornada.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace
{

using namespace falhas;

// An opening allocates ten thousand times, mostly for one schema: each n-th of them is enough for
// every run of the tests. The commands' allocations are tried one by one.
int OpeningStep()
{
    return IsLong() ? 1 : 13;
}

// The allocations of an opening alone.
int CountOpening()
{
    const ScratchFile log;
    const SimulatedDisk disk;
    constexpr int NEVER = 1 << 30;
    FailAllocation(NEVER, false);
    const Bancada opened(disk, log.Path());
    return NEVER - AllocationsLeft();
}

class MemoryFaults : public ::testing::TestWithParam<bool>
{
};

TEST_P(MemoryFaults, EveryAllocationFails)
{
    const bool forever = GetParam();
    SemFalhas(Fita().size(), std::vector<bool>(Fita().size()));
    const int opening = CountOpening();
    HealAllocations();
    int runs = 0;
    int lost = 0;
    for (int at = 1;; at += at < opening ? OpeningStep() * Step() : Step()) {
        SimulatedDisk disk;
        FailAllocation(at, forever);
        lost += RodaComFalhas(disk, HealAllocations,
                              std::string("allocation ") + std::to_string(at) +
                                  (forever ? " and all after it" : ""));
        if (!AllocationHasFailed()) {
            break;
        }
        ++runs;
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(runs, 0);
    std::cout << "allocations failing " << (forever ? "for ever" : "once") << ": " << runs
              << " faults (an opening has " << opening << " allocations), " << lost
              << " commands lost and named\n";
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, MemoryFaults, ::testing::Bool());

} // namespace
