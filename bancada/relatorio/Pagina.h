#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "bancada/log/Losses.h"
#include "bancada/relatorio/Leitor.h"

namespace bancada::relatorio
{

// One HTML page that needs nothing from elsewhere: days, receipts on paper strips, sales by hour
// and by payment means, rejected statements. Written as the database is read, so that its size does
// not matter to the writer. Every text of the database is escaped, and the page's own policy runs
// no script but its own.
struct Pagina {
    // What the page calls the database.
    std::string nome;
    // This day alone.
    std::optional<std::int64_t> crz;
    // From the firmware log; null where none was given. Of the whole log, also on a page of one
    // day.
    const Losses* losses = nullptr;
};

void escrevePagina(Leitor& leitor, const Pagina& pagina, std::ostream& saida);

} // namespace bancada::relatorio
