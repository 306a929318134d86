// The rows of a number that came twice, told apart by their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bancada::relatorio
{

// Which of the documents of one number a document is, by the order of their rows.
struct PlaceAmongEqual {
    std::int64_t before = 0;
    std::int64_t all = 1;
};

// The place of the document that is the row `rowid` among those of its number, whose rows are
// `equal`, rising.
PlaceAmongEqual PlaceAmong(const std::vector<std::int64_t>& equal, std::int64_t rowid);

// What a document has of the rows of its number.
struct Share {
    std::vector<std::int64_t> rowids;
    // There are not as many groups as documents that claim them.
    bool uncertain = false;
    // Uncertain, and left to the first document of the number.
    bool atFirst = false;
};

// The rows of one number, in their order and cut into groups, one a document. Holds 8 bytes a row.
class RowGroups
{
  public:
    // `begins` says whether the row is the first of the next document's. The very first one is.
    void Add(std::int64_t rowid, bool begins);

    // The group of the document at `place`. Where there are not as many groups as documents it is
    // all rows; if that would be more for all the documents together than a receipt can have, they
    // are the first document's alone, so that what is shown of a number grows with its rows.
    Share Of(const PlaceAmongEqual& place) const;

  private:
    std::vector<std::int64_t> m_rowids;
    // Where each group begins in m_rowids.
    std::vector<std::size_t> m_begins;
};

} // namespace bancada::relatorio
