// What becomes of a fault of the tape.
#pragma once

#include "bancada/tape/Place.h"

#include <functional>
#include <string>

namespace bancada
{

// Takes a fault, for whoever looks for all of them. An empty one takes none: the fault is thrown.
using FaultSink = std::function<void(const TapeError&)>;

// Hands the fault to `sink`, or throws it as TapeError where that is empty.
inline void ReportFault(const FaultSink& sink, const Place& place, const std::string& message)
{
    const TapeError fault(place, message);
    if (!sink) {
        throw fault;
    }
    sink(fault);
}

} // namespace bancada
