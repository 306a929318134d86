#include "bancada/recuperacao/WriteAheadLog.h"

#include "bancada/recuperacao/Bytes.h"

#include <string_view>

namespace bancada::recuperacao
{
namespace
{

// The file format's.
constexpr std::size_t HEADER_BYTES = 32;
constexpr std::size_t FRAME_HEADER_BYTES = 24;
constexpr std::uint32_t MAGIC = 0x377F0682; // and its last bit: checksums of big-endian words
constexpr std::uint32_t VERSION = 3007000;
constexpr std::size_t MIN_PAGE_BYTES = 512;
constexpr std::size_t MAX_PAGE_BYTES = 65536;

struct Checksum {
    std::uint32_t first = 0;
    std::uint32_t second = 0;

    void Add(std::string_view bytes, bool bigEndian)
    {
        for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
            first += Word(bytes, at, bigEndian) + second;
            second += Word(bytes, at + 4, bigEndian) + first;
        }
    }

    bool StandsAt(std::string_view bytes, std::size_t at) const
    {
        return Read32(bytes, at) == first && Read32(bytes, at + 4) == second;
    }

  private:
    static std::uint32_t Word(std::string_view bytes, std::size_t at, bool bigEndian)
    {
        const std::uint32_t word = Read32(bytes, at);
        return bigEndian
                   ? word
                   : word << 24U | (word & 0xFF00U) << 8U | (word >> 8U & 0xFF00U) | word >> 24U;
    }
};

bool ReadBytes(std::ifstream& file, std::size_t count, std::string& bytes)
{
    bytes.resize(count);
    return static_cast<bool>(file.read(bytes.data(), static_cast<std::streamsize>(count)));
}

} // namespace

WriteAheadLog::WriteAheadLog(const std::string& path) : m_file(path, std::ios::binary)
{
    m_file.seekg(0, std::ios::end);
    if (!m_file) {
        return;
    }
    m_bytesNotRead = static_cast<std::uint64_t>(m_file.tellg());
    m_file.seekg(0);
    std::string header;
    if (!ReadBytes(m_file, HEADER_BYTES, header)) {
        return;
    }
    const std::uint32_t magic = Read32(header, 0);
    const std::size_t pageSize = Read32(header, 8);
    const bool bigEndian = (magic & 1U) != 0;
    Checksum sum;
    sum.Add(std::string_view(header).substr(0, 24), bigEndian);
    if ((magic & ~1U) != MAGIC || Read32(header, 4) != VERSION || !sum.StandsAt(header, 24) ||
        pageSize < MIN_PAGE_BYTES || pageSize > MAX_PAGE_BYTES ||
        (pageSize & (pageSize - 1)) != 0) {
        return;
    }
    m_pageSize = pageSize;

    std::map<std::uint32_t, std::uint64_t> uncommitted;
    std::uint64_t at = HEADER_BYTES;
    std::uint64_t committed = at;
    m_bytesNotRead -= at;
    std::string frame;
    while (ReadBytes(m_file, FRAME_HEADER_BYTES + pageSize, frame)) {
        const std::uint32_t page = Read32(frame, 0);
        sum.Add(std::string_view(frame).substr(0, 8), bigEndian);
        sum.Add(std::string_view(frame).substr(FRAME_HEADER_BYTES), bigEndian);
        if (page == 0 || frame.compare(8, 8, header, 16, 8) != 0 || !sum.StandsAt(frame, 16)) {
            break;
        }
        uncommitted[page] = at + FRAME_HEADER_BYTES;
        at += frame.size();
        if (const std::uint32_t pages = Read32(frame, 4); pages != 0) {
            m_databasePages = pages;
            for (const auto& [number, place] : uncommitted) {
                m_frames[number] = place;
            }
            m_bytesNotRead -= at - committed;
            committed = at;
            uncommitted.clear();
        }
    }
}

bool WriteAheadLog::Read(std::uint32_t page, std::string& content)
{
    const auto frame = m_frames.find(page);
    if (frame == m_frames.end()) {
        return false;
    }
    m_file.clear();
    m_file.seekg(static_cast<std::streamoff>(frame->second));
    return ReadBytes(m_file, m_pageSize, content);
}

} // namespace bancada::recuperacao
