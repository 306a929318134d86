// `ecf-bancada show`: a logging database as a person would look at it.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/PageFolder.h"
#include "bancada/relatorio/Verdict.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

namespace bancada
{

struct ShowOptions {
    std::string database;
    std::optional<std::int64_t> coo;
    std::optional<std::int64_t> crz;
    // Write a page, of the jornada `crz` alone when that is given.
    bool html = false;
    // The firmware log whose rejected statements go with the list and the page; "" is none.
    std::string log;
    bool json = false;
    // Of the program, for the page; "" is not told.
    std::string version;
};

// Shows the logging database, which is only read: with neither `coo` nor `crz` its jornadas and
// documents, with one of them that document or Z reduction as on paper. Answers false, after one
// line on `errors`, where the document, reduction or jornada that was asked for is not in the
// database. Throws Unusable where the database or the log cannot be read; `out` is not flushed,
// and whether it takes what is written is for its owner to ask. Options that exclude each other are
// the caller's to refuse: coo goes with neither crz nor html nor log, html not with json, log not
// with crz unless there is html.
bool Show(const ShowOptions& options, std::ostream& out, std::ostream& errors);

// The same of a database that was opened already, options.database being its name. `verdict` is
// what a reconciliation says of it, for the page; null where none was made, which the page then
// says.
bool Show(const leitura::DatabaseReading& database, const relatorio::Verdict* verdict,
          const ShowOptions& options, std::ostream& out, std::ostream& errors);

// Hands the pages of a folder to `sink`: an overview that links to pages of days, see PageFolder.h.
// Of the options database, log and version count. Throws as Show does.
void ShowPages(const leitura::DatabaseReading& database, const relatorio::Verdict* verdict,
               const ShowOptions& options, const relatorio::PageSink& sink);

} // namespace bancada
