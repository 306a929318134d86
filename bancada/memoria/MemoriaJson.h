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

// What of `before` is to change to make it `after`, as the text of a JSON object; `before` is equal
// to `after` then.
[[nodiscard]] std::string TakeMemoriaChanges(Memoria& before, const Memoria& after);

// Changes `memoria` as such an object says. Throws as MemoriaFromJson, `memoria` then being half
// changed.
void ChangeMemoria(Memoria& memoria, const nlohmann::json& changes, const std::string& place);

} // namespace bancada
