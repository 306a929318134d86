// What the reports tell, for programs. Money, quantities and percentages are decimal texts with a
// full stop ("1234.56"), counters are integers, flags true or false; each is null where the column
// does not hold one. A text that is no UTF-8 has U+FFFD for each byte that is none; one that is
// NULL is null.
#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

#include "bancada/log/Losses.h"
#include "bancada/relatorio/Report.h"

namespace bancada::relatorio
{

// {"dias": [{"crz", "reducao", "documentos": [...]}], "instrucoes_rejeitadas": [...],
// "comandos_perdidos": [...]}, written as the database is read; documents without items, payments
// and totalizers. The last two are there when `losses` is.
void WriteListJson(Report& report, const Losses* losses, std::ostream& out);

// {"coo", "documentos": [...]}, complete.
void WriteDocumentosJson(std::int64_t coo, const std::vector<Documento>& documentos,
                         std::ostream& out);

// {"crz", "reducoes": [...]}, complete.
void WriteReducoesJson(std::int64_t crz, const std::vector<ReducaoZ>& reducoes, std::ostream& out);

} // namespace bancada::relatorio
