#include "bancada/memoria/WholeFile.h"

#include "bancada/Unusable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace bancada
{
namespace
{

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
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return m_number; }
    bool IsOpen() const { return m_number >= 0; }

  private:
    int m_number;
};

[[noreturn]] void Fail(const char* what, const std::string& path)
{
    throw Unusable(std::string("cannot ") + what + " " + path + ": " + std::strerror(errno));
}

bool WriteAll(int file, std::string_view content)
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

// The entry of the folder is durable with the folder.
void SyncFolder(const std::string& path)
{
    std::string folder = std::filesystem::path(path).parent_path().string();
    if (folder.empty()) {
        folder = ".";
    }
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen() || fsync(opened.Number()) != 0) {
        Fail("sync the folder", folder);
    }
}

} // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t maxBytes)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        Fail("read", path);
    }
    std::string content;
    char piece[16 * 1024];
    for (;;) {
        const ssize_t count = read(file.Number(), piece, sizeof piece);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            Fail("read", path);
        }
        if (count == 0) {
            return content;
        }
        content.append(piece, static_cast<std::size_t>(count));
        if (content.size() > maxBytes) {
            throw Unusable("cannot read " + path + ": it has more than " +
                           std::to_string(maxBytes) + " bytes");
        }
    }
}

void ReplaceFile(const std::string& path, std::string_view content)
{
    const std::string fresh = path + ".tmp";
    {
        const Descriptor file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        if (!file.IsOpen() || !WriteAll(file.Number(), content) || fsync(file.Number()) != 0) {
            Fail("write", fresh);
        }
    }
    if (std::rename(fresh.c_str(), path.c_str()) != 0) {
        Fail("replace", path);
    }
    SyncFolder(path);
}

} // namespace bancada
