#include "bancada/arquivo/Neutros.h"

#include "bancada/Printable.h"

namespace bancada::arquivo
{

void Neutros::AddField(const std::string& type, const std::string& field, const std::string& reason)
{
    ++m_fields[{type, field + ": " + reason}];
}

void Neutros::AddMissing(const std::string& type, const std::string& what, std::int64_t count)
{
    m_missing[{type, what}] += count;
}

void Neutros::Print(std::ostream& out) const
{
    for (const auto& [key, count] : m_fields) {
        out << "neutral: " << Printable(key.first + " " + key.second) << " (" << count
            << (count == 1 ? " record)\n" : " records)\n");
    }
    for (const auto& [key, count] : m_missing) {
        out << "left out: " << Printable(key.first + ": " + key.second) << " (" << count << ")\n";
    }
}

} // namespace bancada::arquivo
