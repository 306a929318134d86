// A register's state as JSON.
#pragma once

#include "bancada/registro/Memoria.h"

#include <nlohmann/json.hpp>
#include <string>

namespace bancada
{

[[nodiscard]] nlohmann::json MemoriaToJson(const Memoria& memoria);

// The state that `json` holds; what it does not name is as the factory leaves it. Throws
// InvalidField, with a place that begins with `place`, for a field that is unknown or does not
// hold what it should, or that contradicts another one.
[[nodiscard]] Memoria MemoriaFromJson(const nlohmann::json& json, const std::string& place);

} // namespace bancada
