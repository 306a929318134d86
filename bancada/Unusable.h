// The one error of the tools about what they are given to read or write.
#pragma once

#include <stdexcept>
#include <string>

namespace bancada
{

// An input or an output cannot be used: a file that is missing, unreadable or of another kind, a
// folder that does not exist. what() names it and the reason, for a person to read. A tool ends
// with exit code 2.
class Unusable : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

} // namespace bancada
