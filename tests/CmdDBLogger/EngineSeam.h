// Where the test program stands between the library and what it calls. The linker's --wrap sends
// the library's calls of sqlite3_exec, sqlite3_prepare_v2, malloc (as calloc, where an optimizer
// makes one of it), Command::DBLoggerExecuteSQL and Financial::ToString through here; all of them
// pass on to the real ones. The firmware's log and its apportionment setting, which the library
// leaves to its user, are defined here too.
#pragma once

#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

#include <cstddef>
#include <string>
#include <vector>

struct PreparedQuery {
    std::string text;
    int bytes; // the length handed to the engine
};

// What Financial::ToString was asked for, beside its value and its array.
struct MoneyRequest {
    int size;
    FINANCIAL_STR_TIPO style;
    int decimals;
    short last;
};

struct EngineSeam {
    std::vector<std::string> statements; // every text handed to sqlite3_exec, in order
    std::vector<PreparedQuery> queries;  // every text handed to sqlite3_prepare_v2, in order
    std::vector<std::string> log;        // every entry of the firmware log, in order
    std::vector<MoneyRequest> money;     // every money text asked for, in order

    // The lowest stack address at which the library stood when it called the engine, if not null.
    const void* lowestCall = nullptr;

    // What GetRatearSubtotal answers, and where it notes that it was asked, if not null.
    int ratearSubtotal = 0;
    std::vector<std::string>* calls = nullptr;

    // After the first `executionsPassed` executions, so many report `reportedResult`. They are
    // executed all the same: only their result is another.
    int executionsPassed = 0;
    int executionsRejected = 0;
    BOOL reportedResult = FALSE;

    // Makes sqlite3_exec answer SQLITE_NOMEM without executing and without an error text.
    bool engineOutOfMemory = false;

    // The firmware half allocates nothing but the message of a refused statement: the first malloc
    // after a refusal of the engine's is the message's. A test says so itself where the engine is
    // not asked.
    bool nextMallocIsTheMessages = false;
    bool messageOutOfMemory = false; // makes that malloc fail
    std::size_t messageBytes = 0;    // what it asked for
};

// The state of the running test. LoggerTest begins every test with a new one.
extern EngineSeam seam;
