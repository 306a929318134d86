// Where a memory is kept.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace bancada
{

// The file calls of a memory, each durable when it returns, but for Remove. Whatever fails is
// thrown as Unusable.
class Storage
{
  public:
    virtual ~Storage() = default;

    // As ReadWholeFile and ReplaceFile.
    virtual std::optional<std::string> Read(const std::string& path, std::size_t maxBytes) = 0;
    virtual void Replace(const std::string& path, std::string_view content) = 0;

    // Makes the file anew, and Append goes on writing to it. Who may read and write `like` may read
    // and write it. After a crash it is what it was, missing, or any part of `content`.
    virtual void Create(const std::string& path, std::string_view content,
                        const std::string& like) = 0;
    // In one sync. After a crash the file ends with any part of `text`. REQUIRES: Create.
    virtual void Append(std::string_view text) = 0;

    // A file that is missing is no failure. After a crash it may be there again.
    virtual void Remove(const std::string& path) = 0;
};

} // namespace bancada
