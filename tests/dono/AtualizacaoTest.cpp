// A database of an older version whose upgrade fails, or is cut short: it is as it was, or
// upgraded.
#include "tests/dono/Aparelho.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iostream>
#include <set>

namespace
{

using namespace dono;
using namespace falhas;

constexpr char BEFORE[] = "0";
const std::string AFTER = std::to_string(0x45434601);

void Execute(sqlite3* db, const char* sql)
{
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
}

enum class Mode {
    DELETE,
    WAL,
    WAL_WITH_ROWS // that are in the log alone
};

// All commands, in a database of before versions.
Image OldDatabase(Mode mode, bool powersafe = true)
{
    const SimulatedDisk disk({}, powersafe);
    {
        Aparelho device(disk, Numbers::EACH);
        EXPECT_EQ(device.Open(), LogFault::NONE);
        for (std::size_t i = 0; i < Comandos().size(); ++i) {
            EXPECT_EQ(device.Run(i).state, LogState::KEPT);
        }
    }
    const Leitura old(disk);
    if (mode == Mode::WAL_WITH_ROWS) {
        sqlite3_db_config(old.Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        Execute(old.Handle(), "UPDATE versao_sb SET rowid = rowid + 5");
    }
    Execute(old.Handle(), "PRAGMA application_id = 0");
    if (mode == Mode::DELETE) {
        Execute(old.Handle(), "PRAGMA journal_mode = DELETE");
    }
    return disk.Files();
}

std::string DumpOf(const Image& image)
{
    const SimulatedDisk disk(image);
    return Dump(Leitura(disk).Handle());
}

// The file of the database, when whatever its journal has is rolled back.
Bytes Recovered(SimulatedDisk& disk)
{
    {
        const Leitura reader(disk);
        sqlite3_db_config(reader.Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        EXPECT_EQ(Value(reader.Handle(), "PRAGMA user_version"), std::to_string(Comandos().size()));
    }
    return disk.Files()[BANCO];
}

struct OldOne {
    const char* name;
    Mode mode;
};

class Upgrade : public testing::TestWithParam<OldOne>
{
};

TEST_P(Upgrade, APowerCutLeavesItAsItWasOrUpgraded)
{
    int cuts = 0;
    int images = 0;
    std::set<std::string> versions;
    for (const bool powersafe : {true, false}) {
        const Image old = OldDatabase(GetParam().mode, powersafe);
        const std::string rows = DumpOf(old);
        for (int at = 1;; at += Step()) {
            SimulatedDisk disk(old, powersafe);
            disk.CutPowerAt(at);
            {
                Aparelho device(disk, Numbers::EACH);
                device.Open();
            }
            if (!disk.IsDark()) {
                break;
            }
            ++cuts;
            std::set<Image> seen;
            for (const Damage damage : Damages(powersafe)) {
                SCOPED_TRACE("cut at call " + std::to_string(at) + ", damage " +
                             std::to_string(static_cast<int>(damage)));
                const Image image = disk.AfterCut(damage, static_cast<std::uint32_t>(at));
                if (!seen.insert(image).second) {
                    continue;
                }
                ++images;
                {
                    const SimulatedDisk looked(image, powersafe);
                    const Leitura reader(looked);
                    versions.insert(Value(reader.Handle(), "PRAGMA application_id"));
                    EXPECT_EQ(reader.Integrity(), "ok");
                    EXPECT_TRUE(Dump(reader.Handle()) == rows);
                }
                const SimulatedDisk next(image, powersafe);
                {
                    Aparelho again(next, Numbers::EACH);
                    EXPECT_EQ(again.Open(), LogFault::NONE) << again.Database().Text();
                    EXPECT_TRUE(Dump(again.Database().Handle()) == rows);
                    EXPECT_EQ(again.Database().CommandNumber(),
                              static_cast<std::int32_t>(Comandos().size()));
                }
                EXPECT_EQ(Value(Leitura(next).Handle(), "PRAGMA application_id"), AFTER);
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    if (Step() == 1) { // else perhaps all fall on one side of the commit
        EXPECT_EQ(versions, (std::set<std::string>{BEFORE, AFTER}));
    }
    std::cout << cuts << " power cuts, " << images << " different disks looked at\n";
}

struct Call {
    Io io;
    int result;
};

TEST_P(Upgrade, AFailingCallLeavesItAsItWas)
{
    const Image old = OldDatabase(GetParam().mode);
    const std::string rows = DumpOf(old);
    int faults = 0;
    int refused = 0;
    for (const Call call :
         {Call{Io::WRITE, SQLITE_FULL}, Call{Io::WRITE, SQLITE_IOERR_WRITE},
          Call{Io::SYNC, SQLITE_IOERR_FSYNC}, Call{Io::READ, SQLITE_IOERR_READ},
          Call{Io::TRUNCATE, SQLITE_IOERR_TRUNCATE}, Call{Io::DELETE, SQLITE_IOERR_DELETE},
          Call{Io::OPEN, SQLITE_CANTOPEN}, Call{Io::SHARE, SQLITE_IOERR_SHMMAP},
          Call{Io::UNLOCK, SQLITE_IOERR_UNLOCK}}) {
        for (const bool forever : {false, true}) {
            for (int at = 1;; at += Step()) {
                SCOPED_TRACE("call " + std::to_string(at) + " of kind " +
                             std::to_string(static_cast<int>(call.io)) +
                             (forever ? " and all after it" : ""));
                SimulatedDisk disk(old);
                disk.FailAt(at, {call.io, call.result, forever, call.result == SQLITE_FULL});
                LogFault opened = LogFault::NONE;
                {
                    Aparelho device(disk, Numbers::EACH);
                    opened = device.Open();
                }
                if (!disk.HasFailed()) {
                    EXPECT_EQ(opened, LogFault::NONE);
                    break;
                }
                ++faults;
                disk.Heal();
                const Bytes file = Recovered(disk);
                {
                    const Leitura reader(disk);
                    EXPECT_EQ(reader.Integrity(), "ok");
                    EXPECT_TRUE(Dump(reader.Handle()) == rows);
                    if (opened != LogFault::NONE) {
                        ++refused;
                        EXPECT_EQ(Value(reader.Handle(), "PRAGMA application_id"), BEFORE);
                        EXPECT_TRUE(file == old.at(BANCO)) << "another file";
                    }
                }
                Aparelho again(disk, Numbers::EACH);
                EXPECT_EQ(again.Open(), LogFault::NONE) << again.Database().Text();
                EXPECT_TRUE(Dump(again.Database().Handle()) == rows);
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    EXPECT_GT(refused, 0);
    std::cout << faults << " faults, " << refused << " upgrades failed\n";
}

INSTANTIATE_TEST_SUITE_P(Databases, Upgrade,
                         testing::Values(OldOne{"RollbackJournal", Mode::DELETE},
                                         OldOne{"WriteAheadLog", Mode::WAL},
                                         OldOne{"WriteAheadLogWithRows", Mode::WAL_WITH_ROWS}),
                         [](const testing::TestParamInfo<OldOne>& old) {
                             return std::string(old.param.name);
                         });

} // namespace
