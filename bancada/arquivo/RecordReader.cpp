#include "bancada/arquivo/RecordReader.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace bancada::arquivo
{
namespace
{

constexpr std::size_t BUFFER_BYTES = 64 * 1024;
// The longest record has 272 positions; whatever has a longer line is no such file, and must not
// fill the memory.
constexpr std::size_t MAX_LINE_BYTES = 1024;

// What stands in a message of what was found.
std::string Shown(std::string_view text)
{
    std::string shown = "\"";
    for (const char c : text) {
        shown += c >= ' ' && c <= '~' ? c : '?';
    }
    return shown + "\"";
}

} // namespace

RecordReader::RecordReader(std::string path) : m_path(std::move(path)), m_buffer(BUFFER_BYTES)
{
    m_file = open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_file < 0) {
        throw Unusable(m_path + ": " + SystemReason(errno));
    }
}

RecordReader::~RecordReader()
{
    close(m_file);
}

bool RecordReader::FillBuffer()
{
    m_bufferOffset += static_cast<std::int64_t>(m_end);
    m_at = m_end = 0;
    ssize_t got = 0;
    do {
        got = read(m_file, m_buffer.data(), m_buffer.size());
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        throw Unusable(m_path + ": " + SystemReason(errno));
    }
    m_end = static_cast<std::size_t>(got);
    return got > 0;
}

bool RecordReader::ReadLine(std::string& line)
{
    line.clear();
    m_recordOffset = m_bufferOffset + static_cast<std::int64_t>(m_at);
    for (;;) {
        if (m_at == m_end && !FillBuffer()) {
            break;
        }
        const char* begin = m_buffer.data() + m_at;
        const void* found = std::memchr(begin, '\n', m_end - m_at);
        const std::size_t size =
            found == nullptr ? m_end - m_at
                             : static_cast<std::size_t>(static_cast<const char*>(found) - begin);
        if (line.size() + size > MAX_LINE_BYTES) {
            ++m_number;
            Fail(Tr("the line is longer than any record"));
        }
        line.append(begin, size);
        m_at += size;
        if (found != nullptr) {
            ++m_at;
            ++m_number;
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            return true;
        }
    }
    if (line.empty()) {
        return false;
    }
    ++m_number;
    return true;
}

void RecordReader::Fail(const std::string& what) const
{
    throw Unusable(m_path + ":" + std::to_string(m_number) + ": " + what);
}

void RecordReader::Fail(const Record& record, const char* field, const std::string& what) const
{
    const Leiaute& leiaute = record.GetLeiaute();
    throw Unusable(m_path + ":" + std::to_string(record.Number()) + ": " +
                   Tr("%1: %2, not %3", {PlaceOf(leiaute, leiaute.fields[leiaute.IndexOf(field)]),
                                         what, Shown(record.Raw(field))}));
}

bool RecordReader::Next(Record& record)
{
    std::string line;
    while (ReadLine(line)) {
        const std::string_view type = std::string_view(line).substr(0, 3);
        const Leiaute* leiaute = FindLeiaute(type);
        if (leiaute == nullptr) {
            Fail(
                Tr("a record begins with its type, E01 to E21 or EAD, not with %1", {Shown(type)}));
        }
        if (type < m_type) {
            Fail(Tr("%1 stands behind %2: the types of a file come in rising order",
                    {type, m_type}));
        }
        m_type = type;
        const bool empty = leiaute->IsPrefixed() && line.size() == PREFIX_WIDTH;
        if (!empty && line.size() != leiaute->Width()) {
            Fail(Tr("%1 has %2 positions, not %3",
                    {type, std::to_string(leiaute->Width()), std::to_string(line.size())}));
        }
        for (const Field& field : leiaute->fields) {
            if (empty && field.Begin() >= PREFIX_WIDTH) {
                break;
            }
            const std::string_view text =
                std::string_view(line).substr(field.Begin(), field.Size());
            const std::string fault = FaultOf(field, text);
            if (!fault.empty()) {
                Fail(Tr("%1: %2, not %3", {PlaceOf(*leiaute, field), fault, Shown(text)}));
            }
        }
        if (empty) {
            continue;
        }
        record = Record(*leiaute, std::move(line), m_number);
        return true;
    }
    return false;
}

void RecordReader::SeekTo(std::int64_t offset, std::int64_t number)
{
    const std::int64_t inside = offset - m_bufferOffset;
    if (inside >= 0 && inside <= static_cast<std::int64_t>(m_end)) {
        m_at = static_cast<std::size_t>(inside);
    } else {
        if (lseek(m_file, static_cast<off_t>(offset), SEEK_SET) < 0) {
            throw Unusable(m_path + ": " + SystemReason(errno));
        }
        m_bufferOffset = offset;
        m_at = m_end = 0;
    }
    m_number = number - 1;
    m_type.clear();
}

} // namespace bancada::arquivo
