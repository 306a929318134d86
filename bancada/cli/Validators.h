// What the values of options have to be.
#pragma once

#include <CLI/CLI.hpp>

namespace bancada
{

// A day that there is, yyyy-mm-dd.
CLI::Validator DateOption();

// An amount of money that is not negative, decimal comma or point with at most two decimals: made
// the same with a point and two decimals.
CLI::Validator MoneyOption();

} // namespace bancada
