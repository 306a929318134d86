// What a connection to a file that may have been tampered with must not do.
#pragma once

struct sqlite3;

namespace log_database
{

// What the schema of the file holds runs nothing, and nothing may damage it.
void DistrustFile(sqlite3* db);

} // namespace log_database
