// The committed pages of a write-ahead log.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <string>

namespace bancada::recuperacao
{

// What the engine itself would take from the log: the frames up to the last commit before the first
// frame whose checksum does not fit.
class WriteAheadLog
{
  public:
    // A file that is missing, empty or no log has no pages.
    explicit WriteAheadLog(const std::string& path);

    bool HasPages() const { return !m_frames.empty(); }
    // Of the pages, in bytes; 0 where the file is no log.
    std::size_t PageSize() const { return m_pageSize; }
    // How many pages the database has by the last commit; 0 where there is none.
    std::uint32_t DatabasePages() const { return m_databasePages; }
    // Of the file, those behind the last commit.
    std::uint64_t BytesNotRead() const { return m_bytesNotRead; }

    // Reads the page as the last commit left it; false if the log does not have it.
    bool Read(std::uint32_t page, std::string& content);

  private:
    std::ifstream m_file;
    std::size_t m_pageSize = 0;
    std::uint32_t m_databasePages = 0;
    std::uint64_t m_bytesNotRead = 0;
    std::map<std::uint32_t, std::uint64_t> m_frames; // where the content of a page begins
};

} // namespace bancada::recuperacao
