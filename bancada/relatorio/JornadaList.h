// The list of jornadas and documents, as text.
#pragma once

#include "bancada/relatorio/Report.h"

#include <ostream>

namespace bancada::relatorio
{

// One line a document, under a heading for each jornada. Holds one document at a time.
void WriteList(Report& report, std::ostream& out);

} // namespace bancada::relatorio
