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

// The rows of the document at `place`: `rows` are those of all documents of its number, in order,
// and `begins` says of a row and the one before it whether it begins the next document's. When
// there are not as many groups as documents that claim them, it is all of them, and `uncertain` is
// set.
template <typename Row, typename Begins>
std::vector<Row> RowsOf(const PlaceAmongEqual& place, std::vector<Row> rows, bool& uncertain,
                        Begins begins)
{
    std::int64_t group = -1;
    std::vector<Row> own;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i == 0 || begins(rows[i], rows[i - 1])) {
            ++group;
        }
        if (group == place.before) {
            own.push_back(rows[i]);
        }
    }
    if (rows.empty() || group + 1 == place.all) {
        return own;
    }
    uncertain = true;
    return rows;
}

} // namespace bancada::relatorio
