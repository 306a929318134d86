// A look at a file that may not be a logging database.
#pragma once

#include "LogDatabase/Schema.h"

namespace log_database
{

// Answers what the file `path` is, or why it is not to be opened. Neither the file nor a journal or
// log beside it is changed, whatever they hold. A missing or empty file is fresh.
LogFault Look(const char* path, const LogDatabaseOptions& options, SchemaIdentity& identity,
              Reason& reason);

} // namespace log_database
