// The files of a database, asked of the engine's own file layer.
#pragma once

namespace log_database
{

// Whether the file is there, and not empty.
bool FileExists(const char* name, const char* vfs);

// Makes the names durable that the folder of `name` has now. Makes a file beside it, named with
// -sync at its end, and deletes it. Answers false when the file layer does not do it.
bool SyncFolderOf(const char* name, const char* vfs);

} // namespace log_database
