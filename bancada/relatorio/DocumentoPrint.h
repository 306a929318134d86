// A document as its paper shows it.
#pragma once

#include "bancada/relatorio/Documento.h"

#include <string>
#include <vector>

namespace bancada::relatorio
{

// The lines of the paper, with heading and foot, BOBINA_COLUMNS wide at most. The document is
// complete. Says so where the database does not hold what the paper had: an opening or a closing
// that was not logged, rows of a number that came twice and cannot be told apart.
std::vector<std::string> PrintDocumento(const Documento& documento,
                                        const Estabelecimento& estabelecimento);

} // namespace bancada::relatorio
