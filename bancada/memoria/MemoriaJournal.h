// The journal of a memory: what each command has changed since the memory itself was written.
#pragma once

#include "bancada/memoria/Storage.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace bancada
{

// A file of lines, each a digest, a blank and an object of JSON, with as many empty lines behind it
// as fill its last 4 KiB: a power cut may destroy what it was writing to, and no more. The first
// names, by its digest, the memory that the journal belongs to; each other one is a record, whose
// digest is also of the memory's. docs/memory.md tells their form.
//
// Whatever cannot be read or written is thrown as Unusable.
class MemoriaJournal
{
  public:
    // `storage` is borrowed and outlives this.
    MemoriaJournal(std::string path, Storage& storage);

    const std::string& Path() const { return m_path; }

    struct Content {
        std::string memory; // the digest of the memory it belongs to; empty where it says nothing
        std::vector<nlohmann::json> records;
    };
    // What is there, if anything is. A last record that was not written to its end, which a power
    // cut may leave, counts as none. Throws std::runtime_error for damage before others that are
    // whole. `memory` is the digest of the memory beside it.
    [[nodiscard]] Content Read(const std::string& memory) const;

    // Adds a record: an object of JSON in one line. The first one makes the file, for who may read
    // and write `like`. It is durable when this returns.
    void Append(std::string_view record, const std::string& memory, const std::string& like);

    // Removes the file: all that it holds is in the memory.
    void Remove();

    bool IsEmpty() const { return m_bytes == 0; }
    // Of the file that Append writes.
    std::size_t Bytes() const { return m_bytes; }

  private:
    std::string m_path;
    Storage& m_storage;
    std::size_t m_bytes = 0;
};

} // namespace bancada
