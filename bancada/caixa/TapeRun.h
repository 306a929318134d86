// A tape that is run on a register, and the memory that the register is kept in.
#pragma once

#include "bancada/caixa/Caixa.h"
#include "bancada/memoria/MemoriaFile.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"

#include <cstdint>
#include <memory>
#include <string>

namespace bancada
{

// docs/memory.md tells what a memory promises; without one the register begins as it leaves the
// factory.
class TapeRun
{
  public:
    // Opens or makes `database` as Caixa does; with a memory it must be the one that the memory
    // belongs to. `tape` is borrowed and outlives this; of `memory`, which is null where none is
    // kept, nothing was settled. Throws Unusable; the memory then is as it was.
    TapeRun(TapeReader& tape, const std::string& database, LogDatabase::Options options,
            std::unique_ptr<MemoriaFile> memory);

    // Takes the register up where the memory left it, and the tape if it is the same one. Answers
    // the line behind which the tape goes on, 0 at its beginning. To be called once, before the
    // first line; does nothing without a memory. Throws Unusable.
    [[nodiscard]] int TakeUp();

    // Runs a line of the tape. When it returns, what the line did is durable in memory and
    // database. Throws TapeError, nothing having changed, for a line that is no command with its
    // fields, and Unusable where the memory cannot be written; then the register must not go on.
    [[nodiscard]] Answer Execute(const TapeCommand& line);

    // Writes the memory whole, if there is one. Throws Unusable.
    void Fold();

    Caixa& GetCaixa() { return m_caixa; }
    const Caixa& GetCaixa() const { return m_caixa; }
    // Null where none is kept.
    const MemoriaFile* Memory() const { return m_memory.get(); }

  private:
    static LogDatabase::Options WithMemory(LogDatabase::Options options, const MemoriaFile* memory,
                                           const std::string& database);
    CommandProgress Progressed() const;
    void KeepPending();
    void Keep(const TapeCommand& line, const Answer& answer);

    TapeReader& m_tape;
    TapeClock m_clock;
    std::unique_ptr<MemoriaFile> m_memory;
    Caixa m_caixa;
};

} // namespace bancada
