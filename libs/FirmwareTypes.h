// The integer types that the firmware's interfaces are written in.
#pragma once

#include <cstdint>

using UINT8 = std::uint8_t;
using UINT32 = std::uint32_t;
using BYTE = std::uint8_t;

// A truth value in a 32-bit signed integer: 0 is false, anything else is true. Operations of this
// library that answer a BOOL answer FALSE or TRUE and no other value unless they say so.
using BOOL = std::int32_t;
constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
