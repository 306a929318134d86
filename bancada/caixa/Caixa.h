// The assembled register.
#pragma once

#include "bancada/banco/LogDatabase.h"
#include "bancada/comandos/Executor.h"
#include "bancada/log/FirmwareLog.h"
#include "bancada/registro/Registro.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace bancada
{

class TapeClock;
struct TapeCommand;

// What became of a line of the tape.
struct Answer {
    enum class Fate {
        CONFIGURED, // a directive: it set the bench or the clock, and has no part in the database
        REFUSED,    // the register did not execute the command
        KEPT,       // executed; the rows that it has, but for rejected ones, are there for good
        LOST,       // executed; none of its rows is kept
    };

    Fate fate = Fate::REFUSED;
    std::string reason;        // of what was refused or lost; else empty
    std::int64_t rejected = 0; // statements that the engine refused for themselves

    bool Executed() const { return fate == Fate::KEPT || fate == Fate::LOST; }
};

// A register, the firmware around it and its logging database, put together as a device has them.
// Several may live at a time; whichever executes is the one that the module's log entries and its
// question for the setting of subtotal adjustments come to.
//
// Not for more than one thread.
class Caixa
{
  public:
    // Opens or makes `database` as LogDatabase does, throwing what it throws; the register begins
    // with the state `memoria`. The firmware log has no file until OpenLog.
    explicit Caixa(const std::string& database, const LogDatabase::Options& options = {},
                   const Memoria& memoria = Memoria());
    Caixa(const Caixa&) = delete;
    Caixa& operator=(const Caixa&) = delete;

    // Appends the firmware log to this file from now on. Throws Unusable. REQUIRES: none is open.
    void OpenLog(const std::string& path) { m_log.Open(path); }

    // Runs a line of the tape, a command from and to the instants that `clock` gives it. Throws
    // TapeError for a line that is no command with its fields; then nothing has changed.
    [[nodiscard]] Answer Run(const TapeCommand& line, TapeClock& clock);

    // The two halves of Run for a command: makes it, its fields filled from the line, ...
    [[nodiscard]] std::unique_ptr<ComandoBancada> Read(const TapeCommand& line);
    // ... and executes it, as begun at the instant `em` and ended at `fim`, unset where nobody
    // says.
    [[nodiscard]] Answer Execute(ComandoBancada& command, RtcAbsoluteTime em,
                                 RtcAbsoluteTime fim = RtcAbsoluteTime(matlong[0]));

    // To be called behind the reply to a line: after a Z reduction the device has nothing to do,
    // and the database's write-ahead log is copied (LogDatabase::Rest).
    void RestAfter(const TapeCommand& line);

    // Called for each command that is executed right before its rows are committed, within their
    // transaction; what it throws comes out of Execute, and the rows are not committed.
    void SetBeforeCommit(std::function<void()> call)
    {
        m_executor.SetBeforeCommit(std::move(call));
    }

    Registro& GetRegistro() { return m_registro; }
    const Registro& GetRegistro() const { return m_registro; }
    LogDatabase& Database() { return m_database; }
    const LogDatabase& Database() const { return m_database; }
    FirmwareLog& Log() { return m_log; }
    const FirmwareLog& Log() const { return m_log; }

  private:
    Answer RunAcertaRelogio(const TapeCommand& line, TapeClock& clock);
    Answer RunCancelaAberto(const TapeCommand& line, TapeClock& clock);

    FirmwareLog m_log;
    Registro m_registro;
    LogDatabase m_database;
    Executor m_executor;
};

} // namespace bancada
