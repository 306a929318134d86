// Runs commands: the pipeline of a command's steps, its logger inside a database transaction.
#pragma once

#include "RtcClasses.h"
#include "bancada/comandos/ComandoBancada.h"

#include <functional>
#include <utility>

namespace bancada
{

class LogDatabase;

// What became of a command.
struct [[nodiscard]] Outcome {
    bool executed = false; // its fiscal effects were applied
    Refusal refusal;       // why it was refused; empty when it was executed
    bool kept = true;      // its rows, if it has any, are in the database for good
};

class Executor
{
  public:
    // Both are borrowed and outlive the executor.
    Executor(Registro& registro, LogDatabase& database);

    // Runs the steps of `comando` in the order of their slots, as begun at the instant `em` and
    // ended at `fim`, which the command keeps and its logger reads. Where `fim` is unset, the
    // logger does not know the end, and the command is said to have taken a second afterwards. A
    // command that the clock, InitCheck or FiscalCheck refuses has no effect on register or
    // database. The logger's rows are committed together once the register is as the command leaves
    // it, before the reply is filled.
    Outcome Execute(ComandoBancada& comando, RtcAbsoluteTime em,
                    RtcAbsoluteTime fim = RtcAbsoluteTime(matlong[0]));

    // Called for each command that is executed right before its rows are committed, within their
    // transaction; what it throws comes out of Execute, and the rows are not committed.
    void SetBeforeCommit(std::function<void()> call) { m_beforeCommit = std::move(call); }

  private:
    Registro& m_registro;
    LogDatabase& m_database;
    std::function<void()> m_beforeCommit;
    int m_sequence = 0; // commands run so far, refused ones included
};

} // namespace bancada
