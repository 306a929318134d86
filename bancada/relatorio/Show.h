// `ecf-bancada show`: a logging database as a person would look at it.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Filtro.h"
#include "bancada/relatorio/PageFolder.h"
#include "bancada/relatorio/Verdict.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace bancada
{

// A database of the register, in its order among those that are shown.
struct ShownDatabase {
    const leitura::DatabaseReading* reading = nullptr;
    // What a reconciliation says of it, for the page; null where none was made, which the page then
    // says.
    const relatorio::Verdict* verdict = nullptr;
};

struct ShowOptions {
    // Of one register, in their order; at least one.
    std::vector<std::string> databases;
    std::optional<std::int64_t> coo;
    std::optional<std::int64_t> crz;
    // Write a page, of the jornada `crz` alone when that is given.
    bool html = false;
    // The firmware log whose rejected statements go with the list and the page; "" is none.
    std::string log;
    bool json = false;
    // The totals by day, tax code and payment means instead of the list; not with coo, crz, html or
    // log.
    bool totais = false;
    // The documents of the list, the pages and the totals; nothing of it with coo or crz.
    relatorio::Filtro filtro;
    // Of the program, for the page; "" is not told.
    std::string version;
};

// Shows the logging databases of one register, which are only read; what is shown of several says
// whose it is. With neither `coo` nor `crz` its jornadas and documents, with one of them that
// document or Z reduction as on paper. Answers false, after one line on `errors`, where the
// document, reduction or jornada that was asked for is in none of them. Throws Unusable where a
// database or the log cannot be read; `out` is not flushed, and whether it takes what is written is
// for its owner to ask. Options that exclude each other are the caller's to refuse: coo goes with
// neither crz nor html nor log, html not with json, log not with crz unless there is html.
bool Show(const ShowOptions& options, std::ostream& out, std::ostream& errors);

// The same of databases that were opened already, instead of options.databases.
bool Show(const std::vector<ShownDatabase>& databases, const ShowOptions& options,
          std::ostream& out, std::ostream& errors);

// Hands the pages of a folder to `sink`: an overview that links to pages of days, see PageFolder.h.
// Of the options log, version and filtro count. Throws as Show does.
void ShowPages(const std::vector<ShownDatabase>& databases, const ShowOptions& options,
               const relatorio::PageSink& sink);

} // namespace bancada
