#pragma once

#include <ostream>

#include "bancada/relatorio/Leitor.h"

namespace bancada::relatorio
{

// One line a document, under a heading for each day. Holds one document at a time.
void escreveLista(Leitor& leitor, std::ostream& saida);

} // namespace bancada::relatorio
