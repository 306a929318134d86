// What a firmware log says was lost.
#pragma once

#include <string>
#include <vector>

namespace bancada
{

// A statement that the engine refused for itself, as the module reported it in two records: its row
// is missing, those of the command's other statements stand.
struct RejectedStatement {
    int line = 0;          // of the first record, from 1
    std::string time;      // when the command ran, "YYYY-MM-DD hh:mm:ss"
    int command = 0;       // the command's protocol code (EEscCmd)
    std::string error;     // the engine's error text
    std::string statement; // empty when its record is missing
};

// A command none of whose rows are kept.
struct LostCommand {
    int line = 0;       // of its record, from 1
    std::string time;   // when the command ran, "YYYY-MM-DD hh:mm:ss"
    std::string reason; // e.g. "database or disk is full"
};

// Each in the log's order.
struct Losses {
    std::vector<RejectedStatement> rejected;
    std::vector<LostCommand> lost;
};

// Reads a whole log, once. Throws as FirmwareLogReader does.
Losses ReadLosses(const std::string& path);

} // namespace bancada
