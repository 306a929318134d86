#include "bancada/cli/FileLock.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bancada
{

FileLock::FileLock(const std::string& path, const std::string& what)
    : m_path(path + ".lock"), m_what(what)
{
    while (!Take()) {
        close(m_file); // of a lock that its owner has just removed
        m_file = -1;
    }
}

// Answers false if the file went away while it was being locked.
bool FileLock::Take()
{
    m_file = open(m_path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (m_file < 0) {
        m_error = errno == ENOENT ? 0 : errno;
        return true;
    }
    struct stat locked = {};
    if (fstat(m_file, &locked) != 0 || !S_ISREG(locked.st_mode) || locked.st_size != 0) {
        close(m_file);
        throw Unusable(Tr("%1 cannot be locked: %2 exists already and is no lock of this program",
                          {m_what, m_path}));
    }
    if (flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        close(m_file);
        m_file = -1;
        if (error == EWOULDBLOCK) {
            throw Unusable(Tr("%1 is in use by another run, which holds %2", {m_what, m_path}));
        }
        m_error = error;
        return true;
    }
    struct stat named = {};
    return stat(m_path.c_str(), &named) == 0 && named.st_dev == locked.st_dev &&
           named.st_ino == locked.st_ino;
}

FileLock::~FileLock()
{
    if (m_file >= 0) {
        unlink(m_path.c_str());
        close(m_file);
    }
}

void FileLock::Require() const
{
    if (m_error != 0) {
        throw Unusable(Tr("%1 cannot be locked: %2: %3", {m_what, m_path, SystemReason(m_error)}));
    }
}

} // namespace bancada
