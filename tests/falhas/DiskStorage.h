// A memory kept on a simulated disk.
#pragma once

#include "bancada/memoria/Storage.h"
#include "tests/falhas/SimulatedDisk.h"

#include <memory>

namespace falhas
{

// The same calls, in the same order, as those of bancada::FileStorage.
class DiskStorage : public bancada::Storage
{
  public:
    // `disk` is borrowed and outlives this.
    explicit DiskStorage(SimulatedDisk& disk) : m_disk(disk) {}

    std::optional<std::string> Read(const std::string& path, std::size_t maxBytes) override;
    void Replace(const std::string& path, std::string_view content) override;
    void Create(const std::string& path, std::string_view content,
                const std::string& like) override;
    void Append(std::string_view text) override;
    void Remove(const std::string& path) override;

  private:
    std::shared_ptr<SimulatedDisk::File> Make(const std::string& path, std::string_view content);

    SimulatedDisk& m_disk;
    std::shared_ptr<SimulatedDisk::File> m_file; // that Create has made
};

} // namespace falhas
