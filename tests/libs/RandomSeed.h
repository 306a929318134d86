// The seed of a random test: new at every run, or the one in the environment variable ECF_SEED.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

// Prints the seed, so that a failure can be run again.
inline std::uint32_t RandomSeed()
{
    const char* given = std::getenv("ECF_SEED");
    const std::uint32_t seed = given != nullptr
                                   ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                                   : static_cast<std::uint32_t>(std::random_device{}());
    std::cout << "ECF_SEED=" << seed << '\n';
    return seed;
}
