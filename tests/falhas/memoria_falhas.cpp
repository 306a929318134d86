// Every allocation of the engine fails once, and from there on for ever.
#include "tests/falhas/AllocationFaults.h"
#include "tests/falhas/Jornada.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace
{

using namespace falhas;

class MemoryFaults : public ::testing::TestWithParam<bool>
{
};

TEST_P(MemoryFaults, EveryAllocationFails)
{
    const bool forever = GetParam();
    int runs = 0;
    int lost = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk;
        SemFalhas(Fita().size(), std::vector<bool>(Fita().size()));
        FailAllocation(at, forever);
        lost += RodaComFalhas(disk, HealAllocations,
                              std::string("allocation ") + std::to_string(at) +
                                  (forever ? " and all after it" : ""));
        if (!AllocationHasFailed())
            break;
        ++runs;
        if (HasFailure())
            return;
    }
    EXPECT_GT(runs, 0);
    std::cout << "allocations failing " << (forever ? "for ever" : "once") << ": " << runs
              << " faults, " << lost << " commands lost and named\n";
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, MemoryFaults, ::testing::Bool());

} // namespace
