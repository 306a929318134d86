// The apportionment of a subtotal's adjustment among the items.
#pragma once

#include "libs/Financial.h"

#include <vector>

namespace bancada
{

// Shares `ajuste` in proportion to `liquidos`, in whole cents: each share is first
// ajuste x liquido / sum, cut to cents; the cents left over go one each to the shares that lost
// most by the cut, the first of equals first. So the shares add up to `ajuste`, each lies less than
// a cent from the exact proportion, none is negative, and none of an adjustment up to the sum is
// more than its item's value. A value of zero gets zero.
// REQUIRES: every value is whole cents and not negative, the sum is above zero, and `ajuste` and
// each of `liquidos` is at most 10^15 (so that no product leaves BigInt).
std::vector<Financial> ApportionAjuste(const Financial& ajuste,
                                       const std::vector<Financial>& liquidos);

} // namespace bancada
