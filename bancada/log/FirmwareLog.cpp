#include "bancada/log/FirmwareLog.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/log/LogText.h"
#include "bancada/log/RejectionMessage.h"

#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::size_t TIME_SIZE = sizeof "yyyy-mm-dd hh:mm:ss";

// Whether the file of `path` ends within a line, as a write cut short leaves it. What cannot be
// read (a pipe, a device) does not.
bool EndsWithinLine(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    struct stat status = {};
    char last = '\n';
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
        pread(file, &last, 1, status.st_size - 1) != 1) {
        last = '\n';
    }
    close(file);
    return last != '\n';
}

// A new file is durable with the entry in its folder. Where the folder cannot be synced, the
// records are as safe as the file is.
void SyncFolder(const std::string& path)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    const int file =
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file >= 0) {
        fsync(file);
        close(file);
    }
}

} // namespace

FirmwareLog::FirmwareLog() = default;

FirmwareLog::FirmwareLog(const std::string& path)
{
    Open(path);
}

void FirmwareLog::Open(const std::string& path)
{
    assert(m_file < 0);
    m_file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (m_file < 0) {
        throw Unusable(Tr("cannot write the firmware log %1: %2", {path, SystemReason(errno)}));
    }
    m_lineOpen = EndsWithinLine(path);
    struct stat status = {};
    if (fstat(m_file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0) {
        SyncFolder(path);
    }
}

FirmwareLog::~FirmwareLog()
{
    if (m_file >= 0) {
        close(m_file);
    }
}

void FirmwareLog::SetRejectionObserver(RejectionObserver observer)
{
    m_observer = std::move(observer);
}

void FirmwareLog::Write(std::string_view text)
{
    ++m_records;
    try {
        char time[TIME_SIZE];
        std::string line(m_lineOpen ? "\n" : "");
        line += m_now.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", time);
        line += '\t';
        AppendEscaped(line, text);
        line += '\n';
        if (m_file >= 0) {
            Append(line);
        }
        Observe(text);
    } catch (const std::bad_alloc&) {
        // Out of memory: as any record that could not be written.
        ++m_writeErrors;
    }
}

void FirmwareLog::Sync()
{
    if (m_unsynced == 0) {
        return;
    }
    int result = 0;
    do {
        result = fdatasync(m_file);
    } while (result != 0 && errno == EINTR);
    // A pipe or a device has nothing to be synced.
    if (result != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS) {
        m_writeErrors += m_unsynced;
    }
    m_unsynced = 0;
}

void FirmwareLog::Append(const std::string& line)
{
    ++m_unsynced;
    std::size_t written = 0;
    while (written < line.size()) {
        const ssize_t result = write(m_file, line.data() + written, line.size() - written);
        if (result > 0) {
            written += static_cast<std::size_t>(result);
            m_lineOpen = line[written - 1] != '\n';
        } else if (result == 0 || errno != EINTR) {
            ++m_writeErrors;
            return;
        }
    }
}

void FirmwareLog::Observe(std::string_view text)
{
    if (m_statementFollows) {
        m_statementFollows = false;
        if (m_observer) {
            m_observer(text);
        }
    } else {
        m_statementFollows = IsRejectionMessage(text);
    }
}

} // namespace bancada
