#include "bancada/cli/OutputFile.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <filesystem>
#include <iostream>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

// Whether something stands there that a file must not take the place of.
bool IsNoFile(const std::string& place)
{
    std::error_code none;
    const fs::file_status status = fs::status(place, none);
    return fs::exists(status) && !fs::is_regular_file(status);
}

} // namespace

OutputFile::OutputFile(const std::string& place) : m_place(place)
{
    if (place == "-") {
        return;
    }
    const bool straight = IsNoFile(place);
    if (!straight) {
        m_fresh.emplace(place);
    }
    m_stream.open(straight ? place : m_fresh->Path(), std::ios::binary);
    if (!m_stream) {
        throw Unusable(Tr("%1: cannot be written", {place}));
    }
}

std::ostream& OutputFile::Stream()
{
    return m_place == "-" ? std::cout : m_stream;
}

void OutputFile::Commit()
{
    if (m_place == "-") {
        return;
    }
    m_stream.close();
    if (!m_stream) {
        throw Unusable(Tr("%1: cannot be written", {m_place}));
    }
    if (m_fresh) {
        m_fresh->Replace();
    }
}

} // namespace bancada
