// What the values of options have to be.
#pragma once

#include "bancada/Messages.h"

#include <CLI/CLI.hpp>
#include <string>

namespace bancada
{

// A whole number of this kind from one to another.
template <typename Number>
CLI::Validator Between(Number least, Number most)
{
    return CLI::Range(least, most)
        .description(Tr("INT in [%1 - %2]", {std::to_string(least), std::to_string(most)}));
}

// A day that there is, yyyy-mm-dd.
CLI::Validator DateOption();

// An amount of money that is not negative, decimal comma or point with at most two decimals: made
// the same with a point and two decimals.
CLI::Validator MoneyOption();

} // namespace bancada
