// Reads a tape, line by line.
#pragma once

#include "bancada/Sha256.h"
#include "bancada/tape/FaultSink.h"
#include "bancada/tape/TapeCommand.h"
#include "bancada/tape/TapePosition.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bancada
{

// No command needs a thousandth of this; a file that is no tape is not read into memory whole.
inline constexpr std::size_t MAX_LINE_BYTES = 1024 * 1024;

// A tape is JSON Lines: one object a line, UTF-8, lines ended by LF or CR LF, the last one with or
// without. Lines of nothing but blanks are passed over. A byte order mark before the first is too.
class TapeReader
{
  public:
    // Waits until the descriptor can be read, or answers false: the tape then ends there.
    using Wait = std::function<bool(int file)>;

    // Whether Position has the digest, which takes the SHA-256 of the whole tape: for Continue
    // alone.
    enum class Digest {
        TAKEN,
        LEFT_OUT
    };

    // "-" is standard input. Throws Unusable if the file cannot be opened. `wait`, where it is
    // given, is asked before each reading of the file.
    explicit TapeReader(const std::string& path, Wait wait = nullptr,
                        Digest digest = Digest::TAKEN);
    ~TapeReader();
    TapeReader(const TapeReader&) = delete;
    TapeReader& operator=(const TapeReader&) = delete;

    // Reads the next command into `command`. Answers false, and leaves it unchanged, at the end of
    // the tape. Throws TapeError for a line that is no command, and Unusable if the file cannot be
    // read. The next call goes on behind the line, also behind a faulty one.
    [[nodiscard]] bool Next(TapeCommand& command);
    // Likewise, but hands each fault of the line to `sink`; the command then has what is left of
    // the line, and no name where that cannot be read.
    [[nodiscard]] bool Next(TapeCommand& command, const FaultSink& sink);

    // Whether there is nothing but blanks until the tape ends. Waits for the first line of a pipe;
    // a tape that `wait` ended before it is not known to be empty. REQUIRES: nothing was read.
    [[nodiscard]] bool IsEmpty();

    // Behind the line that was read last.
    TapePosition Position() const;

    // Goes on behind `position` and answers true if the tape begins with the bytes that were read
    // until then. If not, answers false and the tape is read from its first line; throws Unusable
    // if that cannot be, because it is a pipe. REQUIRES: nothing was read, Digest::TAKEN.
    [[nodiscard]] bool Continue(const TapePosition& position);

    std::int64_t BytesRead() const { return m_bytes; }
    // Of the file, or 0 where that is not known (a pipe).
    std::int64_t Size() const { return m_size; }

  private:
    bool Read(TapeCommand& command, const FaultSink& sink);
    bool ReadLine(std::string& line);
    void PassOverLine();
    bool FillBuffer();
    std::size_t ReadInto(std::size_t at);
    bool Skip(std::int64_t bytes);
    void Take(std::size_t bytes);

    std::string m_path;
    Wait m_wait;
    bool m_ended = false;   // as m_wait has it
    bool m_tooLong = false; // the rest of the last line is to be passed over
    int m_file = -1;
    int m_line = 0;
    std::int64_t m_bytes = 0;
    std::int64_t m_size = 0;
    std::vector<char> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    char m_last = '\n'; // the byte taken last
    Digest m_takes;
    Sha256 m_digest; // of the bytes taken
};

} // namespace bancada
