#include "bancada/tape/TapeReader.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/tape/Instant.h"
#include "bancada/tape/LineParser.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::size_t BUFFER_BYTES = 64 * 1024;

// Within a line, or at its end.
bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Null, and reported, where the field is no text.
const std::string* CommonText(const TapeField& field, const FaultSink& sink)
{
    if (field.value.kind != TapeValue::Kind::TEXT) {
        ReportFault(
            sink, field.valuePlace,
            Tr("field \"%1\": a text is due, not %2", {field.name, KindName(field.value.kind)}));
        return nullptr;
    }
    return &field.value.text;
}

std::optional<RtcAbsoluteTime> CommonInstant(const TapeField& field, const FaultSink& sink)
{
    const std::string* text = CommonText(field, sink);
    RtcAbsoluteTime instant;
    if (text == nullptr) {
        return std::nullopt;
    }
    if (!ParseInstant(*text, instant)) {
        ReportFault(sink, field.valuePlace,
                    Tr("field \"%1\": an instant \"YYYY-MM-DD hh:mm:ss\" is due, after "
                       "1970-01-01 00:00:00 and up to 2106-02-07 06:28:15",
                       {field.name}));
        return std::nullopt;
    }
    return instant;
}

void ReadName(const TapeField& field, TapeCommand& command, const FaultSink& sink)
{
    const std::string* name = CommonText(field, sink);
    if (name == nullptr) {
        return;
    }
    command.name = *name;
    command.namePlace = field.valuePlace;
    if (name->empty()) {
        ReportFault(sink, field.valuePlace, Tr("field \"cmd\": the name of a command is due"));
    }
}

// Takes the fields that every command has out of the others.
TapeCommand CommandOf(TapeLine line, const FaultSink& sink)
{
    TapeCommand command;
    command.place = line.place;
    bool named = false;
    for (TapeField& field : line.fields) {
        if (field.name == "cmd") {
            named = true;
            ReadName(field, command, sink);
        } else if (field.name == "em") {
            command.em = CommonInstant(field, sink);
            command.emPlace = field.namePlace;
        } else if (field.name == "fim") {
            command.fim = CommonInstant(field, sink);
            command.fimPlace = field.namePlace;
        } else if (field.name == "obs") {
            static_cast<void>(CommonText(field, sink));
        } else {
            command.fields.push_back(std::move(field));
        }
    }
    if (!named) {
        ReportFault(sink, line.place, Tr("the line needs the field \"cmd\""));
    }
    return command;
}

} // namespace

TapeReader::TapeReader(const std::string& path, Wait wait, Digest digest)
    : m_path(path), m_wait(std::move(wait)), m_buffer(BUFFER_BYTES), m_takes(digest)
{
    m_file = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (m_file < 0 || fstat(m_file, &status) != 0) {
        throw Unusable(Tr("cannot read the tape %1: %2", {path, SystemReason(errno)}));
    }
    if (S_ISDIR(status.st_mode)) {
        // Said before anything is made for the tape.
        if (m_file != STDIN_FILENO) {
            close(m_file);
        }
        throw Unusable(Tr("cannot read the tape %1: %2", {path, SystemReason(EISDIR)}));
    }
    if (S_ISREG(status.st_mode)) {
        m_size = status.st_size;
    }
}

TapeReader::~TapeReader()
{
    if (m_file != STDIN_FILENO) {
        close(m_file);
    }
}

bool TapeReader::FillBuffer()
{
    m_ended = m_ended || (m_wait && !m_wait(m_file));
    if (m_ended) {
        return false;
    }
    m_at = 0;
    m_end = ReadInto(0);
    return m_end > 0;
}

// Reads what comes next into the buffer from `at` on; answers how many bytes.
std::size_t TapeReader::ReadInto(std::size_t at)
{
    ssize_t count = 0;
    do {
        count = read(m_file, m_buffer.data() + at, m_buffer.size() - at);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw Unusable(Tr("cannot read the tape %1: %2", {m_path, SystemReason(errno)}));
    }
    m_bytes += count;
    return static_cast<std::size_t>(count);
}

bool TapeReader::IsEmpty()
{
    assert(m_bytes == 0);
    while (m_end < m_buffer.size() && (!m_wait || m_wait(m_file))) {
        const std::size_t count = ReadInto(m_end);
        if (count == 0) {
            return true;
        }
        const char* read = m_buffer.data() + m_end;
        m_end += count;
        if (!std::all_of(read, read + count, IsBlank)) {
            break;
        }
    }
    return false;
}

// Moves on within the buffer.
void TapeReader::Take(std::size_t bytes)
{
    if (bytes == 0) {
        return;
    }
    if (m_takes == Digest::TAKEN) {
        m_digest.Add({m_buffer.data() + m_at, bytes});
    }
    m_at += bytes;
    m_last = m_buffer[m_at - 1];
}

// Answers false if the tape has not so many bytes.
bool TapeReader::Skip(std::int64_t bytes)
{
    while (bytes > 0) {
        if (m_at == m_end && !FillBuffer()) {
            return false;
        }
        const auto count = std::min(bytes, static_cast<std::int64_t>(m_end - m_at));
        Take(static_cast<std::size_t>(count));
        bytes -= count;
    }
    return true;
}

TapePosition TapeReader::Position() const
{
    TapePosition position;
    position.line = m_line;
    position.bytes = m_bytes - static_cast<std::int64_t>(m_end - m_at);
    if (position.bytes > 0 && m_takes == Digest::TAKEN) {
        position.digest = m_digest.Hex();
    }
    return position;
}

bool TapeReader::Continue(const TapePosition& position)
{
    assert(m_takes == Digest::TAKEN);
    if (position.bytes == 0) {
        return true;
    }
    if (Skip(position.bytes) && m_digest.Hex() == position.digest) {
        // If its last line had no end, the rest of that line comes next.
        m_line = m_last == '\n' ? position.line : position.line - 1;
        return true;
    }
    if (m_ended) {
        return false; // it was not read so far
    }
    if (lseek(m_file, 0, SEEK_SET) != 0) {
        throw Unusable(Tr(
            "cannot read the tape %1 from its first line: it is not the one that was read before, and a pipe is read once; give it as a file",
            {m_path}));
    }
    m_bytes = 0;
    m_at = m_end = 0;
    m_last = '\n';
    m_digest.Reset();
    return false;
}

// Passes over what is left of a line that was too long.
void TapeReader::PassOverLine()
{
    while (m_tooLong && (m_at < m_end || FillBuffer())) {
        const char* begin = m_buffer.data() + m_at;
        const char* end = m_buffer.data() + m_end;
        const char* lineEnd = std::find(begin, end, '\n');
        m_tooLong = lineEnd == end;
        Take(static_cast<std::size_t>(lineEnd - begin) + (m_tooLong ? 0 : 1));
    }
}

// Reads a line without its end; false at the end of the tape.
bool TapeReader::ReadLine(std::string& line)
{
    line.clear();
    PassOverLine();
    if (m_at == m_end && !FillBuffer()) {
        return false;
    }
    ++m_line;
    do {
        const char* begin = m_buffer.data() + m_at;
        const char* end = m_buffer.data() + m_end;
        const char* lineEnd = std::find(begin, end, '\n');
        line.append(begin, lineEnd);
        Take(static_cast<std::size_t>(lineEnd - begin));
        if (line.size() > MAX_LINE_BYTES) {
            m_tooLong = true;
            throw TapeError({m_path, m_line, static_cast<int>(MAX_LINE_BYTES) + 1},
                            Tr("a line has at most %1 bytes", {std::to_string(MAX_LINE_BYTES)}));
        }
        if (lineEnd != end) {
            Take(1);
            break;
        }
    } while (FillBuffer());
    if (m_ended) {
        return false; // within the line
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

bool TapeReader::Next(TapeCommand& command)
{
    return Read(command, nullptr);
}

bool TapeReader::Next(TapeCommand& command, const FaultSink& sink)
{
    try {
        return Read(command, sink);
    } catch (const TapeError& fault) {
        // No more can be read of the line.
        sink(fault);
        command = TapeCommand();
        command.place = fault.GetPlace();
        return true;
    }
}

bool TapeReader::Read(TapeCommand& command, const FaultSink& sink)
{
    std::string line;
    while (ReadLine(line)) {
        if (std::all_of(line.begin(), line.end(), IsBlank)) {
            continue;
        }
        command = CommandOf(ParseLine(line, m_path, m_line), sink);
        return true;
    }
    return false;
}

} // namespace bancada
