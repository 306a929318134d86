// Where on a tape something stands, and the error that names it.
#pragma once

#include <stdexcept>
#include <string>

namespace bancada
{

// Lines and columns count from 1, columns in bytes.
struct Place {
    std::string file; // as the user named it; "-" is standard input
    int line = 0;
    int column = 0;
};

// "file:line:column"
std::string ToText(const Place& place);

// The tape does not say what it should: not JSON, a field unknown, missing, given twice or of the
// wrong kind. what() is "file:line:column: message".
class TapeError : public std::runtime_error
{
  public:
    TapeError(const Place& place, const std::string& message);

    const Place& GetPlace() const { return m_place; }

  private:
    Place m_place;
};

} // namespace bancada
