// What an exported file does not tell, because no source does.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <utility>

namespace bancada::arquivo
{

// Told once a record type and field, with the number of records. What is added is in the language
// of Tr.
class Neutros
{
  public:
    // A field that was left as where there is nothing.
    void AddField(const std::string& type, const std::string& field, const std::string& reason);
    // Records that are not there. `what` says of which.
    void AddMissing(const std::string& type, const std::string& what, std::int64_t count = 1);

    // A line each, in the order of the types.
    void Print(std::ostream& out) const;

  private:
    // By type and text; the count of records.
    std::map<std::pair<std::string, std::string>, std::int64_t> m_fields;
    std::map<std::pair<std::string, std::string>, std::int64_t> m_missing;
};

} // namespace bancada::arquivo
