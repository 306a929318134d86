// INT and TERM as requests to end.
#pragma once

namespace bancada
{

// While it lives, the first INT or TERM is taken down instead of ending the program, so that what
// is being done can be done to its end. A second one ends the program at once, and so does the
// first where the signal is to be ignored or another of these lives. One at a time.
class Interruption
{
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // The number of the signal that came, or 0.
    int Signal() const;

    // Waits until `file`, a descriptor, can be read or has ended. Answers false, at once, when a
    // signal came before or meanwhile.
    [[nodiscard]] bool WaitToRead(int file) const;
};

// Ends the program by `signal`, as it would have ended without an Interruption, so that whoever
// started it can tell.
[[noreturn]] void EndBySignal(int signal);

} // namespace bancada
