#include "bancada/cli/FreshFolder.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

// Without the slash that a shell completes the name of a folder with.
std::string WithoutSlash(std::string place)
{
    while (place.size() > 1 && place.back() == '/') {
        place.pop_back();
    }
    return place;
}

} // namespace

FreshFolder::FreshFolder(std::string place) : m_place(WithoutSlash(std::move(place)))
{
    std::error_code error;
    const fs::file_status status = fs::symlink_status(m_place, error);
    if (fs::exists(status) && !fs::is_directory(status)) {
        throw Unusable(Tr("%1 exists already, and is no folder", {m_place}));
    }
    if (fs::exists(status) && !fs::is_empty(m_place, error)) {
        throw Unusable(Tr("%1 exists already, and is not empty", {m_place}));
    }
    m_path = (fs::path(m_place).parent_path() / ".ecf-bancada-XXXXXX").string();
    if (mkdtemp(m_path.data()) == nullptr) {
        m_path.clear();
        Fail();
    }
}

FreshFolder::~FreshFolder()
{
    if (!m_path.empty()) {
        std::error_code none;
        fs::remove_all(m_path, none);
    }
}

void FreshFolder::Write(const std::string& name, const std::string& content)
{
    std::ofstream file(fs::path(m_path) / name, std::ios::binary);
    file << content;
    file.close();
    if (!file) {
        Fail();
    }
}

void FreshFolder::Commit()
{
    // What mkdtemp made is for its owner alone; a folder of pages is as any other.
    const mode_t mask = umask(0);
    umask(mask);
    if (chmod(m_path.c_str(), 0777 & ~mask) != 0 ||
        std::rename(m_path.c_str(), m_place.c_str()) != 0) {
        Fail();
    }
    m_path.clear();
}

void FreshFolder::Fail() const
{
    throw Unusable(Tr("%1: cannot be written", {m_place}));
}

} // namespace bancada
