#include "bancada/memoria/WholeFile.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bancada
{
namespace
{

constexpr mode_t ALL_PERMISSIONS = 07777;
constexpr mode_t NEW_FILE = 0666; // what the process's mask leaves of it

class Descriptor
{
  public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0) {
            close(m_number);
        }
    }
    Descriptor(Descriptor&& other) noexcept : m_number(other.Release()) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return m_number; }
    bool IsOpen() const { return m_number >= 0; }
    // It stays open.
    int Release() { return std::exchange(m_number, -1); }

  private:
    int m_number;
};

// `what` is a marked text with the places of the path and the reason.
[[noreturn]] void Fail(const char* what, const std::string& path)
{
    throw Unusable(Tr(what, {path, SystemReason(errno)}));
}

void SyncFolderOrFail(const std::string& path)
{
    if (!SyncFolderOf(path)) {
        Fail(TrLater("cannot sync the folder of %1: %2"), path);
    }
}

// Whatever stood there, a crash has left. Its content is durable, its name is not yet.
Descriptor MakeFile(const std::string& path, std::string_view content, const std::string& like)
{
    struct stat old = {};
    const bool isLike = stat(like.c_str(), &old) == 0;
    const mode_t mode = isLike ? old.st_mode & ALL_PERMISSIONS : NEW_FILE;
    unlink(path.c_str());
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    // The process's mask took some of the permissions away.
    const bool permitted = file.IsOpen() && (!isLike || fchmod(file.Number(), mode) == 0);
    if (!permitted || !WriteWhole(file.Number(), content) || fsync(file.Number()) != 0) {
        Fail(TrLater("cannot write %1: %2"), path);
    }
    return file;
}

} // namespace

bool WriteWhole(int file, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        if (written > 0) {
            content.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return true;
}

std::string FollowLinks(const std::string& path)
{
    std::error_code none;
    const std::filesystem::path file = std::filesystem::canonical(path, none);
    if (!none) {
        return file.string();
    }
    // Links that go round in a circle end nowhere, and opening one says so.
    constexpr int MAX_LINKS = 40;
    std::filesystem::path followed = path;
    for (int links = 0; links < MAX_LINKS && std::filesystem::is_symlink(followed, none); ++links) {
        const std::filesystem::path target = std::filesystem::read_symlink(followed, none);
        followed = followed.parent_path() / target;
    }
    return followed.string();
}

bool SyncFolderOf(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    const Descriptor opened(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened.IsOpen() && fsync(opened.Number()) == 0;
}

std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t maxBytes)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        Fail(TrLater("cannot read %1: %2"), path);
    }
    std::string content;
    char piece[16 * 1024];
    for (;;) {
        const ssize_t count = read(file.Number(), piece, sizeof piece);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            Fail(TrLater("cannot read %1: %2"), path);
        }
        if (count == 0) {
            return content;
        }
        content.append(piece, static_cast<std::size_t>(count));
        if (content.size() > maxBytes) {
            throw Unusable(
                Tr("cannot read %1: it has more than %2 bytes", {path, std::to_string(maxBytes)}));
        }
    }
}

int CreateFile(const std::string& path, std::string_view content, const std::string& like)
{
    Descriptor file = MakeFile(path, content, like);
    SyncFolderOrFail(path);
    return file.Release();
}

void ReplaceFile(const std::string& path, std::string_view content)
{
    const std::string fresh = path + ".tmp";
    MakeFile(fresh, content, path);
    if (std::rename(fresh.c_str(), path.c_str()) != 0) {
        Fail(TrLater("cannot replace %1: %2"), path);
    }
    SyncFolderOrFail(path);
}

} // namespace bancada
