// Files that are read and written whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace bancada
{

// The file that `path` names in the end, where it is a link; the link may name a file that is yet
// to be made. Any other path, a missing file's too, comes back as it is, or with its folders' links
// followed.
[[nodiscard]] std::string FollowLinks(const std::string& path);

// Makes the file's entry in its folder durable. Answers false if the folder cannot be opened or
// synced.
[[nodiscard]] bool SyncFolderOf(const std::string& path);

// The content of the file, or nothing if there is none. Throws Unusable if it cannot be read or has
// more than `maxBytes`.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::string& path,
                                                       std::size_t maxBytes);

// Replaces the file, or makes it: written beside it (with .tmp added to its name), synced and
// renamed, so that a crash or a power cut leaves the old content or the new one. It is durable when
// this returns; who may read and write the file stays. Throws Unusable, the file then holding
// either. REQUIRES: `path` is no link (FollowLinks), which would be replaced itself.
void ReplaceFile(const std::string& path, std::string_view content);

// Makes the file anew, whatever stood there, for those who may read and write `like`, and answers
// its descriptor, for the caller to append to and to close. It is durable when this returns. Throws
// Unusable.
[[nodiscard]] int CreateFile(const std::string& path, std::string_view content,
                             const std::string& like);

// Writes all of it behind what was written before; false, with errno, when that failed.
[[nodiscard]] bool WriteWhole(int file, std::string_view content);

} // namespace bancada
