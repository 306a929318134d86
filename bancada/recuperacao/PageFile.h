// The pages of a database file that may be damaged.
#pragma once

#include "bancada/recuperacao/WriteAheadLog.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

namespace bancada::recuperacao
{

// The pages as the engine would read them: those of the write-ahead log first, of the file what is
// not in it. Only reads.
class PageFile
{
  public:
    // Throws Unusable if the file cannot be read or holds no page. Of a file whose header is
    // damaged the size of its pages is what its log says, or what most of its pages look like.
    explicit PageFile(const std::string& path);

    std::size_t PageSize() const { return m_pageSize; }
    // Of a page, what tables may use.
    std::size_t Usable() const { return m_pageSize - m_reserved; }
    std::uint32_t Count() const { return m_count; }
    // Whether page 1 begins as that of a database.
    bool HasHeader() const { return m_hasHeader; }
    const WriteAheadLog& Log() const { return m_log; }

    // Page `number`, from 1 on; false if there is none or the medium does not give it.
    bool Read(std::uint32_t number, std::string& page);

  private:
    std::size_t GuessPageSize();

    std::ifstream m_file;
    std::uint64_t m_bytes = 0;
    WriteAheadLog m_log;
    std::size_t m_pageSize = 0;
    std::size_t m_reserved = 0;
    std::uint32_t m_count = 0;
    bool m_hasHeader = false;
};

} // namespace bancada::recuperacao
