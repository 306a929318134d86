#include "bancada/cli/FreshFile.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/WholeFile.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

constexpr mode_t ALL_PERMISSIONS = 07777;
constexpr mode_t NEW_FILE = 0666; // what the process's mask leaves of it

constexpr int ENDING_SIGNALS[] = {SIGINT, SIGTERM, SIGHUP};

// The file to be removed when a signal ends the program; empty: none.
char unfinished[PATH_MAX];

void RemoveAndEnd(int signal)
{
    unlink(unfinished);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void SetHandlers(void (*from)(int), void (*to)(int))
{
    for (const int signal : ENDING_SIGNALS) {
        struct sigaction now = {};
        sigaction(signal, nullptr, &now);
        if (now.sa_handler == from) {
            std::signal(signal, to);
        }
    }
}

void RemoveWhenEnded(const std::string& path)
{
    if (unfinished[0] != '\0' || path.size() >= sizeof unfinished) {
        return;
    }
    std::memcpy(unfinished, path.c_str(), path.size() + 1);
    SetHandlers(SIG_DFL, RemoveAndEnd);
}

void LeaveWhenEnded(const std::string& path)
{
    if (path == unfinished) {
        SetHandlers(RemoveAndEnd, SIG_DFL);
        unfinished[0] = '\0';
    }
}

} // namespace

FreshFile::FreshFile(std::string place) : m_place(std::move(place)), m_target(FollowLinks(m_place))
{
    const std::string stem =
        (fs::path(m_target).parent_path() / ".ecf-bancada-").string() + std::to_string(getpid());
    int file = -1;
    for (int number = 0; file < 0; ++number) {
        m_path = stem + "-" + std::to_string(number);
        file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NEW_FILE);
        if (file < 0 && errno != EEXIST) {
            Fail();
        }
    }
    close(file);
    RemoveWhenEnded(m_path);
}

FreshFile::~FreshFile()
{
    if (!m_path.empty()) {
        unlink(m_path.c_str());
        LeaveWhenEnded(m_path);
    }
}

void FreshFile::Replace()
{
    struct stat old = {};
    if (stat(m_target.c_str(), &old) == 0 &&
        chmod(m_path.c_str(), old.st_mode & ALL_PERMISSIONS) != 0) {
        Fail();
    }
    Sync();
    if (std::rename(m_path.c_str(), m_target.c_str()) != 0) {
        Fail();
    }
    LeaveWhenEnded(m_path);
    m_path.clear();
    static_cast<void>(SyncFolderOf(m_target)); // where it cannot be, the file is as safe as it is
}

void FreshFile::PlaceAnew()
{
    Sync();
    // A link fails where there is something, a rename would replace it.
    if (link(m_path.c_str(), m_target.c_str()) != 0) {
        if (errno == EEXIST) {
            throw Unusable(Tr("%1 exists already", {m_place}));
        }
        Fail();
    }
    static_cast<void>(SyncFolderOf(m_target));
}

void FreshFile::Sync() const
{
    const int file = open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool synced = file >= 0 && fsync(file) == 0;
    if (file >= 0) {
        close(file);
    }
    if (!synced) {
        Fail();
    }
}

void FreshFile::Fail() const
{
    throw Unusable(Tr("%1: cannot be written", {m_place}));
}

} // namespace bancada
