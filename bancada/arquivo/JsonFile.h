// JSON files of which the program reads fields.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace bancada::arquivo
{

// Throws Unusable, with the path, for a file that cannot be read, has more than 64 MiB or is no
// JSON.
[[nodiscard]] nlohmann::ordered_json ReadJsonFile(const std::string& path);

} // namespace bancada::arquivo
