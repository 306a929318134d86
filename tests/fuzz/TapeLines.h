// The lines of a tape as far as they can be read.
#pragma once

#include "bancada/tape/TapeReader.h"

#include <string>
#include <vector>

struct LineRead {
    bancada::TapeCommand command;
    bancada::TapePosition behind;
};

// The lines up to the first that is none; what that one is told as comes in `error`.
inline std::vector<LineRead> ReadAll(bancada::TapeReader& tape, std::string& error)
{
    std::vector<LineRead> lines;
    try {
        bancada::TapeCommand command;
        while (tape.Next(command)) {
            lines.push_back({command, tape.Position()});
        }
    } catch (const bancada::TapeError& fault) {
        error = fault.what();
    }
    return lines;
}
