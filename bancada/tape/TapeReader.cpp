#include "bancada/tape/TapeReader.h"

#include "bancada/Unusable.h"
#include "bancada/tape/Instant.h"
#include "bancada/tape/LineParser.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::size_t BUFFER_BYTES = 64 * 1024;

std::string CommonText(const TapeField& field)
{
    if (field.value.kind != TapeValue::Kind::TEXT) {
        throw TapeError(field.valuePlace, "field \"" + field.name + "\": a text is due, not " +
                                              KindName(field.value.kind));
    }
    return field.value.text;
}

RtcAbsoluteTime CommonInstant(const TapeField& field)
{
    RtcAbsoluteTime instant;
    if (!ParseInstant(CommonText(field), instant)) {
        throw TapeError(field.valuePlace,
                        "field \"" + field.name +
                            "\": an instant \"YYYY-MM-DD hh:mm:ss\" is due, after "
                            "1970-01-01 00:00:00 and up to 2106-02-07 06:28:15");
    }
    return instant;
}

// Takes the fields that every command has out of the others.
TapeCommand CommandOf(TapeLine line)
{
    TapeCommand command;
    command.place = line.place;
    for (TapeField& field : line.fields) {
        if (field.name == "cmd") {
            command.name = CommonText(field);
            command.namePlace = field.valuePlace;
            if (command.name.empty()) {
                throw TapeError(field.valuePlace, "field \"cmd\": the name of a command is due");
            }
        } else if (field.name == "em") {
            command.em = CommonInstant(field);
            command.emPlace = field.namePlace;
        } else if (field.name == "fim") {
            command.fim = CommonInstant(field);
            command.fimPlace = field.namePlace;
        } else if (field.name == "obs") {
            CommonText(field);
        } else {
            command.fields.push_back(std::move(field));
        }
    }
    if (command.name.empty()) {
        throw TapeError(line.place, "the line needs the field \"cmd\"");
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
        throw Unusable("cannot read the tape " + path + ": " + std::strerror(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        // Said before anything is made for the tape.
        if (m_file != STDIN_FILENO) {
            close(m_file);
        }
        throw Unusable("cannot read the tape " + path + ": " + std::strerror(EISDIR));
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
    ssize_t count = 0;
    do {
        count = read(m_file, m_buffer.data(), m_buffer.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw Unusable("cannot read the tape " + m_path + ": " + std::strerror(errno));
    }
    m_at = 0;
    m_end = static_cast<std::size_t>(count);
    m_bytes += count;
    return count > 0;
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
        throw Unusable("cannot read the tape " + m_path +
                       " from its first line: it is not the one that was read before, and a pipe "
                       "is read once; give it as a file");
    }
    m_bytes = 0;
    m_at = m_end = 0;
    m_last = '\n';
    m_digest.Reset();
    return false;
}

// Reads a line without its end; false at the end of the tape.
bool TapeReader::ReadLine(std::string& line)
{
    line.clear();
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
            throw TapeError({m_path, m_line, static_cast<int>(MAX_LINE_BYTES) + 1},
                            "a line has at most " + std::to_string(MAX_LINE_BYTES) + " bytes");
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
    std::string line;
    while (ReadLine(line)) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        command = CommandOf(ParseLine(line, m_path, m_line));
        return true;
    }
    return false;
}

} // namespace bancada
