// How the register says that it does not do something.
#pragma once

#include <optional>
#include <string>

namespace bancada
{

// Why the register refuses an operation, in words for the operator; empty when it does not.
using Refusal = std::optional<std::string>;

} // namespace bancada
