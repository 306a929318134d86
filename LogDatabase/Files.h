// The files of a database, asked of the engine's own file layer.
#pragma once

#include <cstddef>

namespace log_database
{

// What there is room for: a name with all that is added to it.
inline constexpr std::size_t MAX_NAME_BYTES = 1100;

// Whether the file is there, and not empty.
bool FileExists(const char* name, const char* vfs);

// Writes the text as the whole content of the file, durable when it answers true but for its name.
bool WriteFile(const char* name, const char* text, const char* vfs);

// The whole content of a file that is shorter than `room`, as text; empty if it cannot be read.
void ReadFile(const char* name, char* text, std::size_t room, const char* vfs);

// Deletes the file; that it is gone, and the names that the folder has now, are durable when it
// answers true.
bool DeleteFile(const char* name, const char* vfs);

// Makes the names durable that the folder of `name` has now. Makes a file beside it, named with
// -sync and perhaps a digit at its end, that was not there, and deletes it. Answers false when the
// file layer does not do it.
bool SyncFolderOf(const char* name, const char* vfs);

} // namespace log_database
