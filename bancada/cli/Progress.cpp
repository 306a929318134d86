#include "bancada/cli/Progress.h"

#include "bancada/Messages.h"

#include <iostream>
#include <unistd.h>

namespace bancada
{
namespace
{

constexpr std::chrono::milliseconds FIRST_AFTER(1000);
constexpr std::chrono::milliseconds INTERVAL(200);
constexpr char WIPE[] = "\r\x1b[K"; // to the line's start, and clear it

} // namespace

Progress::Progress(const TapeReader& tape)
    : m_tape(tape), m_terminal(isatty(STDERR_FILENO) == 1), m_next(Clock::now() + FIRST_AFTER)
{
}

Progress::~Progress()
{
    if (m_shown) {
        std::cerr << WIPE << std::flush;
    }
}

void Progress::Show(std::int64_t commands)
{
    if (!m_terminal) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now < m_next) {
        return;
    }
    m_next = now + INTERVAL;
    m_shown = true;
    std::cerr << WIPE << TrCount("%1 command", "%1 commands", commands);
    if (m_tape.Size() > 0) {
        std::cerr << ", "
                  << Tr("%1 % of the tape",
                        {std::to_string(m_tape.BytesRead() * 100 / m_tape.Size())});
    }
    std::cerr << std::flush;
}

} // namespace bancada
