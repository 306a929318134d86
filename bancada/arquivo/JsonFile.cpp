#include "bancada/arquivo/JsonFile.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <cerrno>
#include <fstream>
#include <iterator>

namespace bancada::arquivo
{
namespace
{

constexpr std::size_t MAX_BYTES = 64 * 1024 * 1024;

} // namespace

nlohmann::ordered_json ReadJsonFile(const std::string& path)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content;
    char buffer[4096];
    while (file.read(buffer, sizeof buffer) || file.gcount() > 0) {
        content.append(buffer, static_cast<std::size_t>(file.gcount()));
        if (content.size() > MAX_BYTES) {
            throw Unusable(Tr("%1: is too large", {path}));
        }
    }
    if (!file.eof()) {
        throw Unusable(path + ": " + (errno == 0 ? Tr("cannot be read") : SystemReason(errno)));
    }
    try {
        return nlohmann::ordered_json::parse(content);
    } catch (const nlohmann::ordered_json::parse_error& error) {
        throw Unusable(Tr("%1: is no JSON: %2", {path, error.what()}));
    }
}

} // namespace bancada::arquivo
