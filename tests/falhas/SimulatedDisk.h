// A disk for the engine: a file layer in memory that fails on command, loses its power, and knows
// what was not synced by then.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace falhas
{

using Bytes = std::vector<unsigned char>;

// The files of a disk by name.
using Image = std::map<std::string, Bytes>;

enum class Io {
    READ,
    WRITE,
    SYNC,
    TRUNCATE,
    DELETE,
    OPEN,
    SHARE,  // memory shared between the connections to a write-ahead log
    UNLOCK, // the end of a lock on that memory; one that fails leaves the lock until the file
            // closes
    RENAME,
};

struct Fault {
    Io kind;
    int result;    // what the engine is told
    bool forever;  // from that call on, or that call alone
    bool halfDone; // a write leaves its first half
};

// What became of the calls that no sync had followed when the power went.
enum class Damage {
    ALL_LOST,
    ALL_KEPT,
    FIRST_KEPT,
    LAST_KEPT,
    ODD_KEPT,
    EVEN_KEPT,
    EARLIER_HALF_KEPT,
    LATER_HALF_KEPT,
    TORN_IN_SECTOR,      // each write ends within a sector
    TORN_AT_SECTOR,      // each write ends with a sector
    TORN_HEAD_LOST,      // each write's second half alone is there
    TORN_TAIL_GARBAGE,   // each write's second half is garbage
    LAST_GARBAGE,        // all kept, the last write is garbage
    GROWN_ONLY,          // files have their new length, but zeros in it
    LOG_LOST,            // lost in the write-ahead log, kept elsewhere
    LOG_KEPT,            // kept there, lost elsewhere
    RANDOM_SECTORS,      // each sector of each write for itself: old, new or garbage
    WHOLE_SECTOR_GARBAGE // each sector that a write touched is garbage: a disk without what is
                         // called powersafe overwrite
};
// Those of any disk; the last one is of a disk without powersafe overwrite alone.
std::vector<Damage> Damages(bool powersafeOverwrite);

// Registers itself as a file layer under a name of its own while it lives. All connections that
// use it are closed before it ends. One connection at a time.
class SimulatedDisk
{
  public:
    explicit SimulatedDisk(const Image& image = {}, bool powersafeOverwrite = true);
    ~SimulatedDisk();
    SimulatedDisk(const SimulatedDisk&) = delete;
    SimulatedDisk& operator=(const SimulatedDisk&) = delete;

    const std::string& Name() const { return m_name; }

    // Makes the `at`-th call of the fault's kind from now on (from 1) fail.
    void FailAt(int at, const Fault& fault);
    bool HasFailed() const { return m_failed; }
    void Heal();

    // Goes dark at the `at`-th call from now on that changes something (write, sync, truncate,
    // delete, making a file): that call is not synced, and all after it fail.
    void CutPowerAt(int at);
    bool IsDark() const { return m_dark; }

    // A disk that says it has synced, and has not.
    void LieAboutSyncs() { m_lies = true; }

    // A disk on which no memory can be shared: there is no write-ahead log on it.
    void LeaveOutSharedMemory() { m_sharesMemory = false; }
    bool SharesMemory() const { return m_sharesMemory; }

    // A file never grows beyond it; 0 is no limit. Writes beyond are SQLITE_FULL.
    void SetCapacity(std::int64_t bytesPerFile) { m_capacity = bytesPerFile; }

    // The files as a reader sees them, and as they are after a power cut.
    Image Files() const;
    Image AfterCut(Damage damage, std::uint32_t seed) const;

    struct Call { // of one file since its last sync
        bool truncates;
        std::int64_t at; // where it writes, or the length it truncates to
        Bytes bytes;
    };
    struct File {
        Bytes now;
        Bytes durable;
        std::vector<Call> unsynced;
        bool entryDurable = false; // its name is
        std::string durableName;   // the one that it had before, as long as the new one is not
        std::vector<std::unique_ptr<Bytes>> shared;
        // Locks that their connection could not give back, a bit each.
        unsigned stuckShared = 0;
        unsigned stuckExclusive = 0;
    };

    // For what keeps its files on the disk without the engine; the disk must be able to.
    // Another name for a file, and the end of one that had it.
    int Rename(const char* from, const char* to);
    // Makes all names durable.
    int SyncFolder();

    // For the file layer and for those.
    int Open(const char* name, int flags, std::shared_ptr<File>& file);
    int Delete(const char* name, bool syncs);
    bool Has(const char* name) const { return m_files.count(name) != 0; }
    int Write(File& file, const void* bytes, int length, std::int64_t at);
    int Read(File& file, void* bytes, int length, std::int64_t at);
    int Truncate(File& file, std::int64_t length);
    int Sync(File& file, bool syncsNames);
    int Share(File& file, int region, int size, bool extend, void volatile** memory);
    int Lock(File& file, int first, int count, int flags);
    bool PowersafeOverwrite() const { return m_powersafe; }

  private:
    // What the call must answer instead of being carried out; SQLITE_OK when it is.
    int Fails(Io kind, int otherwise);
    bool GoesDark();
    void SyncNames();

    std::string m_name;
    sqlite3_vfs m_vfs = {};
    bool m_powersafe;
    std::map<std::string, std::shared_ptr<File>> m_files;
    std::map<std::string, std::shared_ptr<File>> m_unsyncedDeletes;

    Fault m_fault = {};
    int m_callsToFault = 0; // 0: none is planned
    bool m_failing = false;
    bool m_failed = false;
    int m_callsToCut = 0; // 0: none is planned
    bool m_dark = false;
    bool m_lies = false;
    bool m_sharesMemory = true;
    std::int64_t m_capacity = 0;
};

} // namespace falhas
