#include "tests/falhas/SimulatedDisk.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace falhas
{
namespace
{

constexpr int SECTOR = 512;         // what a disk writes whole, or not
constexpr int TOLD_SECTOR = 4096;   // what it says of itself, as the engine's own layers do
constexpr int MAX_PATH_BYTES = 200; // names are short here

// The engine's view of an open file.
struct OpenFile {
    sqlite3_file base;
    SimulatedDisk* disk;
    std::shared_ptr<SimulatedDisk::File>* file;
    bool syncsNames; // a journal or log that this opening has made
};

OpenFile& Of(sqlite3_file* file)
{
    return *reinterpret_cast<OpenFile*>(file);
}

int CloseFile(sqlite3_file* file)
{
    delete Of(file).file;
    Of(file).file = nullptr;
    return SQLITE_OK;
}

int ReadFile(sqlite3_file* file, void* bytes, int length, sqlite3_int64 at)
{
    return Of(file).disk->Read(**Of(file).file, bytes, length, at);
}

int WriteFile(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 at)
{
    return Of(file).disk->Write(**Of(file).file, bytes, length, at);
}

int TruncateFile(sqlite3_file* file, sqlite3_int64 length)
{
    return Of(file).disk->Truncate(**Of(file).file, length);
}

int SyncFile(sqlite3_file* file, int)
{
    return Of(file).disk->Sync(**Of(file).file, Of(file).syncsNames);
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    *size = static_cast<sqlite3_int64>((*Of(file).file)->now.size());
    return SQLITE_OK;
}

// One connection at a time: it gets every lock that it could give back before.
int LockFile(sqlite3_file*, int)
{
    return SQLITE_OK;
}

int CheckReservedLock(sqlite3_file*, int* held)
{
    *held = 0;
    return SQLITE_OK;
}

int FileControl(sqlite3_file*, int, void*)
{
    return SQLITE_NOTFOUND;
}

int SectorSize(sqlite3_file*)
{
    return TOLD_SECTOR;
}

int DeviceCharacteristics(sqlite3_file* file)
{
    return Of(file).disk->PowersafeOverwrite() ? SQLITE_IOCAP_POWERSAFE_OVERWRITE : 0;
}

int ShareMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    return Of(file).disk->Share(**Of(file).file, region, size, extend != 0, memory);
}

int ShareLock(sqlite3_file* file, int first, int count, int flags)
{
    return Of(file).disk->Lock(**Of(file).file, first, count, flags);
}

void ShareBarrier(sqlite3_file*) {}

int ShareUnmap(sqlite3_file* file, int)
{
    (*Of(file).file)->shared.clear();
    (*Of(file).file)->stuckShared = (*Of(file).file)->stuckExclusive = 0;
    return SQLITE_OK;
}

const sqlite3_io_methods METHODS = {2,
                                    CloseFile,
                                    ReadFile,
                                    WriteFile,
                                    TruncateFile,
                                    SyncFile,
                                    FileSize,
                                    LockFile,
                                    LockFile,
                                    CheckReservedLock,
                                    FileControl,
                                    SectorSize,
                                    DeviceCharacteristics,
                                    ShareMap,
                                    ShareLock,
                                    ShareBarrier,
                                    ShareUnmap,
                                    nullptr,
                                    nullptr};

const sqlite3_io_methods METHODS_WITHOUT_SHARING = [] {
    sqlite3_io_methods methods = METHODS;
    methods.iVersion = 1;
    return methods;
}();

SimulatedDisk& DiskOf(sqlite3_vfs* vfs)
{
    return *static_cast<SimulatedDisk*>(vfs->pAppData);
}

int OpenVfs(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    OpenFile& opened = Of(file);
    opened.base.pMethods = nullptr;
    const bool existed = name != nullptr && DiskOf(vfs).Has(name);
    std::shared_ptr<SimulatedDisk::File> found;
    const int result = DiskOf(vfs).Open(name, flags, found);
    if (result != SQLITE_OK) {
        return result;
    }
    opened.disk = &DiskOf(vfs);
    opened.file = new std::shared_ptr<SimulatedDisk::File>(found);
    opened.syncsNames =
        name != nullptr && !existed && (flags & (SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL)) != 0;
    opened.base.pMethods = DiskOf(vfs).SharesMemory() ? &METHODS : &METHODS_WITHOUT_SHARING;
    if (outFlags != nullptr) {
        *outFlags = flags;
    }
    return SQLITE_OK;
}

int DeleteVfs(sqlite3_vfs* vfs, const char* name, int syncs)
{
    return DiskOf(vfs).Delete(name, syncs != 0);
}

int AccessVfs(sqlite3_vfs* vfs, const char* name, int, int* answer)
{
    *answer = DiskOf(vfs).Has(name) ? 1 : 0;
    return SQLITE_OK;
}

int FullPathnameVfs(sqlite3_vfs*, const char* name, int size, char* path)
{
    if (static_cast<int>(std::strlen(name)) >= size) {
        return SQLITE_CANTOPEN;
    }
    std::strcpy(path, name);
    return SQLITE_OK;
}

int RandomnessVfs(sqlite3_vfs*, int length, char* bytes)
{
    std::mt19937 random(1);
    for (int i = 0; i < length; ++i) {
        bytes[i] = static_cast<char>(random() & 0x7F);
    }
    return length;
}

int SleepVfs(sqlite3_vfs*, int microseconds)
{
    return microseconds;
}

int CurrentTimeVfs(sqlite3_vfs*, double* julianDay)
{
    *julianDay = 2460373.5; // any day
    return SQLITE_OK;
}

int GetLastErrorVfs(sqlite3_vfs*, int, char*)
{
    return 0;
}

// Carries a call out on the content of a file.
void Apply(const SimulatedDisk::Call& call, Bytes& content)
{
    const std::size_t at = static_cast<std::size_t>(call.at);
    if (call.truncates) {
        if (content.size() > at) {
            content.resize(at);
        }
        return;
    }
    if (content.size() < at + call.bytes.size()) {
        content.resize(at + call.bytes.size());
    }
    std::copy(call.bytes.begin(), call.bytes.end(),
              content.begin() + static_cast<std::ptrdiff_t>(at));
}

void Scramble(unsigned char* bytes, std::size_t length, std::mt19937& random)
{
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<unsigned char>(random());
    }
}

// A call as the power cut left it. A truncation is done or not, never in part.
SimulatedDisk::Call Torn(SimulatedDisk::Call call, std::size_t from, std::size_t to)
{
    if (call.truncates) {
        return call;
    }
    to = std::min(to, call.bytes.size());
    from = std::min(from, to);
    call.at += static_cast<std::int64_t>(from);
    call.bytes = Bytes(call.bytes.begin() + static_cast<std::ptrdiff_t>(from),
                       call.bytes.begin() + static_cast<std::ptrdiff_t>(to));
    return call;
}

// The length of the part of a call up to a sector's end near its middle.
std::size_t UpToSector(const SimulatedDisk::Call& call)
{
    const std::int64_t middle = call.at + static_cast<std::int64_t>(call.bytes.size() / 2);
    const std::int64_t end = middle - middle % SECTOR;
    return end <= call.at ? 0 : static_cast<std::size_t>(end - call.at);
}

// For each sector of a write: as it was, as it was to be, or garbage.
void ApplySectors(const SimulatedDisk::Call& call, Bytes& content, std::mt19937& random)
{
    if (call.truncates) {
        if (random() % 2 == 0) {
            Apply(call, content);
        }
        return;
    }
    for (std::size_t from = 0; from < call.bytes.size();) {
        const std::int64_t at = call.at + static_cast<std::int64_t>(from);
        const std::size_t to =
            std::min(call.bytes.size(), from + static_cast<std::size_t>(SECTOR - at % SECTOR));
        SimulatedDisk::Call sector = Torn(call, from, to);
        const auto fate = random() % 3;
        if (fate == 0) {
            Scramble(sector.bytes.data(), sector.bytes.size(), random);
        }
        if (fate != 1) {
            Apply(sector, content);
        }
        from = to;
    }
}

// Garbage in every told sector that the write touched.
void SpoilSectors(const SimulatedDisk::Call& call, Bytes& content, std::mt19937& random)
{
    Apply(call, content);
    if (call.truncates || call.bytes.empty()) {
        return;
    }
    const auto at = static_cast<std::size_t>(call.at);
    const std::size_t from = at - at % TOLD_SECTOR;
    const std::size_t end = at + call.bytes.size() + TOLD_SECTOR - 1;
    const std::size_t to = std::min(content.size(), end - end % TOLD_SECTOR);
    Scramble(content.data() + from, to - from, random);
}

bool IsLog(const std::string& name)
{
    return name.size() > 4 && name.compare(name.size() - 4, 4, "-wal") == 0;
}

Bytes Damaged(const SimulatedDisk::File& file, Damage damage, bool isLog, std::mt19937& random)
{
    Bytes content = file.durable;
    const std::vector<SimulatedDisk::Call>& calls = file.unsynced;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const SimulatedDisk::Call& call = calls[i];
        const bool last = i + 1 == calls.size();
        SimulatedDisk::Call changed = call;
        switch (damage) {
        case Damage::ALL_LOST:
            break;
        case Damage::ALL_KEPT:
            Apply(call, content);
            break;
        case Damage::FIRST_KEPT:
            if (i == 0) {
                Apply(call, content);
            }
            break;
        case Damage::LAST_KEPT:
            if (last) {
                Apply(call, content);
            }
            break;
        case Damage::ODD_KEPT:
            if (i % 2 == 0) {
                Apply(call, content);
            }
            break;
        case Damage::EVEN_KEPT:
            if (i % 2 == 1) {
                Apply(call, content);
            }
            break;
        case Damage::EARLIER_HALF_KEPT:
            if (i < calls.size() / 2) {
                Apply(call, content);
            }
            break;
        case Damage::LATER_HALF_KEPT:
            if (i >= calls.size() / 2) {
                Apply(call, content);
            }
            break;
        case Damage::TORN_IN_SECTOR:
            Apply(Torn(call, 0, UpToSector(call) + 100), content);
            break;
        case Damage::TORN_AT_SECTOR:
            Apply(Torn(call, 0, UpToSector(call)), content);
            break;
        case Damage::TORN_HEAD_LOST:
            Apply(Torn(call, UpToSector(call), call.bytes.size()), content);
            break;
        case Damage::TORN_TAIL_GARBAGE:
            if (!call.truncates) {
                const std::size_t kept = UpToSector(call);
                Scramble(changed.bytes.data() + kept, changed.bytes.size() - kept, random);
            }
            Apply(changed, content);
            break;
        case Damage::LAST_GARBAGE:
            if (last && !call.truncates) {
                Scramble(changed.bytes.data(), changed.bytes.size(), random);
            }
            Apply(changed, content);
            break;
        case Damage::GROWN_ONLY:
            if (!call.truncates) {
                content.resize(std::max(content.size(),
                                        static_cast<std::size_t>(call.at) + call.bytes.size()));
            }
            break;
        case Damage::LOG_LOST:
            if (!isLog) {
                Apply(call, content);
            }
            break;
        case Damage::LOG_KEPT:
            if (isLog) {
                Apply(call, content);
            }
            break;
        case Damage::RANDOM_SECTORS:
            ApplySectors(call, content, random);
            break;
        case Damage::WHOLE_SECTOR_GARBAGE:
            SpoilSectors(call, content, random);
            break;
        }
    }
    return content;
}

} // namespace

std::vector<Damage> Damages(bool powersafeOverwrite)
{
    std::vector<Damage> all;
    const auto last = static_cast<int>(Damage::WHOLE_SECTOR_GARBAGE);
    for (int i = 0; i < last + (powersafeOverwrite ? 0 : 1); ++i) {
        all.push_back(static_cast<Damage>(i));
    }
    return all;
}

SimulatedDisk::SimulatedDisk(const Image& image, bool powersafeOverwrite)
    : m_powersafe(powersafeOverwrite)
{
    static int made = 0;
    m_name = "simulated-disk-" + std::to_string(++made);
    for (const auto& [name, content] : image) {
        auto file = std::make_shared<File>();
        file->now = file->durable = content;
        file->entryDurable = true;
        m_files[name] = file;
    }
    m_vfs.iVersion = 1;
    m_vfs.szOsFile = sizeof(OpenFile);
    m_vfs.mxPathname = MAX_PATH_BYTES;
    m_vfs.zName = m_name.c_str();
    m_vfs.pAppData = this;
    m_vfs.xOpen = OpenVfs;
    m_vfs.xDelete = DeleteVfs;
    m_vfs.xAccess = AccessVfs;
    m_vfs.xFullPathname = FullPathnameVfs;
    m_vfs.xRandomness = RandomnessVfs;
    m_vfs.xSleep = SleepVfs;
    m_vfs.xCurrentTime = CurrentTimeVfs;
    m_vfs.xGetLastError = GetLastErrorVfs;
    sqlite3_vfs_register(&m_vfs, 0);
}

SimulatedDisk::~SimulatedDisk()
{
    sqlite3_vfs_unregister(&m_vfs);
}

void SimulatedDisk::FailAt(int at, const Fault& fault)
{
    m_fault = fault;
    m_callsToFault = at;
    m_failing = m_failed = false;
}

void SimulatedDisk::Heal()
{
    m_callsToFault = 0;
    m_failing = false;
}

void SimulatedDisk::CutPowerAt(int at)
{
    m_callsToCut = at;
}

int SimulatedDisk::Fails(Io kind, int otherwise)
{
    if (m_dark) {
        return otherwise;
    }
    if (kind != m_fault.kind) {
        return SQLITE_OK;
    }
    if (m_callsToFault > 0 && --m_callsToFault == 0) {
        m_failed = true;
        m_failing = m_fault.forever;
        return m_fault.result;
    }
    return m_failing ? m_fault.result : SQLITE_OK;
}

bool SimulatedDisk::GoesDark()
{
    if (m_callsToCut > 0 && --m_callsToCut == 0) {
        m_dark = true;
    }
    return m_dark;
}

int SimulatedDisk::Open(const char* name, int flags, std::shared_ptr<File>& file)
{
    if (const int failure = Fails(Io::OPEN, SQLITE_CANTOPEN)) {
        return failure;
    }
    if (name == nullptr) {
        file = std::make_shared<File>();
        return SQLITE_OK;
    }
    const auto found = m_files.find(name);
    if (found != m_files.end()) {
        file = found->second;
        return SQLITE_OK;
    }
    if ((flags & SQLITE_OPEN_CREATE) == 0) {
        return SQLITE_CANTOPEN;
    }
    if (GoesDark()) {
        return SQLITE_CANTOPEN;
    }
    file = m_files[name] = std::make_shared<File>();
    return SQLITE_OK;
}

int SimulatedDisk::Delete(const char* name, bool syncs)
{
    if (const int failure = Fails(Io::DELETE, SQLITE_IOERR_DELETE)) {
        return failure;
    }
    const auto found = m_files.find(name);
    if (found == m_files.end()) {
        return SQLITE_IOERR_DELETE_NOENT;
    }
    const bool dark = GoesDark();
    if (found->second->entryDurable) {
        m_unsyncedDeletes[name] = found->second;
    }
    m_files.erase(found);
    if (dark) {
        return SQLITE_IOERR_DELETE;
    }
    if (syncs) {
        SyncNames();
    }
    return SQLITE_OK;
}

int SimulatedDisk::Rename(const char* from, const char* to)
{
    if (const int failure = Fails(Io::RENAME, SQLITE_IOERR)) {
        return failure;
    }
    const auto found = m_files.find(from);
    if (m_dark || found == m_files.end()) {
        return SQLITE_IOERR;
    }
    const bool dark = GoesDark();
    const auto replaced = m_files.find(to);
    if (replaced != m_files.end() && replaced->second->entryDurable) {
        m_unsyncedDeletes[to] = replaced->second;
    }
    const std::shared_ptr<File> file = found->second;
    if (file->entryDurable) {
        file->durableName = from;
    }
    file->entryDurable = false;
    m_files.erase(found);
    m_files[to] = file;
    return dark ? SQLITE_IOERR : SQLITE_OK;
}

int SimulatedDisk::SyncFolder()
{
    if (m_dark || GoesDark()) {
        return SQLITE_IOERR_DIR_FSYNC;
    }
    if (!m_lies) {
        SyncNames();
    }
    return SQLITE_OK;
}

int SimulatedDisk::Write(File& file, const void* bytes, int length, std::int64_t at)
{
    const auto* from = static_cast<const unsigned char*>(bytes);
    Call call = {false, at, Bytes(from, from + length)};
    int result = Fails(Io::WRITE, SQLITE_IOERR_WRITE);
    if (m_dark) {
        return result;
    }
    if (result == SQLITE_OK && m_capacity > 0 && at + length > m_capacity) {
        result = SQLITE_FULL;
    }
    if (result != SQLITE_OK) {
        if (!m_fault.halfDone) {
            return result;
        }
        call = Torn(call, 0, call.bytes.size() / 2);
    }
    const bool dark = GoesDark();
    Apply(call, file.now);
    file.unsynced.push_back(std::move(call));
    return dark ? SQLITE_IOERR_WRITE : result;
}

int SimulatedDisk::Read(File& file, void* bytes, int length, std::int64_t at)
{
    if (const int failure = Fails(Io::READ, SQLITE_IOERR_READ)) {
        return failure;
    }
    const std::int64_t size = static_cast<std::int64_t>(file.now.size());
    const auto there = static_cast<std::size_t>(
        std::max<std::int64_t>(0, std::min<std::int64_t>(length, size - at)));
    if (there > 0) {
        std::memcpy(bytes, file.now.data() + at, there);
    }
    std::memset(static_cast<char*>(bytes) + there, 0, static_cast<std::size_t>(length) - there);
    return there == static_cast<std::size_t>(length) ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int SimulatedDisk::Truncate(File& file, std::int64_t length)
{
    if (const int failure = Fails(Io::TRUNCATE, SQLITE_IOERR_TRUNCATE)) {
        return failure;
    }
    const bool dark = GoesDark();
    Call call = {true, length, {}};
    Apply(call, file.now);
    file.unsynced.push_back(std::move(call));
    return dark ? SQLITE_IOERR_TRUNCATE : SQLITE_OK;
}

int SimulatedDisk::Sync(File& file, bool syncsNames)
{
    if (const int failure = Fails(Io::SYNC, SQLITE_IOERR_FSYNC)) {
        return failure;
    }
    if (GoesDark()) {
        return SQLITE_IOERR_FSYNC;
    }
    if (m_lies) {
        return SQLITE_OK;
    }
    for (const Call& call : file.unsynced) {
        Apply(call, file.durable);
    }
    file.unsynced.clear();
    if (syncsNames) {
        SyncNames();
    }
    return SQLITE_OK;
}

int SimulatedDisk::Share(File& file, int region, int size, bool extend, void volatile** memory)
{
    *memory = nullptr;
    if (const int failure = Fails(Io::SHARE, SQLITE_IOERR_SHMMAP)) {
        return failure;
    }
    const auto count = static_cast<std::size_t>(region) + 1;
    while (extend && file.shared.size() < count) {
        file.shared.push_back(std::make_unique<Bytes>(static_cast<std::size_t>(size)));
    }
    if (file.shared.size() >= count) {
        *memory = file.shared[count - 1]->data();
    }
    return SQLITE_OK;
}

// As the engine's own layers: a connection that has a shared lock gets it again.
int SimulatedDisk::Lock(File& file, int first, int count, int flags)
{
    const unsigned locks = ((1U << count) - 1U) << first;
    const bool shared = (flags & SQLITE_SHM_SHARED) != 0;
    if ((flags & SQLITE_SHM_LOCK) != 0) {
        const unsigned inTheWay = file.stuckExclusive | (shared ? 0U : file.stuckShared);
        return (inTheWay & locks) != 0 ? SQLITE_BUSY : SQLITE_OK;
    }
    const int failure = Fails(Io::UNLOCK, SQLITE_OK);
    if (failure != SQLITE_OK) {
        (shared ? file.stuckShared : file.stuckExclusive) |= locks;
    }
    return failure;
}

void SimulatedDisk::SyncNames()
{
    for (const auto& entry : m_files) {
        entry.second->entryDurable = true;
        entry.second->durableName.clear();
    }
    m_unsyncedDeletes.clear();
}

Image SimulatedDisk::Files() const
{
    Image image;
    for (const auto& [name, file] : m_files) {
        image[name] = file->now;
    }
    return image;
}

Image SimulatedDisk::AfterCut(Damage damage, std::uint32_t seed) const
{
    std::mt19937 random(seed);
    // Whether names came and went is a matter of its own.
    const auto namesLost = [&] {
        return damage == Damage::ALL_LOST || damage == Damage::LAST_KEPT ||
               (damage == Damage::RANDOM_SECTORS && random() % 2 == 0);
    };
    Image image;
    for (const auto& [name, file] : m_unsyncedDeletes) {
        if (m_files.count(name) == 0 && namesLost()) {
            image[name] = Damaged(*file, damage, IsLog(name), random);
        }
    }
    for (const auto& [name, file] : m_files) {
        if (file->entryDurable || !namesLost()) {
            image[name] = Damaged(*file, damage, IsLog(name), random);
        } else {
            if (const auto old = m_unsyncedDeletes.find(name); old != m_unsyncedDeletes.end()) {
                image[name] = Damaged(*old->second, damage, IsLog(name), random);
            }
            if (!file->durableName.empty()) {
                image[file->durableName] = Damaged(*file, damage, IsLog(name), random);
            }
        }
    }
    return image;
}

} // namespace falhas
