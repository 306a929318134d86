// Tapes of everything that a register does, drawn without a thought for what it refuses.
#pragma once

#include <cstdint>
#include <string>

namespace bancada::arquivo_test
{

// A tape of so many days: receipts of both kinds with every adjustment and cancellation, rates of
// both taxes by both commands, special totalizers, shares written to the items or not, vouchers,
// reversals, floats, withdrawals, readings, reports, reprints, interventions, reductions after
// midnight, commands with an end. What the register refuses of it is no part of what happened.
std::string RandomTape(std::uint64_t seed, int days);

} // namespace bancada::arquivo_test
