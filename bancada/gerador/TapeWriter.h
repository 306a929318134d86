// The tape as it grows: its lines, its clock and the numbers of its documents.
#pragma once

#include "bancada/gerador/LineWriter.h"

#include <cstdint>
#include <ostream>

namespace bancada
{

// Instants are seconds since 1970.
class TapeWriter
{
  public:
    // `out` is borrowed and outlives the writer. The command before the first started at `start`.
    TapeWriter(std::ostream& out, std::int64_t start) : m_out(out), m_now(start) {}

    // A line that is no command: it takes no time.
    LineWriter Directive(const char* name) { return {m_out, name}; }

    // A command one second after the one before it.
    LineWriter Line(const char* comando)
    {
        ++m_now;
        return {m_out, comando};
    }

    // The next command starts at `instant`, or as soon as the one before it allows. It has to be
    // one that calls Start.
    void Wait(std::int64_t instant);

    // Says when the command of `line` starts, if there was a wait; answers `line`.
    LineWriter& Start(LineWriter& line);

    // The command written last is a document: it takes the next number.
    void Documento();
    // The number of the document issued last; 0 before the first.
    std::int64_t COO() const { return m_coo; }

    // When the command written last starts.
    std::int64_t Now() const { return m_now; }

    // Whether everything so far could be written.
    bool Good() const { return m_out.good(); }

  private:
    std::ostream& m_out;
    std::int64_t m_now;
    std::int64_t m_wait = 0; // when the next command is to start, if it is to wait
    std::int64_t m_coo = 0;
};

} // namespace bancada
