#include "tests/falhas/DiskStorage.h"

#include "bancada/Unusable.h"

namespace falhas
{
namespace
{

void Require(int result)
{
    if (result != SQLITE_OK) {
        throw bancada::Unusable("the disk does not do it");
    }
}

} // namespace

std::optional<std::string> DiskStorage::Read(const std::string& path, std::size_t)
{
    const Image files = m_disk.Files();
    const auto found = files.find(path);
    if (found == files.end()) {
        return std::nullopt;
    }
    return std::string(found->second.begin(), found->second.end());
}

std::shared_ptr<SimulatedDisk::File> DiskStorage::Make(const std::string& path,
                                                       std::string_view content)
{
    std::shared_ptr<SimulatedDisk::File> file;
    Remove(path);
    Require(m_disk.Open(path.c_str(), SQLITE_OPEN_CREATE, file));
    Require(m_disk.Write(*file, content.data(), static_cast<int>(content.size()), 0));
    Require(m_disk.Sync(*file, false));
    return file;
}

void DiskStorage::Replace(const std::string& path, std::string_view content)
{
    const std::string fresh = path + ".tmp";
    Make(fresh, content);
    Require(m_disk.Rename(fresh.c_str(), path.c_str()));
    Require(m_disk.SyncFolder());
}

void DiskStorage::Create(const std::string& path, std::string_view content, const std::string&)
{
    m_file = Make(path, content);
    Require(m_disk.SyncFolder());
}

void DiskStorage::Append(std::string_view text)
{
    Require(m_disk.Write(*m_file, text.data(), static_cast<int>(text.size()),
                         static_cast<std::int64_t>(m_file->now.size())));
    Require(m_disk.Sync(*m_file, false));
}

void DiskStorage::Remove(const std::string& path)
{
    if (m_disk.Has(path.c_str())) {
        Require(m_disk.Delete(path.c_str(), false));
    }
}

} // namespace falhas
