// One page of a table's tree, read without trust.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace bancada::recuperacao
{

// A row on its leaf.
struct LeafCell {
    std::int64_t rowid = 0;
    std::uint64_t payloadBytes = 0;
    std::string_view local;         // what of the payload lies on the leaf, in the page's bytes
    std::uint32_t overflowPage = 0; // where it goes on; 0: it does not
};

// A subtree: its rows are those up to `lastRowid`.
struct Child {
    std::uint32_t page = 0;
    std::int64_t lastRowid = 0;
};

struct TablePage {
    bool leaf = false;
    std::vector<LeafCell> rows;  // of a leaf, by ascending rowid
    std::vector<Child> children; // of an inner page, by ascending rowid; the last one has no end
};

// Reads a page of which the first `usable` bytes hold what it holds, its header at `header` (100 on
// page 1, else 0). Nothing if it is no page of a table, or if anything of it does not fit: the
// cells, the free blocks and the stray bytes must take up the page exactly, as the engine keeps it.
// What is answered points into `page`.
[[nodiscard]] std::optional<TablePage> ReadTablePage(std::string_view page, std::size_t usable,
                                                     std::size_t header);

} // namespace bancada::recuperacao
