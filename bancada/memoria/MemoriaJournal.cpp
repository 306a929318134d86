#include "bancada/memoria/MemoriaJournal.h"

#include "bancada/Messages.h"
#include "bancada/Sha256.h"
#include "bancada/memoria/JsonText.h"

#include <stdexcept>
#include <utility>

namespace bancada
{
namespace
{

constexpr char FORMAT[] = "ecf-bancada diario";

// As much as a memory may have.
constexpr std::size_t MAX_BYTES = 32 * 1024 * 1024;

constexpr std::size_t DIGEST_LENGTH = 64;

// What a power cut may destroy of a disk where it was writing: no record shares one with another.
constexpr std::size_t SECTOR_BYTES = 4096;

std::string DigestOf(const std::string& memory, std::string_view json)
{
    std::string digested = memory;
    digested += json;
    return Sha256Hex(digested);
}

std::string Line(const std::string& memory, std::string_view json)
{
    std::string line = DigestOf(memory, json);
    line += ' ';
    line += json;
    line += '\n';
    // Two at least, so that damage to one does not make two records one.
    line.resize((line.size() / SECTOR_BYTES + 1) * SECTOR_BYTES, '\n');
    return line;
}

std::vector<std::string_view> SplitLines(std::string_view content)
{
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const std::size_t end = content.find('\n');
        if (end != 0) {
            lines.push_back(content.substr(0, end));
        }
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
    return lines;
}

bool IsWhole(std::string_view line, const std::string& memory)
{
    if (line.size() <= DIGEST_LENGTH + 1) {
        return false;
    }
    return DigestOf(memory, line.substr(DIGEST_LENGTH + 1)) == line.substr(0, DIGEST_LENGTH) &&
           line[DIGEST_LENGTH] == ' ';
}

nlohmann::json JsonOf(std::string_view line)
{
    return ParseJson(std::string(line.substr(DIGEST_LENGTH + 1)));
}

// A text of the journal's first line; empty where it has none of that name.
std::string TextOf(const nlohmann::json& head, const char* name)
{
    const auto field = head.find(name);
    return field != head.end() && field->is_string() ? field->get<std::string>() : std::string();
}

} // namespace

MemoriaJournal::MemoriaJournal(std::string path, Storage& storage)
    : m_path(std::move(path)), m_storage(storage)
{
}

MemoriaJournal::Content MemoriaJournal::Read(const std::string& memory) const
{
    Content content;
    const std::optional<std::string> text = m_storage.Read(m_path, MAX_BYTES);
    if (!text) {
        return content;
    }
    const std::vector<std::string_view> lines = SplitLines(*text);
    std::size_t whole = 0;
    std::string base = memory;
    if (!lines.empty() && IsWhole(lines[0], "")) {
        const nlohmann::json head = JsonOf(lines[0]);
        if (TextOf(head, "formato") != FORMAT) {
            throw std::runtime_error(Tr("it is no journal of this program"));
        }
        base = content.memory = TextOf(head, "memoria");
        for (whole = 1; whole < lines.size() && IsWhole(lines[whole], base); ++whole) {
            content.records.push_back(JsonOf(lines[whole]));
        }
    }
    for (std::size_t i = whole + 1; i < lines.size(); ++i) {
        if (IsWhole(lines[i], base)) {
            throw std::runtime_error(whole == 0
                                         ? Tr("its first line is damaged")
                                         : Tr("its record %1 is damaged", {std::to_string(whole)}));
        }
    }
    return content;
}

void MemoriaJournal::Append(std::string_view record, const std::string& memory,
                            const std::string& like)
{
    if (IsEmpty()) {
        const std::string head =
            Line("", nlohmann::json({{"formato", FORMAT}, {"memoria", memory}}).dump());
        m_storage.Create(m_path, head, like);
        m_bytes = head.size();
    }
    const std::string line = Line(memory, record);
    m_storage.Append(line);
    m_bytes += line.size();
}

void MemoriaJournal::Remove()
{
    m_storage.Remove(m_path);
    m_bytes = 0;
}

} // namespace bancada
