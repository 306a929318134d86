// How far the commands have come, as JSON.
#pragma once

#include "bancada/memoria/CommandProgress.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

namespace bancada
{

// The largest number of a command that a memory can hold.
inline constexpr std::int32_t MAX_SEQUENCE = std::numeric_limits<std::int32_t>::max() - 1;

[[nodiscard]] nlohmann::json ProgressToJson(const CommandProgress& progress);

// Throws InvalidField, with a place that begins with `place`.
[[nodiscard]] CommandProgress ProgressFromJson(const nlohmann::json& json,
                                               const std::string& place);

// As TakeMemoriaChanges and ChangeMemoria.
[[nodiscard]] std::string TakeProgressChanges(CommandProgress& before,
                                              const CommandProgress& after);
void ChangeProgress(CommandProgress& progress, const nlohmann::json& changes,
                    const std::string& place);

} // namespace bancada
