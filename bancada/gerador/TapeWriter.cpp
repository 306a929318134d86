#include "bancada/gerador/TapeWriter.h"

#include "bancada/registro/Limits.h"

#include <algorithm>

namespace bancada
{

void TapeWriter::Wait(std::int64_t instant)
{
    m_wait = std::max(instant, m_now + 1);
}

LineWriter& TapeWriter::Start(LineWriter& line)
{
    if (m_wait != 0) {
        line.Em(m_wait);
        m_now = m_wait;
        m_wait = 0;
    }
    return line;
}

void TapeWriter::Documento()
{
    m_coo = m_coo >= MAX_CONTADOR ? 1 : m_coo + 1;
}

} // namespace bancada
