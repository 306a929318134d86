// Compares two legal audit files.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bancada::arquivo
{

enum class DifferenceKind : std::uint8_t {
    FIELD,       // a record of both files, with another value in a field
    ONLY_FIRST,  // a record that the second file has not
    ONLY_SECOND, // the other way round
    ORDER,       // a record of both files that stands at another place among those of its type
};

// "field", "only_first", "only_second", "order".
const char* NameOf(DifferenceKind kind);

struct Difference {
    DifferenceKind kind = DifferenceKind::FIELD;
    std::string type;  // E01 and so on
    std::string key;   // the key's fields, "usuario 01 ccf 000012"
    std::string field; // of FIELD: its name, and what the files hold there
    int firstPosition = 0;
    int lastPosition = 0;
    std::string first;
    std::string second;
    std::int64_t firstLine = 0; // of the record in the files; 0 where it is not there
    std::int64_t secondLine = 0;
};

// The records of a type.
struct TypeCount {
    std::string type;
    std::int64_t first = 0;  // records of the first file
    std::int64_t second = 0; // and of the second
    std::int64_t equal = 0;  // in both, to the byte
    std::int64_t different = 0;
    std::int64_t onlyFirst = 0;
    std::int64_t onlySecond = 0;
    std::int64_t order = 0; // of those in both, how many stand at another place
};

struct ComparisonSummary {
    std::vector<TypeCount> types; // in the order of the files; those that neither has left out

    bool Differs() const;
};

// Gives `sink` every difference: by type, those within a type as they are met. Records are paired
// by their key; those that have the same one, in their order. The totalizers of a Z reduction are a
// set. Memory grows with the records of one type that stand in another order or in one file alone.
// Throws Unusable for a file that cannot be read or holds what is no record.
ComparisonSummary Compare(const std::string& firstPath, const std::string& secondPath,
                          const std::function<void(const Difference&)>& sink);

} // namespace bancada::arquivo
