// A memory kept in files.
#pragma once

#include "bancada/memoria/Storage.h"

namespace bancada
{

class FileStorage : public Storage
{
  public:
    FileStorage() = default;
    ~FileStorage() override;
    FileStorage(const FileStorage&) = delete;
    FileStorage& operator=(const FileStorage&) = delete;

    std::optional<std::string> Read(const std::string& path, std::size_t maxBytes) override;
    void Replace(const std::string& path, std::string_view content) override;
    void Create(const std::string& path, std::string_view content,
                const std::string& like) override;
    void Append(std::string_view text) override;
    void Remove(const std::string& path) override;

  private:
    void CloseFile();

    std::string m_path;
    int m_file = -1; // that Create has made
};

} // namespace bancada
