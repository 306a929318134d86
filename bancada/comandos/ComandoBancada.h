// What the bench adds to a firmware command so that it can be run from a tape.
#pragma once

#include "Interpreter.h"
#include "bancada/registro/Registro.h"

#include <utility>

namespace bancada
{

class FieldVisitor;

// A command that the bench can read, run and describe. Objects come from the catalogue, are used
// for one execution and belong to whoever made them.
class ComandoBancada
{
  public:
    virtual ~ComandoBancada() = default;

    // The firmware command of which this object is a part; it lives as long as this object.
    virtual Command& GetCommand() = 0;

    // Lists every tape field of the command, once each, in the tape's order. Fields that the
    // visitor does not set keep their documented default. A command without fields lists none.
    virtual void Fields(FieldVisitor& fields) = 0;

    // Whether the host sends the command or the firmware raises it.
    virtual EOrigemCmd Origin() const { return CMD_EXTERNO; }

    // Set when the clock refuses it or InitCheck or FiscalCheck answers FALSE, empty otherwise.
    Refusal refusal;
};

// The part that every bench command shares: `Cmd` is its firmware class, which stays the object's
// own (its logger reads the members that the tape's fields filled).
template <class Cmd>
class ComandoOf : public Cmd, public ComandoBancada
{
  public:
    using Firmware = Cmd;

    // `registro` is borrowed and outlives the object.
    explicit ComandoOf(Registro& registro) : m_registro(registro) {}

    Command& GetCommand() override { return *this; }

  protected:
    // When execution ends, or starts where nobody said when it ends. REQUIRES: the executor has set
    // both, and the logger has not run.
    RtcAbsoluteTime Fim() const
    {
        return Cmd::m_dtExecEnd.s == matlong[0] ? Cmd::m_dtExecStart : Cmd::m_dtExecEnd;
    }

    // Keeps the refusal, if there is one, and gives the answer of the check that met it.
    BOOL Accept(Refusal reason)
    {
        refusal = std::move(reason);
        return refusal ? FALSE : TRUE;
    }

    Registro& m_registro;
};

} // namespace bancada
