#include "bancada/tape/Place.h"

namespace bancada
{

std::string ToText(const Place& place)
{
    return place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

TapeError::TapeError(const Place& place, const std::string& message)
    : std::runtime_error(ToText(place) + ": " + message), m_place(place)
{
}

} // namespace bancada
