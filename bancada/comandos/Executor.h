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
struct Resultado {
    bool executado = false; // its fiscal effects were applied
    Recusa recusa;          // why it was refused; empty when it was executed
    bool registrado = true; // its rows, if it has any, are in the database for good
};

class Executor
{
  public:
    // Both are borrowed and outlive the executor.
    Executor(Registro& registro, LogDatabase& banco);

    // Runs the steps of `comando` in the order of their slots, as begun at the instant `em`. A
    // command that InitCheck or FiscalCheck refuses has no effect on register or database. The
    // logger's rows are committed together once the register is as the command leaves it, before
    // the reply is filled.
    Resultado Executa(ComandoBancada& comando, RtcAbsoluteTime em);

    // Called for each command that is executed right before its rows are committed, within their
    // transaction; what it throws comes out of Executa, and the rows are not committed.
    void SetAntesDeConfirmar(std::function<void()> chamada)
    {
        m_antesDeConfirmar = std::move(chamada);
    }

  private:
    Registro& m_registro;
    LogDatabase& m_banco;
    std::function<void()> m_antesDeConfirmar;
    int m_sequencia = 0; // commands run so far, refused ones included
};

} // namespace bancada
