// Writes the legal audit file of a logging database.
#pragma once

#include "bancada/arquivo/RecordWriter.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

namespace bancada::arquivo
{

// The memories that are asked for, which choose the types of records.
enum class Comando : std::uint8_t {
    TDM, // all data
    MFD, // detail memory
    MF,  // fiscal memory
    RZ,  // the documents of Z reductions
};

struct ExportOptions {
    Comando comando = Comando::TDM;
    LineEnd lineEnd = LineEnd::CRLF;
    std::string database;
    std::string facts;  // empty: none
    std::string memory; // empty: none
    // The fiscal days whose movement is from the first date to the last, "yyyy-mm-dd"; empty: no
    // bound. Not together with `crz`.
    std::string from, to;
    // The days that these Z reductions close, first and last; the last may be past 999999.
    std::optional<std::pair<std::int64_t, std::int64_t>> crz;
    std::string library; // version of this program, for E01
};

// Writes the file to `out`, a record at a time, and to `notes`, a line each, what no source tells
// and so was left neutral or out. Memory grows by some 30 bytes a document. Throws
// Unusable for what cannot be read, and for a value that does not fit its field, with its row.
void Export(const ExportOptions& options, std::ostream& out, std::ostream& notes);

} // namespace bancada::arquivo
