// A new database in the place of one that is full, finished or of no use.
#include "LogDatabase/Fault.h"
#include "LogDatabase/Files.h"
#include "LogDatabase/LogDatabase.h"

#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

using namespace log_database;

namespace
{

// The log first: a database is never without its log where the engine would look for one, and a
// move that was cut short is finished by the same call.
constexpr const char* ENDINGS[] = {"-wal", "-journal", ""};

bool MoveByName(void*, const char* from, const char* to)
{
    return std::rename(from, to) == 0;
}

} // namespace

LogFault LogDatabase::BeginAnew(const char* asideName)
{
    if (m_path[0] == '\0' || m_inMemory || m_inCommand) {
        return Fail(LogFault::CANNOT_OPEN, "there is no file to set aside");
    }
    char reason[sizeof m_text];
    CopyText(reason, m_text);
    const bool inOrder = IsOpen();
    if (inOrder) {
        CopyText(reason, "a new one begins");
        // Whatever a reader still needs of the log would be left without its database.
        const LogFault fault = Rest();
        if (fault != LogFault::NONE) {
            return Fail(fault, "a reader still needs it");
        }
    }
    Disconnect(inOrder ? LogAtEnd::IS_COPIED : LogAtEnd::STAYS);
    LogFault fault = MoveAside(asideName);
    if (fault == LogFault::NONE) {
        m_wasOpen = false;
        m_fault = fault = OpenFile();
    }
    if (!IsOpen()) {
        RefuseEverything();
    }
    if (fault == LogFault::NONE) {
        char entry[sizeof m_path + sizeof reason + 60];
        std::snprintf(entry, sizeof entry, "LogDatabase: the database is set aside as %s: %s",
                      asideName, reason);
        Vindral_GravaLog(entry);
        SyncLog();
    }
    return fault;
}

LogFault LogDatabase::MoveAside(const char* asideName)
{
    if (asideName == nullptr || asideName[0] == '\0' ||
        std::strlen(asideName) + sizeof "-journal" > sizeof m_path) {
        return Fail(LogFault::CANNOT_OPEN, "it has no name to be set aside under");
    }
    const auto move = m_options.moveFile != nullptr ? m_options.moveFile : MoveByName;
    char from[sizeof m_path + sizeof "-journal"];
    char to[sizeof m_path + sizeof "-journal"];
    // Nothing is written over.
    for (const char* ending : ENDINGS) {
        std::snprintf(from, sizeof from, "%s%s", m_path, ending);
        std::snprintf(to, sizeof to, "%s%s", asideName, ending);
        if (FileExists(from, m_options.vfs) && FileExists(to, m_options.vfs)) {
            std::snprintf(m_text, sizeof m_text, "%.200s is there already", to);
            return LogFault::CANNOT_OPEN;
        }
    }
    for (const char* ending : ENDINGS) {
        std::snprintf(from, sizeof from, "%s%s", m_path, ending);
        std::snprintf(to, sizeof to, "%s%s", asideName, ending);
        if (FileExists(from, m_options.vfs) && !move(m_options.context, from, to)) {
            std::snprintf(m_text, sizeof m_text, "cannot move it to %.200s", to);
            return LogFault::DISK;
        }
    }
    if (!SyncFolderOf(asideName, m_options.vfs)) {
        return Fail(LogFault::DISK, "cannot sync the folder");
    }
    return LogFault::NONE;
}
