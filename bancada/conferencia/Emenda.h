// Where one database of a register ends and the next begins.
#pragma once

#include "bancada/conferencia/Finding.h"
#include "bancada/conferencia/LookedAt.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>

namespace bancada::conferencia
{

// Hands out what does not continue from the end of `before` to the beginning of `after`: another
// register, documents that stand in both or in neither, Z reductions, grand totals and numbers of
// non-fiscal operations that do not follow each other, times that go back. What the rows do not
// tell is not judged. Answers how many findings these are.
std::int64_t CheckEmenda(const leitura::DatabaseReading& before, const LookedAt& lookedAtBefore,
                         const leitura::DatabaseReading& after, const LookedAt& lookedAtAfter,
                         const FindingSink& sink);

} // namespace bancada::conferencia
