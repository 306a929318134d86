#include "bancada/recuperacao/BtreePage.h"

#include "bancada/recuperacao/Bytes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace bancada::recuperacao
{
namespace
{

// The file format's.
constexpr std::uint32_t INNER_PAGE = 5;
constexpr std::uint32_t LEAF_PAGE = 13;
constexpr std::size_t LEAF_HEADER_BYTES = 8;
constexpr std::size_t INNER_HEADER_BYTES = 12;
constexpr std::size_t SMALLEST_CELL_BYTES = 4;

// Bytes of the page, from the first to the one behind the last.
using Extent = std::pair<std::size_t, std::size_t>;

// How many bytes of a payload lie on the leaf.
std::size_t LocalBytes(std::uint64_t payload, std::size_t usable)
{
    const std::size_t most = usable - 35;
    if (payload <= most) {
        return static_cast<std::size_t>(payload);
    }
    const std::size_t least = (usable - 12) * 32 / 255 - 23;
    const std::size_t some = least + static_cast<std::size_t>((payload - least) % (usable - 4));
    return some <= most ? some : least;
}

class PageReader
{
  public:
    PageReader(std::string_view page, std::size_t usable, std::size_t header)
        : m_page(page.substr(0, usable)), m_header(header)
    {
    }

    bool Read(TablePage& page)
    {
        const std::uint32_t kind = ByteAt(m_page, m_header);
        if (kind != INNER_PAGE && kind != LEAF_PAGE) {
            return false;
        }
        page.leaf = kind == LEAF_PAGE;
        const std::size_t cells = Read16(m_page, m_header + 3);
        const std::size_t pointers =
            m_header + (page.leaf ? LEAF_HEADER_BYTES : INNER_HEADER_BYTES);
        if (pointers + 2 * cells > m_page.size()) {
            return false;
        }
        m_content = Read16(m_page, m_header + 5);
        if (m_content == 0) {
            m_content = 65536;
        }
        if (m_content < pointers + 2 * cells || m_content > m_page.size()) {
            return false;
        }
        for (std::size_t i = 0; i < cells; ++i) {
            const std::size_t at = Read16(m_page, pointers + 2 * i);
            if (at < m_content || !(page.leaf ? ReadRow(at, page) : ReadChild(at, page))) {
                return false;
            }
        }
        if (!page.leaf) {
            page.children.push_back(
                {Read32(m_page, m_header + 8), std::numeric_limits<std::int64_t>::max()});
        }
        return ReadFreeBlocks() && IsTakenUp();
    }

  private:
    bool ReadRow(std::size_t at, TablePage& page)
    {
        LeafCell cell;
        std::uint64_t rowid = 0;
        const std::size_t first = ReadVarint(m_page, at, cell.payloadBytes);
        const std::size_t second = ReadVarint(m_page, at + first, rowid);
        if (first == 0 || second == 0) {
            return false;
        }
        cell.rowid = static_cast<std::int64_t>(rowid);
        if (!page.rows.empty() && page.rows.back().rowid >= cell.rowid) {
            return false;
        }
        const std::size_t begin = at + first + second;
        const std::size_t local = LocalBytes(cell.payloadBytes, m_page.size());
        const bool overflows = local < cell.payloadBytes;
        const std::size_t end = begin + local + (overflows ? 4 : 0);
        if (end > m_page.size()) {
            return false;
        }
        cell.local = m_page.substr(begin, local);
        if (overflows) {
            cell.overflowPage = Read32(m_page, begin + local);
        }
        page.rows.push_back(cell);
        m_taken.emplace_back(at, std::max(end, at + SMALLEST_CELL_BYTES));
        return true;
    }

    bool ReadChild(std::size_t at, TablePage& page)
    {
        std::uint64_t rowid = 0;
        if (at + 4 > m_page.size()) {
            return false;
        }
        const std::size_t size = ReadVarint(m_page, at + 4, rowid);
        const auto last = static_cast<std::int64_t>(rowid);
        if (size == 0 || (!page.children.empty() && page.children.back().lastRowid >= last)) {
            return false;
        }
        page.children.push_back({Read32(m_page, at), last});
        m_taken.emplace_back(at, at + 4 + size);
        return true;
    }

    bool ReadFreeBlocks()
    {
        std::size_t before = 0;
        for (std::size_t at = Read16(m_page, m_header + 1); at != 0;) {
            if (at < m_content || at <= before || at + 4 > m_page.size()) {
                return false;
            }
            const std::size_t size = Read16(m_page, at + 2);
            if (size < 4 || at + size > m_page.size()) {
                return false;
            }
            m_taken.emplace_back(at, at + size);
            before = at;
            at = Read16(m_page, at);
        }
        return true;
    }

    // Nothing overlaps, and what lies between is counted.
    bool IsTakenUp()
    {
        std::sort(m_taken.begin(), m_taken.end());
        std::size_t stray = 0;
        std::size_t at = m_content;
        for (const auto& [begin, end] : m_taken) {
            if (begin < at) {
                return false;
            }
            stray += begin - at;
            at = end;
        }
        return at <= m_page.size() && stray + (m_page.size() - at) == ByteAt(m_page, m_header + 7);
    }

    std::string_view m_page;
    std::size_t m_header;
    std::size_t m_content = 0; // where the cells begin
    std::vector<Extent> m_taken;
};

} // namespace

std::optional<TablePage> ReadTablePage(std::string_view page, std::size_t usable,
                                       std::size_t header)
{
    TablePage result;
    if (!PageReader(page, usable, header).Read(result)) {
        return std::nullopt;
    }
    return result;
}

} // namespace bancada::recuperacao
