#pragma once

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
    // A page is written to this file, of the day `crz` alone when that is given; "" writes text.
    std::string html;
    // The firmware log whose rejected statements go with the list and the page; "" is none.
    std::string log;
    bool json = false;
};

enum ShowResult {
    SHOW_SHOWN = 0,
    // The document, reduction or day that was asked for is not in the database.
    SHOW_NOT_THERE = 1,
    // The database or the log cannot be read, or the page cannot be written.
    SHOW_UNREADABLE = 2,
};

// Shows the logging database, which is only read: with neither `coo` nor `crz` its days and
// documents, with one of them that document or Z reduction as on paper. What is wrong goes to
// `errors` in one line. Options that exclude each other are the caller's to refuse: coo goes with
// neither crz nor html nor log, html not with json, log not with crz unless there is html.
ShowResult Show(const ShowOptions& options, std::ostream& out, std::ostream& errors);

} // namespace bancada
