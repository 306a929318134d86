// Reads a firmware log back.
#pragma once

#include <fstream>
#include <string>

namespace bancada
{

struct FirmwareLogRecord {
    int line = 0;     // in the file, from 1
    std::string time; // "YYYY-MM-DD hh:mm:ss"
    std::string text; // as it was given to FirmwareLog::Write
};

// Reads the records of a log in their order. A line that is no record (a write cut short, something
// else in the file) is skipped and counted.
class FirmwareLogReader
{
  public:
    // Throws Unusable if `path` cannot be opened.
    explicit FirmwareLogReader(const std::string& path);

    // Reads the next record. Answers false at the end, and leaves `record` unchanged then. Throws
    // Unusable if the file cannot be read.
    bool Next(FirmwareLogRecord& record);

    int DamagedLines() const { return m_damaged; }

  private:
    std::string m_path;
    std::ifstream m_file;
    int m_line = 0;
    int m_damaged = 0;
};

} // namespace bancada
