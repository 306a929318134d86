// Memory that runs out: the engine's allocations fail on command.
#pragma once

namespace falhas
{

// Makes the engine's `at`-th allocation from now on (from 1) fail, alone or with all after it. The
// engine's own allocator says so in the engine's log, and so does this one.
void FailAllocation(int at, bool forever);
bool AllocationHasFailed();
// How many allocations there are still to the one that fails.
int AllocationsLeft();
// Memory is there again.
void HealAllocations();

} // namespace falhas
