#include "bancada/tape/TapeClock.h"

#include "bancada/Messages.h"

#include <limits>

namespace bancada
{

RtcAbsoluteTime TapeClock::Next(const TapeCommand& command)
{
    RtcAbsoluteTime inicio;
    if (command.em) {
        inicio = *command.em;
    } else {
        if (!m_last) {
            throw TapeError(command.place,
                            Tr("the first command of a tape needs the field \"em\""));
        }
        if (m_last->s == std::numeric_limits<UINT32>::max()) {
            throw TapeError(command.place, Tr("the clock ends at 2106-02-07 06:28:15"));
        }
        inicio = RtcAbsoluteTime(m_last->s + 1);
    }
    const RtcAbsoluteTime fim = command.fim.value_or(inicio);
    if (fim.s < inicio.s) {
        throw TapeError(command.fimPlace, Tr("field \"fim\": the command ends before it starts"));
    }
    m_last = fim;
    return inicio;
}

void TapeClock::Continue(RtcAbsoluteTime last)
{
    if (last.s == matlong[0]) {
        m_last.reset();
    } else {
        m_last = last;
    }
}

} // namespace bancada
