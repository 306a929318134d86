// Files that live as long as their test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace test_support
{

// The content of a file, byte for byte. Throws std::runtime_error if it cannot be read.
inline std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A folder of its own, removed with all that is in it.
class TempFolder
{
  public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "ecf-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder " + name);
        }
        m_path = name;
    }
    ~TempFolder()
    {
        std::error_code ignored; // what is left of a folder is no fault of the test
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The path of a file in it, which need not exist.
    std::string File(const std::string& name) const { return m_path + "/" + name; }

    std::string Write(const std::string& name, const std::string& content) const
    {
        std::ofstream file(File(name), std::ios::binary);
        file << content;
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + File(name));
        }
        return File(name);
    }

    std::string Read(const std::string& name) const { return ReadFile(File(name)); }

    bool Has(const std::string& name) const { return std::filesystem::exists(File(name)); }

  private:
    std::string m_path;
};

} // namespace test_support
