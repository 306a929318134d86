#include "bancada/arquivo/Neutros.h"

#include "bancada/Messages.h"
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
        out << Tr("neutral: %1 (%2)", {Printable(key.first + " " + key.second),
                                       TrCount("%1 record", "%1 records", count)})
            << "\n";
    }
    for (const auto& [key, count] : m_missing) {
        out << Tr("left out: %1 (%2)",
                  {Printable(key.first + ": " + key.second), std::to_string(count)})
            << "\n";
    }
}

} // namespace bancada::arquivo
