// What the library promises while its disk or its memory fails, without a bench around it.
#include "tests/dono/Aparelho.h"
#include "tests/falhas/AllocationFaults.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <iostream>

namespace
{

using namespace dono;
using namespace falhas;

int CountStatements(sqlite3* db)
{
    int count = 0;
    for (sqlite3_stmt* one = sqlite3_next_stmt(db, nullptr); one != nullptr;
         one = sqlite3_next_stmt(db, one)) {
        ++count;
    }
    return count;
}

bool IsLoss(const std::string& entry)
{
    return entry.rfind(LOST_COMMAND_ENTRY, 0) == 0;
}

// One command under faults. Answers whether it was kept.
bool RunOne(Aparelho& device, std::size_t command)
{
    LogDatabase& database = device.Database();
    SCOPED_TRACE(Comandos()[command]->Name());
    const std::size_t entries = device.Entries().size();
    // Nothing stays in memory from one command to the next, so that each one reads.
    sqlite3_db_release_memory(database.Handle());
    const LogOutcome outcome = device.Run(command);
    const bool kept = outcome.state == LogState::KEPT;
    EXPECT_EQ(outcome.fault == LogFault::NONE, kept);
    EXPECT_EQ(std::string(outcome.text).empty(), kept);
    if (database.Handle() != nullptr) {
        EXPECT_NE(sqlite3_get_autocommit(database.Handle()), 0);
        // Its own four.
        EXPECT_EQ(CountStatements(database.Handle()), database.IsOpen() ? 4 : 0);
    }
    // A loss is told once, and the entry is durable with the answer.
    std::size_t told = 0;
    for (std::size_t i = entries; i < device.Entries().size(); ++i) {
        told += IsLoss(device.Entries()[i]) ? 1 : 0;
    }
    EXPECT_EQ(told, kept ? 0U : 1U);
    EXPECT_TRUE(kept || device.Synced() == device.Entries().size());
    return kept;
}

// Runs all commands while calls fail, and checks what is there when they do not any more. Answers
// how many were lost.
int RunUnderFaults(SimulatedDisk& disk, Numbers numbers, const std::function<void()>& disarm,
                   const std::string& circumstances)
{
    SCOPED_TRACE(circumstances);
    std::vector<bool> lost(Comandos().size(), true);
    std::int32_t number = 0;
    bool opened = false;
    {
        Aparelho device(disk, numbers);
        opened = device.Open() == LogFault::NONE;
        EXPECT_EQ(opened, device.Database().IsOpen());
        EXPECT_EQ(opened, std::string(device.Database().Text()).empty());
        for (std::size_t i = 0; i < lost.size() && opened; ++i) {
            lost[i] = !RunOne(device, i);
        }
        number = device.Database().CommandNumber();
    }
    disarm();
    {
        // What was begun is finished by the next opening.
        Aparelho again(disk, numbers);
        EXPECT_EQ(again.Open(), LogFault::NONE) << again.Database().Text();
        EXPECT_EQ(again.Database().CommandNumber(), opened ? number : 0);
        EXPECT_EQ(Dump(again.Database().Handle()), Expected(lost.size(), lost));
    }
    const Leitura leitura(disk);
    EXPECT_EQ(leitura.Integrity(), "ok");
    EXPECT_EQ(Dump(leitura.Handle()), Expected(lost.size(), lost));

    int count = 0;
    for (const bool one : lost) {
        count += opened && one ? 1 : 0;
    }
    return count;
}

struct Kind {
    const char* name;
    Io io;
    int result;
    bool halfDone;
    Numbers numbers;
};

class OwnersDisk : public testing::TestWithParam<Kind>
{
};

TEST_P(OwnersDisk, EveryCallFailsOnceAndForEver)
{
    const Kind& kind = GetParam();
    int runs = 0;
    int lost = 0;
    for (const bool forever : {false, true}) {
        for (int at = 1;; at += Step()) {
            SimulatedDisk disk;
            disk.FailAt(at, {kind.io, kind.result, forever, kind.halfDone});
            lost += RunUnderFaults(
                disk, kind.numbers, [&] { disk.Heal(); },
                std::string(forever ? "for ever from call " : "at call ") + std::to_string(at));
            if (!disk.HasFailed()) {
                break;
            }
            ++runs;
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(runs, 0);
    std::cout << kind.name << ": " << runs << " faults, " << lost << " commands lost and named\n";
}

constexpr Numbers NONE = Numbers::NONE;
constexpr Numbers EACH = Numbers::EACH;

INSTANTIATE_TEST_SUITE_P(
    Calls, OwnersDisk,
    testing::Values(Kind{"WriteError", Io::WRITE, SQLITE_IOERR_WRITE, false, NONE},
                    Kind{"WriteErrorNumbered", Io::WRITE, SQLITE_IOERR_WRITE, false, EACH},
                    Kind{"WriteErrorHalfDone", Io::WRITE, SQLITE_IOERR_WRITE, true, NONE},
                    Kind{"DiskFull", Io::WRITE, SQLITE_FULL, false, NONE},
                    Kind{"DiskFullHalfDoneNumbered", Io::WRITE, SQLITE_FULL, true, EACH},
                    Kind{"SyncError", Io::SYNC, SQLITE_IOERR_FSYNC, false, NONE},
                    Kind{"SyncErrorNumbered", Io::SYNC, SQLITE_IOERR_FSYNC, false, EACH},
                    Kind{"TruncateError", Io::TRUNCATE, SQLITE_IOERR_TRUNCATE, false, NONE},
                    Kind{"ReadError", Io::READ, SQLITE_IOERR_READ, false, NONE},
                    Kind{"ReadErrorNumbered", Io::READ, SQLITE_IOERR_READ, false, EACH},
                    Kind{"DeleteError", Io::DELETE, SQLITE_IOERR_DELETE, false, NONE},
                    Kind{"OpenError", Io::OPEN, SQLITE_CANTOPEN, false, NONE},
                    Kind{"SharedMemoryError", Io::SHARE, SQLITE_IOERR_SHMMAP, false, NONE},
                    Kind{"UnlockError", Io::UNLOCK, SQLITE_IOERR_UNLOCK, false, NONE}),
    [](const testing::TestParamInfo<Kind>& kind) { return std::string(kind.param.name); });

// A run on a disk without a write-ahead log was cut off within a command: a hot journal stands
// there.
Image WithHotJournal()
{
    Image found;
    for (int at = 1; found.empty(); ++at) {
        SimulatedDisk disk;
        disk.LeaveOutSharedMemory();
        Aparelho device(disk, Numbers::EACH);
        EXPECT_EQ(device.Open(), LogFault::NONE);
        EXPECT_EQ(device.Run(0).state, LogState::KEPT);
        const Image before = disk.Files();
        disk.CutPowerAt(at);
        device.Run(1);
        const Image after = disk.AfterCut(Damage::ALL_KEPT, 1);
        // Some of the new content is in the file.
        if (after.count("banco.db-journal") != 0 && after.at(BANCO) != before.at(BANCO)) {
            found = after;
        }
    }
    return found;
}

// What is refused is as it was, whatever fails meanwhile: only its journal knows what it is.
TEST(OwnersRefusal, LeavesAHotJournalWhereItIs)
{
    const Image image = WithHotJournal();
    int runs = 0;
    for (const Io io : {Io::READ, Io::OPEN, Io::WRITE, Io::SYNC, Io::TRUNCATE, Io::DELETE}) {
        for (const bool forever : {false, true}) {
            for (int at = 1;; ++at) {
                SCOPED_TRACE("call " + std::to_string(at) + " of kind " +
                             std::to_string(static_cast<int>(io)));
                SimulatedDisk disk(image);
                disk.LeaveOutSharedMemory();
                disk.FailAt(at,
                            {io, io == Io::OPEN ? SQLITE_CANTOPEN : SQLITE_IOERR, forever, false});
                std::int32_t asked = -1;
                LogDatabaseOptions options;
                options.vfs = disk.Name().c_str();
                options.context = &asked;
                options.accepts = [](void* out, std::int32_t number) {
                    *static_cast<std::int32_t*>(out) = number;
                    return false;
                };
                LogDatabase database;
                const LogFault fault = database.Open(BANCO, options);
                database.Close();
                EXPECT_NE(fault, LogFault::NONE);
                EXPECT_TRUE(asked == -1 || asked == 1) << asked;
                EXPECT_TRUE(disk.Files() == image) << "changed";
                if (!disk.HasFailed()) {
                    EXPECT_EQ(fault, LogFault::WRONG_NUMBER);
                    break;
                }
                ++runs;
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    for (int at = 1;; ++at) {
        SimulatedDisk disk(image);
        disk.LeaveOutSharedMemory();
        LogDatabaseOptions options;
        options.vfs = disk.Name().c_str();
        options.accepts = [](void*, std::int32_t) { return false; };
        FailAllocation(at, false);
        LogDatabase database;
        const LogFault fault = database.Open(BANCO, options);
        database.Close();
        const bool failed = AllocationHasFailed();
        HealAllocations();
        EXPECT_NE(fault, LogFault::NONE) << "allocation " << at;
        EXPECT_TRUE(disk.Files() == image) << "allocation " << at;
        if (!failed || HasFailure()) {
            break;
        }
        ++runs;
    }
    std::cout << runs << " faults\n";
}

// An opening allocates ten thousand times, mostly for one schema: each 31st of them is tried, of
// the commands' every one.
constexpr int OPENING_STEP = 31;

int CountOpening()
{
    const SimulatedDisk disk;
    constexpr int NEVER = 1 << 30;
    FailAllocation(NEVER, false);
    Aparelho device(disk, Numbers::NONE);
    EXPECT_EQ(device.Open(), LogFault::NONE);
    const int opening = NEVER - AllocationsLeft();
    HealAllocations();
    return opening;
}

class OwnersMemory : public testing::TestWithParam<bool>
{
};

TEST_P(OwnersMemory, EveryAllocationFails)
{
    const bool forever = GetParam();
    const int opening = CountOpening();
    Expected(Comandos().size(), std::vector<bool>(Comandos().size()));
    int runs = 0;
    int lost = 0;
    for (int at = 1;; at += at < opening ? OPENING_STEP * Step() : Step()) {
        SimulatedDisk disk;
        FailAllocation(at, forever);
        lost += RunUnderFaults(
            disk, Numbers::EACH, [] { HealAllocations(); },
            "allocation " + std::to_string(at) + (forever ? " and all after it" : ""));
        if (!AllocationHasFailed()) {
            break;
        }
        ++runs;
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(runs, 0);
    std::cout << "allocations failing " << (forever ? "for ever" : "once") << ": " << runs
              << " faults, " << lost << " commands lost and named\n";
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, OwnersMemory, testing::Bool());

} // namespace
