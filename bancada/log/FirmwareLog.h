// The firmware log: a text file of records.
#pragma once

#include "RtcClasses.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace bancada
{

// One line a record: the instant ("YYYY-MM-DD hh:mm:ss", the register's clock), a tab, the text.
// In the text a backslash, a line break, a carriage return, a tab and any other control byte are
// written as \\ \n \r \t and \xHH, so that a record is one line whatever the text holds; all other
// bytes stand as they are. A text may have any length.
//
// A record is one write to the file and is in the operating system's hands when Write returns; Sync
// makes it durable. A write that fails never stops anything: it is counted and the record is lost.
// A record that was written in part is closed with a line break before the next one.
class FirmwareLog
{
  public:
    // Sees every statement that the module reports as rejected, after its records were written.
    using RejectionObserver = std::function<void(std::string_view statement)>;

    // A log without a file: until Open, records are counted, shown to the observer, and written
    // nowhere.
    FirmwareLog();
    // The same, and opens `path`.
    explicit FirmwareLog(const std::string& path);
    ~FirmwareLog();
    FirmwareLog(const FirmwareLog&) = delete;
    FirmwareLog& operator=(const FirmwareLog&) = delete;

    // Appends to the file `path` from now on; it is made, for good, if there is none. Throws
    // Unusable if it cannot be opened for writing. REQUIRES: no file is open.
    void Open(const std::string& path);

    // The register's clock for the records that follow.
    void SetTime(RtcAbsoluteTime now) { m_now = now; }

    // Appends `text` as one record. Keeps no pointer into it and never throws for a failing file.
    void Write(std::string_view text);

    // Makes the records durable that were written so far; does nothing where none was since the
    // last call. A failure never stops anything: the records count as not written.
    void Sync();

    void SetRejectionObserver(RejectionObserver observer);

    std::int64_t Records() const { return m_records; } // asked to be written
    // Of them, not written whole, or not known to be durable.
    std::int64_t WriteErrors() const { return m_writeErrors; }

  private:
    void Append(const std::string& line);
    void Observe(std::string_view text);

    int m_file = -1;
    bool m_lineOpen = false;     // the file ends within a line
    std::int64_t m_unsynced = 0; // records written since the last sync
    bool m_statementFollows = false;
    RtcAbsoluteTime m_now;
    std::int64_t m_records = 0;
    std::int64_t m_writeErrors = 0;
    RejectionObserver m_observer;
};

} // namespace bancada
