// Real files on a disk whose power can be cut: what was written and not synced by then is there, is
// not there, or is there in part.
#pragma once

#include "bancada/memoria/Storage.h"

#include <cstdint>
#include <map>
#include <random>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace anos
{

// A file layer of the engine, above its own, with a name of its own while it lives. It keeps what
// each write since the last sync has replaced, and no more, so that a database may be of any size.
// One at a time; names of files are durable as soon as they are there.
class CutDisk
{
  public:
    explicit CutDisk(std::uint32_t seed);
    ~CutDisk();
    CutDisk(const CutDisk&) = delete;
    CutDisk& operator=(const CutDisk&) = delete;

    static const char* Name();

    // Goes dark at the `at`-th call from now on that changes something: that call is not carried
    // out, or half of it is, and all after it fail.
    void CutPowerAt(std::int64_t at) { m_callsToCut = at; }
    bool IsArmed() const { return m_callsToCut > 0; }
    bool IsDark() const { return m_dark; }
    // Calls so far that have changed something.
    std::int64_t Calls() const { return m_calls; }

    // Makes the files what a power cut may leave of them, and lights the disk again. REQUIRES: no
    // file is open.
    void ComeBack();

    // For the file layer and the memory's storage.
    // Counts a call that changes something; false where it must fail.
    bool Allows();
    // Before `length` bytes at `at` of a file are replaced, which held `before` there and was so
    // large.
    void Replaces(const std::string& path, std::int64_t at, std::string before, std::int64_t size);
    void Synced(const std::string& path) { m_unsynced.erase(path); }
    std::uint32_t Draw(std::uint32_t below);

  private:
    struct Write {
        std::int64_t at;
        std::string before;
        std::int64_t size; // of the file before it
    };

    sqlite3_vfs m_vfs = {};
    std::mt19937 m_chance;
    std::map<std::string, std::vector<Write>> m_unsynced;
    std::int64_t m_calls = 0;
    std::int64_t m_callsToCut = 0; // 0: none is planned
    bool m_dark = false;
};

// A memory kept in files of that disk. Every call of it is durable when it returns; the one that
// the power is cut at may have been carried out, not at all or in part.
class CutStorage : public bancada::Storage
{
  public:
    // `disk` is borrowed and outlives this.
    explicit CutStorage(CutDisk& disk) : m_disk(disk) {}

    std::optional<std::string> Read(const std::string& path, std::size_t maxBytes) override;
    void Replace(const std::string& path, std::string_view content) override;
    void Create(const std::string& path, std::string_view content,
                const std::string& like) override;
    void Append(std::string_view text) override;
    void Remove(const std::string& path) override;

  private:
    CutDisk& m_disk;
    std::string m_appended; // what Create has made
};

} // namespace anos
