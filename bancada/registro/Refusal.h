// How the register says that it does not do something.
#pragma once

#include <optional>
#include <string>

namespace bancada
{

// Why the register refuses an operation, in the operator's language; empty when it does not.
// Whoever asks must look: the type itself is [[nodiscard]], so that no function can forget to be.
class [[nodiscard]] Refusal : public std::optional<std::string>
{
  public:
    using std::optional<std::string>::optional;
};

} // namespace bancada
