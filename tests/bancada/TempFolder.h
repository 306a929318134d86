// A folder that lives as long as its test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace bancada_test
{

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

    std::string Read(const std::string& name) const
    {
        std::ifstream file(File(name), std::ios::binary);
        if (!file) {
            throw std::runtime_error("cannot read " + File(name));
        }
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    bool Has(const std::string& name) const { return std::filesystem::exists(File(name)); }

  private:
    std::string m_path;
};

} // namespace bancada_test
