#include "bancada/memoria/FileStorage.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/WholeFile.h"

#include <cassert>
#include <cerrno>
#include <unistd.h>

namespace bancada
{

FileStorage::~FileStorage()
{
    CloseFile();
}

void FileStorage::CloseFile()
{
    if (m_file >= 0) {
        close(m_file);
        m_file = -1;
    }
}

std::optional<std::string> FileStorage::Read(const std::string& path, std::size_t maxBytes)
{
    return ReadWholeFile(path, maxBytes);
}

void FileStorage::Replace(const std::string& path, std::string_view content)
{
    ReplaceFile(path, content);
}

void FileStorage::Create(const std::string& path, std::string_view content, const std::string& like)
{
    CloseFile();
    m_path = path;
    m_file = CreateFile(path, content, like);
}

void FileStorage::Append(std::string_view text)
{
    assert(m_file >= 0);
    if (!WriteWhole(m_file, text) || fdatasync(m_file) != 0) {
        throw Unusable(Tr("cannot write %1: %2", {m_path, SystemReason(errno)}));
    }
}

void FileStorage::Remove(const std::string& path)
{
    CloseFile();
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
        throw Unusable(Tr("cannot remove %1: %2", {path, SystemReason(errno)}));
    }
}

} // namespace bancada
