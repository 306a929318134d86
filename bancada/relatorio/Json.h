#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

#include "bancada/log/Losses.h"
#include "bancada/relatorio/Leitor.h"

// The same for programs. Money, quantities and percentages are decimal texts with a full stop
// ("1234.56"), null where the column holds no number; counters are integers; a text that is no
// UTF-8 has U+FFFD for each byte that is none.
namespace bancada::relatorio
{

// {"dias": [{"crz", "reducao", "documentos": [...]}], "instrucoes_rejeitadas": [...],
// "comandos_perdidos": [...]}, written as the database is read; documents without items, payments
// and totalizers. The last two are there when `losses` is.
void escreveListaJson(Leitor& leitor, const Losses* losses, std::ostream& saida);

// {"coo", "documentos": [...]}, complete.
void escreveDocumentosJson(std::int64_t coo, const std::vector<Documento>& documentos,
                           std::ostream& saida);

// {"crz", "reducoes": [...]}, complete.
void escreveReducoesJson(std::int64_t crz, const std::vector<ReducaoZ>& reducoes,
                         std::ostream& saida);

} // namespace bancada::relatorio
