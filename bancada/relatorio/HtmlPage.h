// One HTML page that shows a database in the browser.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "bancada/log/Losses.h"
#include "bancada/relatorio/Report.h"
#include "bancada/relatorio/Verdict.h"

namespace bancada::relatorio
{

// A database of the register that is shown.
struct PageSource {
    Report& report;
    // What the page calls it.
    std::string name;
    // What a reconciliation says of it; null where none was made.
    const Verdict* verdict = nullptr;
};

// One HTML page that needs nothing from elsewhere: days, receipts on paper strips, sales by hour,
// by payment means, by day and by tax code, rejected statements. Written as the database is read,
// so that its size does not matter to the writer. Every text of the database is escaped, and the
// page's own policy runs no script but its own.
struct HtmlPage {
    // Of the program; "" is not told.
    std::string version;
    // This jornada alone.
    std::optional<std::int64_t> crz;
    // From the firmware log; null where none was given. Of the whole log, also on a page of one
    // jornada.
    const Losses* losses = nullptr;
};

// Of the databases of one register, in their order; the days of several stand under their names.
// `out` is not flushed. Throws Unusable where one cannot be read. REQUIRES: there is one.
void WriteHtmlPage(const std::vector<PageSource>& sources, const HtmlPage& page, std::ostream& out);

} // namespace bancada::relatorio
