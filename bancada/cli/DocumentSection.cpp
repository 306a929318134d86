#include "bancada/cli/DocumentSection.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/cli/OutputFile.h"

#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bancada
{

std::string WithSection(const std::string& document, std::string_view name,
                        const std::string& section)
{
    const std::string beginMark = "<!-- " + std::string(name) + ": begin -->\n";
    const std::string endMark = "<!-- " + std::string(name) + ": end -->";
    const std::size_t begin = document.find(beginMark);
    const std::size_t end = document.find(endMark);
    if (begin == std::string::npos || end == std::string::npos || end < begin) {
        throw std::invalid_argument(Tr("the markers of the section \"%1\" are missing", {name}));
    }
    return document.substr(0, begin + beginMark.size()) + section + document.substr(end);
}

void RewriteDocument(const std::string& path, std::string (*rewritten)(const std::string&))
{
    std::ostringstream document;
    std::ifstream in(path, std::ios::binary);
    if (!in || !(document << in.rdbuf())) {
        throw Unusable(Tr("cannot read %1: %2", {path, SystemReason(errno)}));
    }
    const TextsForPrograms english; // as the document around it
    std::string text;
    try {
        text = rewritten(document.str());
    } catch (const std::invalid_argument& error) {
        throw Unusable(path + ": " + error.what());
    }
    OutputFile out(path);
    out.Stream() << text;
    out.Commit();
}

} // namespace bancada
