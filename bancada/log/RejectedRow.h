// The row that a rejected statement should have written.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bancada
{

struct RejectedRow {
    std::string operation; // INSERT or UPDATE; empty when the statement cannot be read
    std::string table;
    // The key columns that the statement still shows, e.g. {"cont_coo", 120}, {"seq_item", 2}.
    std::map<std::string, std::int64_t> key;
    // The engine rejects this statement always, as it is required to read: a currency symbol, the
    // closing of an additional receipt.
    bool expected = false;

    std::optional<std::int64_t> Value(const std::string& column) const;
    // The key as text, e.g. "cont_coo 120, seq_item 2"; "?" when the statement shows none.
    std::string KeyText() const;
};

// Reads a statement of the loggers as far as its key goes. The statement need not be well formed: a
// text in it may hold apostrophes, and its end may be missing.
RejectedRow ReadRejectedRow(const std::string& statement);

} // namespace bancada
