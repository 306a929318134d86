// The text of a JSON file.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace bancada
{

// Throws std::runtime_error for a text that is not JSON, with its line and column, and for an
// object that names a field twice.
[[nodiscard]] nlohmann::json ParseJson(const std::string& text);

} // namespace bancada
