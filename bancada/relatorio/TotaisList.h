// Totals as a list for the terminal.
#pragma once

#include "bancada/relatorio/Totais.h"

#include <ostream>
#include <string>

namespace bancada::relatorio
{

// By day, by tax code and by payment means, in the language chosen.
void WriteTotaisList(const Totais& totais, std::ostream& out);

// How a total by tax code is named: the code as it stands in the row, or that it has none.
std::string AliquotaName(const TotalAliquota& total);

} // namespace bancada::relatorio
