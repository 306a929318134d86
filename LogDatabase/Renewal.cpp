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

constexpr const char* ENDINGS[] = {"", "-wal", "-journal"};

// The file beside the database that says, while its files get their new names, what they are: what
// the power cut short is finished by whoever opens it next.
constexpr char INTENT_ENDING[] = "-aside";
constexpr char INTENT_BEGIN[] = "set aside as ";
constexpr char INTENT_END = '\n';

bool MoveByName(void*, const char* from, const char* to)
{
    return std::rename(from, to) == 0;
}

// The name that an intent has, in its place; null for what was not written to its end.
const char* NameOf(char* intent)
{
    const std::size_t begin = sizeof INTENT_BEGIN - 1;
    const std::size_t length = std::strlen(intent);
    if (std::strncmp(intent, INTENT_BEGIN, begin) != 0 || length < begin + 2 ||
        std::strchr(intent, INTENT_END) != intent + length - 1) {
        return nullptr;
    }
    intent[length - 1] = '\0';
    return intent + begin;
}

} // namespace

LogFault LogDatabase::BeginAnew(const char* asideName)
{
    if (m_path[0] == '\0' || m_inMemory || m_inCommand) {
        return Fail(LogFault::CANNOT_OPEN, "there is no file to set aside");
    }
    LogFault fault = IsOpen() ? LogFault::NONE : FinishSettingAside();
    if (fault == LogFault::NONE) {
        fault = CheckAside(asideName);
    }
    if (fault != LogFault::NONE) {
        return fault;
    }
    LogAtEnd log = LogAtEnd::STAYS;
    if (IsOpen()) {
        fault = Rest();
        if (fault == LogFault::LOCKED) {
            // Whatever it needs of the log would be left without its database.
            return Fail(fault, "a reader still needs it");
        }
        // One that cannot copy its log any more goes with it.
        if (fault != LogFault::NONE) {
            CopyText(m_refusal, sqlite3_errstr(sqlite3_extended_errcode(m_db)));
        } else {
            CopyText(m_refusal, "a new one begins");
            log = LogAtEnd::IS_COPIED;
        }
    }
    if (FileExists(m_path, m_options.vfs)) {
        // Before anything is moved: it may stand twice, or in vain, and is never missing.
        char entry[sizeof m_path + sizeof m_refusal + 60];
        std::snprintf(entry, sizeof entry, "LogDatabase: the database is set aside as %s: %s",
                      asideName, m_refusal);
        Vindral_GravaLog(entry);
        SyncLog();
    }
    const bool wasOpen = IsOpen();
    Disconnect(log);
    fault = WriteIntent(asideName);
    if (fault == LogFault::NONE) {
        fault = FinishSettingAside();
    }
    if (fault != LogFault::NONE && FileExists(m_path, m_options.vfs)) {
        GoOn(wasOpen);
        return fault;
    }
    m_wasOpen = false;
    m_fault = fault == LogFault::NONE ? OpenFile() : fault;
    if (!IsOpen()) {
        CopyText(m_refusal, m_text);
        RefuseEverything();
    }
    return m_fault;
}

// Nothing was moved: the old one stays in use, and Text says why.
void LogDatabase::GoOn(bool wasOpen)
{
    char text[sizeof m_text];
    CopyText(text, m_text);
    char intent[MAX_NAME_BYTES];
    std::snprintf(intent, sizeof intent, "%s%s", m_path, INTENT_ENDING);
    if (FileExists(intent, m_options.vfs)) {
        DeleteFile(intent, m_options.vfs);
    }
    if (wasOpen) {
        Reconnect();
    } else {
        RefuseEverything();
    }
    CopyText(m_text, text);
}

// Whether the file, its log and its journal can have their new names. Nothing is written over.
LogFault LogDatabase::CheckAside(const char* asideName)
{
    if (asideName == nullptr || asideName[0] == '\0' ||
        std::strlen(asideName) + sizeof "-journal" > sizeof m_path) {
        return Fail(LogFault::CANNOT_OPEN, "it has no name to be set aside under");
    }
    char from[MAX_NAME_BYTES];
    char to[MAX_NAME_BYTES];
    for (const char* ending : ENDINGS) {
        std::snprintf(from, sizeof from, "%s%s", m_path, ending);
        std::snprintf(to, sizeof to, "%s%s", asideName, ending);
        if (FileExists(from, m_options.vfs) && FileExists(to, m_options.vfs)) {
            std::snprintf(m_text, sizeof m_text, "%.200s is there already", to);
            return LogFault::CANNOT_OPEN;
        }
    }
    return LogFault::NONE;
}

LogFault LogDatabase::WriteIntent(const char* asideName)
{
    char intent[MAX_NAME_BYTES];
    char text[MAX_NAME_BYTES];
    std::snprintf(intent, sizeof intent, "%s%s", m_path, INTENT_ENDING);
    std::snprintf(text, sizeof text, "%s%s%c", INTENT_BEGIN, asideName, INTENT_END);
    return WriteFile(intent, text, m_options.vfs) && SyncFolderOf(intent, m_options.vfs)
               ? LogFault::NONE
               : Fail(LogFault::DISK, "cannot write where it is set aside");
}

// Moves what an intent names, the database first. No new one is begun while the intent is there, or
// its log would be taken for the old one's.
LogFault LogDatabase::FinishSettingAside()
{
    char intent[MAX_NAME_BYTES];
    std::snprintf(intent, sizeof intent, "%s%s", m_path, INTENT_ENDING);
    if (!FileExists(intent, m_options.vfs)) {
        return LogFault::NONE;
    }
    char text[MAX_NAME_BYTES];
    ReadFile(intent, text, sizeof text, m_options.vfs);
    const char* asideName = NameOf(text);
    if (asideName == nullptr) {
        return LogFault::NONE; // cut short before anything was moved
    }
    const LogFault fault = CheckAside(asideName);
    if (fault != LogFault::NONE) {
        return fault;
    }
    const auto move = m_options.moveFile != nullptr ? m_options.moveFile : MoveByName;
    char from[MAX_NAME_BYTES];
    char to[MAX_NAME_BYTES];
    for (const char* ending : ENDINGS) {
        std::snprintf(from, sizeof from, "%s%s", m_path, ending);
        std::snprintf(to, sizeof to, "%s%s", asideName, ending);
        if (FileExists(from, m_options.vfs) && !move(m_options.context, from, to)) {
            std::snprintf(m_text, sizeof m_text, "cannot move it to %.200s", to);
            return LogFault::DISK;
        }
    }
    return SyncFolderOf(asideName, m_options.vfs) && DeleteFile(intent, m_options.vfs)
               ? LogFault::NONE
               : Fail(LogFault::DISK, "cannot sync the folder");
}
