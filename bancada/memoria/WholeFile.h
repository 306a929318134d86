// Files that are read and written whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace bancada
{

// The content of the file, or nothing if there is none. Throws Unusable if it cannot be read or has
// more than `maxBytes`.
std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t maxBytes);

// Replaces the file, or makes it: written beside it (with .tmp added to its name), synced and
// renamed, so that a crash or a power cut leaves the old content or the new one. It is durable when
// this returns. Throws Unusable, the file then holding either.
void ReplaceFile(const std::string& path, std::string_view content);

} // namespace bancada
