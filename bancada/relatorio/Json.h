// What the reports tell, for programs. Money, quantities and percentages are decimal texts with a
// full stop ("1234.56"), counters are integers, flags true or false; each is null where the column
// does not hold one. A text that is no UTF-8 has U+FFFD for each byte that is none; one that is
// NULL is null.
#pragma once

#include <cstdint>
#include <deque>
#include <ostream>
#include <vector>

#include "bancada/log/Losses.h"
#include "bancada/relatorio/Report.h"
#include "bancada/relatorio/Totais.h"

namespace bancada::relatorio
{

// Documents or Z reductions, and the database that they were found in.
template <typename Found>
struct FoundIn {
    Report* report = nullptr;
    std::vector<Found> documents;
};

// {"dias": [{"crz", "reducao", "documentos": [...]}], "instrucoes_rejeitadas": [...],
// "comandos_perdidos": [...]}, written as the database is read; documents without items, payments
// and totalizers. The last two are there when `losses` is. Of several databases {"bancos":
// [{"arquivo", "dias"}]}, in their order, and then the last two.
void WriteListsJson(std::deque<Report>& reports, const Losses* losses, std::ostream& out);

// {"dias": [{"crz", "movimento", "vb", "cupons", "vendido", "cancelados", "ilegiveis"}],
// "aliquotas": [{"aliquota", "itens", "valor"}], "fora_dos_itens", "valores_ilegiveis",
// "meios_pagamento": [{"indice", "nome", "pagamentos", "valor"}], "pagamentos_ilegiveis",
// "troco"}; "vb" is null of an open day.
void WriteTotaisJson(const Totais& totais, std::ostream& out);

// {"coo", "documentos": [...]}, complete; of several databases each with its "arquivo".
void WriteDocumentosJson(std::int64_t coo, const std::vector<FoundIn<Documento>>& found,
                         bool several, std::ostream& out);

// {"crz", "reducoes": [...]}, complete; of several databases each with its "arquivo".
void WriteReducoesJson(std::int64_t crz, const std::vector<FoundIn<ReducaoZ>>& found, bool several,
                       std::ostream& out);

} // namespace bancada::relatorio
