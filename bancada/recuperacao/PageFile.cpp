#include "bancada/recuperacao/PageFile.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/recuperacao/BtreePage.h"
#include "bancada/recuperacao/Bytes.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string_view>

namespace bancada::recuperacao
{
namespace
{

namespace fs = std::filesystem;

// The file format's.
constexpr std::string_view MAGIC("SQLite format 3\0", 16);
constexpr std::size_t HEADER_BYTES = 100;
constexpr std::size_t MIN_PAGE_BYTES = 512;
constexpr std::size_t MAX_PAGE_BYTES = 65536;
constexpr std::size_t MAX_RESERVED_BYTES = 32; // of the smallest page 480 must be usable

bool IsPageSize(std::size_t size)
{
    return size >= MIN_PAGE_BYTES && size <= MAX_PAGE_BYTES && (size & (size - 1)) == 0;
}

bool ReadAt(std::ifstream& file, std::uint64_t at, std::size_t count, std::string& bytes)
{
    bytes.resize(count);
    file.clear();
    file.seekg(static_cast<std::streamoff>(at));
    return static_cast<bool>(file.read(bytes.data(), static_cast<std::streamsize>(count)));
}

std::string File(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        throw Unusable(Tr("%1: no such file", {path}));
    }
    if (!fs::is_regular_file(status)) {
        throw Unusable(fs::is_directory(status) ? Tr("%1: is a directory", {path})
                                                : Tr("%1: not a file", {path}));
    }
    return fs::canonical(path).string();
}

} // namespace

PageFile::PageFile(const std::string& path)
    : m_file(File(path), std::ios::binary), m_log(File(path) + "-wal")
{
    if (!m_file) {
        throw Unusable(Tr("%1: cannot be read", {path}));
    }
    m_bytes = fs::file_size(path);
    std::string header;
    if (ReadAt(m_file, 0, HEADER_BYTES, header) &&
        std::string_view(header).substr(0, MAGIC.size()) == MAGIC) {
        const std::size_t size = Read16(header, 16) == 1 ? MAX_PAGE_BYTES : Read16(header, 16);
        m_hasHeader = IsPageSize(size) && ByteAt(header, 20) <= MAX_RESERVED_BYTES;
        if (m_hasHeader) {
            m_pageSize = size;
            m_reserved = ByteAt(header, 20);
        }
    }
    if (m_log.HasPages() && m_pageSize != m_log.PageSize()) {
        // Made for a database of its own page size: it is the one whose header can be believed.
        m_pageSize = m_log.PageSize();
        m_reserved = 0;
    }
    if (m_pageSize == 0) {
        m_pageSize = GuessPageSize();
    }
    if (m_pageSize == 0) {
        throw Unusable(Tr("%1: holds no page of a database", {path}));
    }
    const std::uint64_t pages =
        std::max<std::uint64_t>(m_bytes / m_pageSize, m_log.DatabasePages());
    m_count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(pages, std::numeric_limits<std::uint32_t>::max() - 1));
}

bool PageFile::Read(std::uint32_t number, std::string& page)
{
    return number >= 1 && number <= m_count &&
           (m_log.Read(number, page) ||
            ReadAt(m_file, static_cast<std::uint64_t>(number - 1) * m_pageSize, m_pageSize, page));
}

// The size of which the most bytes are whole pages of tables: a page of another size does not take
// itself up exactly.
std::size_t PageFile::GuessPageSize()
{
    constexpr std::uint64_t MOST_PAGES = 2000; // looked at
    std::size_t best = 0;
    std::uint64_t bestBytes = 0;
    std::string page;
    for (std::size_t size = MIN_PAGE_BYTES; size <= MAX_PAGE_BYTES; size *= 2) {
        std::uint64_t bytes = 0;
        const std::uint64_t pages = std::min<std::uint64_t>(m_bytes / size, MOST_PAGES);
        for (std::uint64_t number = 1; number < pages; ++number) {
            if (ReadAt(m_file, number * size, size, page) && ReadTablePage(page, size, 0)) {
                bytes += size;
            }
        }
        if (bytes > bestBytes) {
            bestBytes = bytes;
            best = size;
        }
    }
    return best;
}

} // namespace bancada::recuperacao
