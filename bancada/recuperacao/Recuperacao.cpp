#include "bancada/recuperacao/Recuperacao.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/recuperacao/BtreePage.h"
#include "bancada/recuperacao/Bytes.h"
#include "bancada/recuperacao/PageFile.h"
#include "bancada/recuperacao/RecoveredDatabase.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <utility>

namespace bancada::recuperacao
{
namespace
{

namespace fs = std::filesystem;

// The file format's.
constexpr std::uint32_t SCHEMA_ROOT = 1;
constexpr std::size_t DATABASE_HEADER_BYTES = 100;
constexpr std::size_t FREE_LIST_OFFSET = 32;
constexpr std::size_t SCHEMA_COLUMNS = 5;

// No row of the module has 8 KiB; whoever wrote a longer one did not log it.
constexpr std::uint64_t MAX_ROW_BYTES = 16U * 1024 * 1024;

// What tells one state of a file from another.
using Stamp = std::pair<std::uintmax_t, fs::file_time_type>;

Stamp StampOf(const std::string& path)
{
    std::error_code none;
    const std::uintmax_t size = fs::file_size(path, none);
    return none ? Stamp{} : Stamp{size, fs::last_write_time(path, none)};
}

// Rows that a tree should lead to and does not.
struct Hole {
    std::int64_t behind = 0; // the rowid before the first
    std::int64_t last = RowRange::NO_END;
};

struct Table {
    TableShape shape;
    bool guessed = false; // where its tree begins
    RowSet rows;
    std::vector<Hole> holes;
    std::vector<std::int64_t> unreadable; // rows on sound pages
};

// A row of the schema: kind, name, table, where its tree begins, the statement that made it.
bool IsOfSchema(const std::vector<Value>& row)
{
    return row.size() == SCHEMA_COLUMNS && row[0].kind == Kind::TEXT &&
           (row[0].bytes == "table" || row[0].bytes == "index" || row[0].bytes == "view" ||
            row[0].bytes == "trigger") &&
           row[1].kind == Kind::TEXT && row[2].kind == Kind::TEXT && row[3].kind == Kind::INTEGER &&
           (row[4].kind == Kind::NOTHING || row[4].bytes.substr(0, 7) == "CREATE ");
}

class Recovery
{
  public:
    Recovery(const std::string& from, const std::string& to)
        : m_pages(from), m_database(to, m_pages.PageSize()),
          m_seen(static_cast<std::size_t>(m_pages.Count()) + 1)
    {
    }

    Recuperacao Recover()
    {
        MarkFreePages();
        FindTables();
        for (Table& table : m_tables) {
            WalkTable(table);
        }
        ForEachLeftLeaf(
            [this](std::uint32_t number, const TablePage& page) { PlaceLeaf(number, page); });
        m_database.Commit();
        return Told();
    }

  private:
    bool IsPage(std::uint32_t page) const { return page >= 1 && page <= m_pages.Count(); }

    // Pages that hold nothing: what stands in them are rows of before.
    void MarkFreePages()
    {
        std::string page;
        if (!m_pages.HasHeader() || !m_pages.Read(SCHEMA_ROOT, page)) {
            return;
        }
        std::uint32_t trunk = Read32(page, FREE_LIST_OFFSET);
        while (IsPage(trunk) && !m_seen[trunk] && m_pages.Read(trunk, page)) {
            m_seen[trunk] = true;
            const std::size_t count = Read32(page, 4);
            for (std::size_t i = 0; i < count && 8 + 4 * i + 4 <= page.size(); ++i) {
                if (const std::uint32_t leaf = Read32(page, 8 + 4 * i); IsPage(leaf)) {
                    m_seen[leaf] = true;
                }
            }
            trunk = Read32(page, 0);
        }
    }

    // The tables by the file's own schema, or where today's schema puts them if that is damaged.
    void FindTables()
    {
        std::map<std::string, TableShape> found;
        std::vector<Hole> holes;
        const auto note = [&found](const std::vector<Value>& row) {
            if (row[0].bytes == "table") {
                const std::string name(row[1].bytes);
                found[name] = {name, static_cast<std::uint32_t>(row[3].integer),
                               ColumnsOf(name, std::string(row[4].bytes))};
            }
        };
        Walk(SCHEMA_ROOT, "sqlite_schema", holes,
             {IsOfSchema, [&note](std::int64_t, const std::vector<Value>& row) { note(row); },
              [](std::int64_t) {}});
        if (!holes.empty()) {
            ForEachLeftLeaf([&](std::uint32_t number, const TablePage& page) {
                std::vector<std::string> payloads;
                const auto rows = Unpack(page, {IsOfSchema, {}, {}}, payloads);
                if (!rows || !std::all_of(rows->begin(), rows->end(), IsOfSchema)) {
                    Disclaim();
                    return;
                }
                m_seen[number] = true;
                std::for_each(rows->begin(), rows->end(), note);
            });
        }
        for (TableShape& shape : SchemaShapes(m_pages.PageSize())) {
            const auto own = found.find(shape.name);
            bool guessed = false;
            if (own != found.end() && !own->second.columns.empty()) {
                shape = own->second;
                found.erase(own);
            } else if (!holes.empty() && own == found.end()) {
                const bool taken = std::any_of(found.begin(), found.end(), [&](const auto& other) {
                    return other.second.root == shape.root;
                });
                shape.root = taken ? 0 : shape.root;
                guessed = true;
            } else {
                shape.root = 0; // an older database does not have it
            }
            m_tables.push_back({shape, guessed, {}, {}, {}});
        }
        for (const auto& other : found) {
            m_result.notCopied.push_back(other.first);
        }
    }

    void WalkTable(Table& table)
    {
        if (table.shape.root == 0) {
            if (table.guessed) {
                table.holes.push_back({});
            }
            return;
        }
        Walk(table.shape.root, table.shape.name, table.holes,
             {[&](const std::vector<Value>& row) {
                  return CanBe(table.shape, row) &&
                         (!table.guessed || row.size() == table.shape.columns.size());
              },
              [&](std::int64_t rowid, const std::vector<Value>& row) { Keep(table, rowid, row); },
              [&](std::int64_t rowid) { table.unreadable.push_back(rowid); }});
        // An empty page may be anybody's.
        if (table.guessed && table.rows.Count() == 0 && table.holes.empty()) {
            table.holes.push_back({});
        }
    }

    // A tree's rows, as they are found.
    struct Visitor {
        std::function<bool(const std::vector<Value>&)> canBe; // whether it can be a row of it
        std::function<void(std::int64_t, const std::vector<Value>&)> keep;
        std::function<void(std::int64_t)> lose; // on a sound page, but not to be read
    };

    // A leaf's rows unpacked; empty are those whose chain of pages is broken. Nothing if a row that
    // lies on the leaf as a whole is none that can be there: then the leaf is not to be believed.
    std::optional<std::vector<std::vector<Value>>>
    Unpack(const TablePage& page, const Visitor& visitor, std::vector<std::string>& payloads)
    {
        std::vector<std::vector<Value>> rows;
        payloads.clear();
        m_claimed.clear();
        payloads.reserve(page.rows.size()); // which the rows point into
        for (const LeafCell& cell : page.rows) {
            payloads.push_back(Payload(cell).value_or(""));
            rows.push_back(ReadRecord(payloads.back()).value_or(std::vector<Value>()));
            if (rows.back().empty() || !visitor.canBe(rows.back())) {
                if (cell.overflowPage == 0) {
                    Disclaim();
                    return std::nullopt;
                }
                rows.back().clear();
            }
        }
        return rows;
    }

    // Goes through a tree; what cannot be reached becomes a hole.
    void Walk(std::uint32_t root, const std::string& table, std::vector<Hole>& holes,
              const Visitor& visitor)
    {
        struct Visit {
            std::uint32_t page;
            Hole rows; // that it should hold
        };
        std::vector<Visit> visits = {
            {root, {std::numeric_limits<std::int64_t>::min(), RowRange::NO_END}}};
        std::string content;
        std::vector<std::string> payloads;
        while (!visits.empty()) {
            const Visit visit = visits.back();
            visits.pop_back();
            std::optional<TablePage> page;
            std::optional<std::vector<std::vector<Value>>> rows;
            const char* fault = nullptr;
            if (!IsPage(visit.page)) {
                fault = Tr("behind the end of the file");
            } else if (m_seen[visit.page]) {
                fault = Tr("is in use elsewhere");
            } else if (m_seen[visit.page] = true; !m_pages.Read(visit.page, content)) {
                fault = Tr("cannot be read");
            } else if (page = ReadTable(visit.page, content); !page) {
                fault = Tr("is damaged");
            } else if (!Holds(*page, visit.rows)) {
                fault = Tr("holds rows of another place");
            } else if (rows = Unpack(*page, visitor, payloads); !rows) {
                fault = Tr("holds what is no row of the table");
            }
            if (fault != nullptr) {
                m_result.damaged.push_back({visit.page, table, fault});
                holes.push_back(visit.rows);
                continue;
            }
            // The last first, so that the first is visited next.
            for (std::size_t i = page->children.size(); i-- > 0;) {
                visits.push_back({page->children[i].page,
                                  {i == 0 ? visit.rows.behind : page->children[i - 1].lastRowid,
                                   std::min(page->children[i].lastRowid, visit.rows.last)}});
            }
            for (std::size_t i = 0; i < rows->size(); ++i) {
                if ((*rows)[i].empty()) {
                    visitor.lose(page->rows[i].rowid);
                } else {
                    visitor.keep(page->rows[i].rowid, (*rows)[i]);
                }
            }
        }
    }

    std::optional<TablePage> ReadTable(std::uint32_t number, const std::string& content) const
    {
        return ReadTablePage(content, m_pages.Usable(),
                             number == SCHEMA_ROOT ? DATABASE_HEADER_BYTES : 0);
    }

    static bool Holds(const TablePage& page, const Hole& rows)
    {
        if (page.leaf) {
            return page.rows.empty() ||
                   (page.rows.front().rowid > rows.behind && page.rows.back().rowid <= rows.last);
        }
        return page.children.size() == 1 ||
               (page.children.front().lastRowid > rows.behind &&
                page.children[page.children.size() - 2].lastRowid <= rows.last);
    }

    // The row's bytes, with those on the pages that it goes on to; nothing if the chain breaks.
    std::optional<std::string> Payload(const LeafCell& cell)
    {
        if (cell.payloadBytes > MAX_ROW_BYTES) {
            return std::nullopt;
        }
        std::string payload(cell.local);
        const std::size_t before = m_claimed.size();
        std::string content;
        std::uint32_t page = cell.overflowPage;
        while (payload.size() < cell.payloadBytes) {
            if (!IsPage(page) || m_seen[page] || !m_pages.Read(page, content)) {
                break;
            }
            m_seen[page] = true;
            m_claimed.push_back(page);
            payload.append(content, 4,
                           std::min<std::size_t>(m_pages.Usable() - 4,
                                                 static_cast<std::size_t>(cell.payloadBytes) -
                                                     payload.size()));
            page = Read32(content, 0);
        }
        if (payload.size() == cell.payloadBytes && (m_claimed.size() == before || page == 0)) {
            return payload;
        }
        Disclaim(before);
        return std::nullopt;
    }

    // The pages that rows went on to, from the `first` of them on, may be another's.
    void Disclaim(std::size_t first = 0)
    {
        while (m_claimed.size() > first) {
            m_seen[m_claimed.back()] = false;
            m_claimed.pop_back();
        }
    }

    // Whether the values can be a row of the table: a column of texts holds no number, for the
    // engine makes it a text; and no text that is logged has a zero byte.
    static bool CanBe(const TableShape& shape, const std::vector<Value>& row)
    {
        if (row.empty() || row.size() > shape.columns.size()) {
            return false;
        }
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool number = row[i].kind == Kind::INTEGER || row[i].kind == Kind::REAL;
            if ((number &&
                 (shape.columns[i].affinity == Affinity::TEXT || shape.columns[i].isRowid)) ||
                (row[i].kind == Kind::TEXT && row[i].bytes.find('\0') != std::string_view::npos)) {
                return false;
            }
        }
        return true;
    }

    void Keep(Table& table, std::int64_t rowid, const std::vector<Value>& row)
    {
        m_database.Insert(table.shape, rowid, row);
        table.rows.Add(rowid);
    }

    // Sound leaves that no tree leads to.
    void ForEachLeftLeaf(const std::function<void(std::uint32_t, const TablePage&)>& each)
    {
        std::string content;
        for (std::uint32_t number = 1; number <= m_pages.Count(); ++number) {
            if (m_seen[number] || !m_pages.Read(number, content)) {
                continue;
            }
            const std::optional<TablePage> page = ReadTable(number, content);
            if (page && page->leaf && !page->rows.empty()) {
                each(number, *page);
            }
        }
    }

    // Into the hole that it fits.
    void PlaceLeaf(std::uint32_t number, const TablePage& page)
    {
        std::vector<std::string> payloads;
        const auto rows =
            Unpack(page, {[](const std::vector<Value>&) { return true; }, {}, {}}, payloads);
        if (!rows) {
            return;
        }
        Table* place = nullptr;
        for (Table& table : m_tables) {
            if (!Fits(table, page, *rows)) {
                continue;
            }
            if (place != nullptr) {
                m_result.damaged.push_back(
                    {number, "",
                     Tr("holds %1 rows of %2 or %3",
                        {std::to_string(rows->size()), place->shape.name, table.shape.name})});
                Disclaim();
                return;
            }
            place = &table;
        }
        if (place == nullptr) {
            Disclaim();
            return; // rows of before
        }
        m_seen[number] = true;
        ++m_result.leavesFound;
        for (std::size_t i = 0; i < rows->size(); ++i) {
            if ((*rows)[i].empty()) {
                place->unreadable.push_back(page.rows[i].rowid);
            } else {
                Keep(*place, page.rows[i].rowid, (*rows)[i]);
            }
        }
    }

    // Whether the leaf lies within a hole of the table's, and its rows, as far as they can be read,
    // can be the table's.
    static bool Fits(const Table& table, const TablePage& page,
                     const std::vector<std::vector<Value>>& rows)
    {
        const RowRange range = {page.rows.front().rowid, page.rows.back().rowid};
        const bool within =
            std::any_of(table.holes.begin(), table.holes.end(), [&range](const Hole& hole) {
                return range.first > hole.behind && range.last <= hole.last;
            });
        if (!within || table.rows.HasAnyOf(range)) {
            return false;
        }
        bool any = false;
        for (const std::vector<Value>& row : rows) {
            if (row.empty()) {
                continue;
            }
            if (row.size() != table.shape.columns.size() || !CanBe(table.shape, row)) {
                return false;
            }
            any = true;
        }
        return any;
    }

    Recuperacao Told()
    {
        m_result.pageSize = m_pages.PageSize();
        m_result.pages = m_pages.Count();
        m_result.hasHeader = m_pages.HasHeader();
        m_result.withLog = m_pages.Log().HasPages();
        m_result.logBytesNotRead = m_pages.Log().BytesNotRead();
        for (const Table& table : m_tables) {
            m_result.tables.push_back({table.shape.name, table.rows.Count(), Missing(table)});
        }
        std::stable_sort(
            m_result.damaged.begin(), m_result.damaged.end(),
            [](const DamagedPage& a, const DamagedPage& b) { return a.page < b.page; });
        return m_result;
    }

    static std::vector<RowRange> Missing(const Table& table)
    {
        std::vector<RowRange> missing;
        for (const Hole& hole : table.holes) {
            // Rows begin at 1.
            const RowRange range = {std::max<std::int64_t>(hole.behind, 0) + 1, hole.last};
            const std::vector<RowRange> some = table.rows.MissingOf(range);
            missing.insert(missing.end(), some.begin(), some.end());
        }
        for (const std::int64_t rowid : table.unreadable) {
            missing.push_back({rowid, rowid});
        }
        std::sort(missing.begin(), missing.end(),
                  [](const RowRange& a, const RowRange& b) { return a.first < b.first; });
        // What follows one another is one.
        std::vector<RowRange> joined;
        for (const RowRange& range : missing) {
            if (!joined.empty() && joined.back().last >= range.first - 1) {
                joined.back().last = std::max(joined.back().last, range.last);
            } else {
                joined.push_back(range);
            }
        }
        return joined;
    }

    PageFile m_pages;
    RecoveredDatabase m_database;
    std::vector<bool> m_seen;             // by the page's number
    std::vector<std::uint32_t> m_claimed; // of them, those that the rows unpacked last went on to
    std::vector<Table> m_tables;
    Recuperacao m_result;
};

} // namespace

std::int64_t Recuperacao::Rows() const
{
    return std::accumulate(
        tables.begin(), tables.end(), std::int64_t{0},
        [](std::int64_t sum, const RecoveredTable& table) { return sum + table.rows; });
}

bool Recuperacao::IsWhole() const
{
    return hasHeader && logBytesNotRead == 0 && damaged.empty() &&
           std::all_of(tables.begin(), tables.end(),
                       [](const RecoveredTable& table) { return table.missing.empty(); });
}

Recuperacao Recover(const std::string& from, const std::string& to)
{
    const Stamp before = StampOf(from);
    const Stamp logBefore = StampOf(from + "-wal");
    Recuperacao result = Recovery(from, to).Recover();
    if (StampOf(from) != before || StampOf(from + "-wal") != logBefore) {
        throw Unusable(Tr("%1: was written to while it was read", {from}));
    }
    return result;
}

} // namespace bancada::recuperacao
