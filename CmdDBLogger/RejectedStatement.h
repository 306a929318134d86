// The report of a statement that was not executed.
#pragma once

#include "Interpreter.h"

// Writes two entries to the firmware log: the message with the command's code and `errorText` (null
// counts as empty), then `sql` as it stands. If memory for the message is short, neither is
// written.
void ReportRejectedStatement(EEscCmd command, const char* errorText, const char* sql);
