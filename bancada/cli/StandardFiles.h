// Standard input, output and error.
#pragma once

namespace bancada
{

// Makes sure that the three are open, so that no file of the bench is taken for one of them, and
// that writing to a pipe that nobody reads, or beyond the size that the process may give a file, is
// an error rather than the end of the program.
void OpenStandardFiles();

// Flushes standard output. Answers false, after saying why on standard error, if it could not be
// written. A reader that went away (a pager that was left) wants no more, and is no error.
[[nodiscard]] bool FlushStandardOutput();

} // namespace bancada
