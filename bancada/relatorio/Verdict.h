// What a reconciliation says of a database, as the page carries it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bancada::relatorio
{

struct VerdictFinding {
    // The word of its kind, what it concerns and what is wrong, as the reconciliation prints them.
    std::string kind, key, text;
    bool note = false;
    // A lost row in the firmware log explains it.
    bool explained = false;
};

// Made elsewhere: the report itself judges nothing.
struct Verdict {
    // The file that was judged, and its write-ahead log; 0 and empty where there was none.
    std::int64_t size = 0;
    std::string sha256;
    std::int64_t logSize = 0;
    std::string logSha256;
    // The first and the last document and Z reduction with their times, one line.
    std::string range;
    // Why the reconciliation did not come to its end; empty where it did.
    std::string failure;
    std::int64_t faults = 0;
    // Those of the faults that a lost row explains.
    std::int64_t explained = 0;
    std::int64_t notes = 0;
    // The first ones of each kind.
    std::vector<VerdictFinding> findings;
    // The faults of each document and of each jornada, by COO and by CRZ.
    std::map<std::int64_t, std::int64_t> byCoo, byCrz;

    // 0 where there are none.
    std::int64_t FaultsOfCoo(std::int64_t coo) const;
    std::int64_t FaultsOfCrz(std::int64_t crz) const;
};

} // namespace bancada::relatorio
