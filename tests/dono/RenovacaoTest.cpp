// A database is set aside and a new one begun while the power goes or a call fails: the old one is
// whole under one of the two names, with all that was acknowledged, and the firmware log knows it.
#include "tests/dono/Aparelho.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <iostream>
#include <set>

namespace
{

using namespace dono;
using namespace falhas;

constexpr char ASIDE[] = "banco.velho";
constexpr std::size_t BEFORE = 5; // commands
constexpr std::size_t AFTER = 7;  // the command that opens a receipt

enum class State {
    IN_ORDER,
    REFUSED // with rows that are in its log alone
};

// What is on the disk before: commands in a database that is then open, or that is of no use
// because its first page says that it is newer.
Image OldDatabase(State state)
{
    const SimulatedDisk disk;
    {
        Aparelho device(disk, Numbers::NONE);
        EXPECT_EQ(device.Open(), LogFault::NONE);
        for (std::size_t i = 0; i < BEFORE; ++i) {
            EXPECT_EQ(device.Run(i).state, LogState::KEPT);
        }
    }
    if (state == State::REFUSED) {
        const Leitura old(disk);
        sqlite3_db_config(old.Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        EXPECT_EQ(sqlite3_exec(old.Handle(),
                               "PRAGMA application_id = 0x454346FF;"
                               "UPDATE versao_sb SET rowid = rowid + 5",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
    }
    return disk.Files();
}

std::string DumpOf(const Image& image, const std::string& name)
{
    Image one;
    for (const char* ending : {"", "-wal", "-journal"}) {
        const auto found = image.find(name + ending);
        if (found != image.end()) {
            one[BANCO + std::string(ending)] = found->second;
        }
    }
    const SimulatedDisk disk(one);
    const Leitura reader(disk);
    EXPECT_EQ(reader.Integrity(), "ok");
    return Dump(reader.Handle());
}

struct Ran {
    LogFault opened = LogFault::NONE;
    LogFault renewed = LogFault::NONE;
    bool kept = false; // the command after it
    bool told = false; // durably
};

// Opens, sets the database aside, and runs one command more.
Ran Renew(SimulatedDisk& disk)
{
    Ran ran;
    Aparelho device(disk, Numbers::NONE);
    device.MoveOn(disk);
    ran.opened = device.Open();
    ran.renewed = device.Database().BeginAnew(ASIDE);
    ran.kept = device.Run(AFTER).state == LogState::KEPT;
    const auto end = device.Entries().begin() + static_cast<std::ptrdiff_t>(device.Synced());
    ran.told = std::find_if(device.Entries().begin(), end, [](const std::string& entry) {
                   return entry.find(std::string("set aside as ") + ASIDE) != std::string::npos;
               }) != end;
    return ran;
}

// What is there now, and after the next opening.
void CheckAfter(const Image& image, bool powersafe, State state, const std::string& rows,
                const Ran& ran)
{
    const bool moved = image.count(ASIDE) != 0;
    EXPECT_TRUE(ran.told || !moved) << "the firmware log does not know it";
    EXPECT_TRUE(moved || image.count(BANCO) != 0) << "it is nowhere";
    SimulatedDisk disk(image, powersafe);
    LogFault opened = LogFault::NONE;
    {
        Aparelho again(disk, Numbers::NONE);
        again.MoveOn(disk);
        opened = again.Open();
        if (state == State::REFUSED && opened == LogFault::NEWER) {
            EXPECT_FALSE(disk.Has(ASIDE));
        } else {
            EXPECT_EQ(opened, LogFault::NONE) << again.Database().Text();
        }
    }
    const Image settled = disk.Files();
    if (settled.count(ASIDE) != 0) {
        EXPECT_EQ(settled.count("banco.db-aside"), 0U) << "half done";
        EXPECT_TRUE(DumpOf(settled, ASIDE) == rows) << "not whole";
    } else {
        EXPECT_TRUE(DumpOf(settled, BANCO) == rows) << "not as it was";
    }
}

struct OldOne {
    const char* name;
    State state;
};

class OwnersRenewal : public testing::TestWithParam<OldOne>
{
};

TEST_P(OwnersRenewal, APowerCutLosesNothingOfTheOldOne)
{
    const Image old = OldDatabase(GetParam().state);
    const std::string rows = DumpOf(old, BANCO);
    int cuts = 0;
    int images = 0;
    int moved = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk(old);
        disk.CutPowerAt(at);
        const Ran ran = Renew(disk);
        if (!disk.IsDark()) {
            EXPECT_EQ(ran.renewed, LogFault::NONE);
            EXPECT_TRUE(ran.kept);
            EXPECT_TRUE(ran.told);
            EXPECT_TRUE(DumpOf(disk.Files(), ASIDE) == rows);
            break;
        }
        ++cuts;
        if (ran.renewed == LogFault::NONE) {
            continue; // a cut within a command, as QuedaTest.cpp has them
        }
        std::set<Image> seen;
        std::vector<Damage> damages = Damages(true);
        if (at <= 20) {
            // Which of the new names are there is a matter of chance.
            damages.insert(damages.end(), 20, Damage::RANDOM_SECTORS);
        }
        for (std::size_t i = 0; i < damages.size(); ++i) {
            SCOPED_TRACE("cut at call " + std::to_string(at) + ", damage " +
                         std::to_string(static_cast<int>(damages[i])));
            const Image image = disk.AfterCut(damages[i], static_cast<std::uint32_t>(at * 100) +
                                                              static_cast<std::uint32_t>(i));
            if (seen.insert(image).second) {
                CheckAfter(image, true, GetParam().state, rows, ran);
                moved += image.count(ASIDE) != 0 ? 1 : 0;
                ++images;
            }
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(images, 0);
    if (Step() == 1) { // else perhaps all fall on one side of the moves
        EXPECT_GT(moved, 0);
        EXPECT_LT(moved, images);
    }
    std::cout << cuts << " power cuts, " << images << " different disks looked at, " << moved
              << " of them with the database set aside\n";
}

struct Call {
    Io io;
    int result;
};

TEST_P(OwnersRenewal, AFailingCallLosesNothingOfTheOldOne)
{
    const Image old = OldDatabase(GetParam().state);
    const std::string rows = DumpOf(old, BANCO);
    int faults = 0;
    int failed = 0;
    for (const Call call :
         {Call{Io::WRITE, SQLITE_IOERR_WRITE}, Call{Io::WRITE, SQLITE_FULL},
          Call{Io::SYNC, SQLITE_IOERR_FSYNC}, Call{Io::READ, SQLITE_IOERR_READ},
          Call{Io::TRUNCATE, SQLITE_IOERR_TRUNCATE}, Call{Io::DELETE, SQLITE_IOERR_DELETE},
          Call{Io::OPEN, SQLITE_CANTOPEN}, Call{Io::RENAME, SQLITE_IOERR},
          Call{Io::SHARE, SQLITE_IOERR_SHMMAP}, Call{Io::UNLOCK, SQLITE_IOERR_UNLOCK}}) {
        for (const bool forever : {false, true}) {
            for (int at = 1;; at += Step()) {
                SCOPED_TRACE("call " + std::to_string(at) + " of kind " +
                             std::to_string(static_cast<int>(call.io)) +
                             (forever ? " and all after it" : ""));
                SimulatedDisk disk(old);
                disk.FailAt(at, {call.io, call.result, forever, call.result == SQLITE_FULL});
                const Ran ran = Renew(disk);
                if (!disk.HasFailed()) {
                    break;
                }
                ++faults;
                failed += ran.renewed != LogFault::NONE ? 1 : 0;
                disk.Heal();
                const Image now = disk.Files();
                EXPECT_TRUE(ran.told || now.count(ASIDE) == 0) << "the log does not know it";

                // The same call goes on, and what ran meanwhile is kept somewhere.
                {
                    Aparelho again(disk, Numbers::NONE);
                    again.MoveOn(disk);
                    again.Open();
                    if (!disk.Has(ASIDE)) {
                        EXPECT_EQ(again.Database().BeginAnew(ASIDE), LogFault::NONE)
                            << again.Database().Text();
                    }
                    EXPECT_EQ(again.Run(1).state, LogState::KEPT);
                }
                EXPECT_EQ(disk.Files().count("banco.db-aside"), 0U);
                const std::string aside = DumpOf(disk.Files(), ASIDE);
                if (ran.renewed == LogFault::NONE || !ran.kept || now.count(ASIDE) != 0) {
                    EXPECT_TRUE(aside == rows) << "not whole";
                } else {
                    EXPECT_GT(aside.size(), rows.size()) << "the old one went on";
                }
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    EXPECT_GT(failed, 0);
    std::cout << faults << " faults, " << failed << " times nothing was begun anew\n";
}

INSTANTIATE_TEST_SUITE_P(Databases, OwnersRenewal,
                         testing::Values(OldOne{"InGoodOrder", State::IN_ORDER},
                                         OldOne{"Refused", State::REFUSED}),
                         [](const testing::TestParamInfo<OldOne>& old) {
                             return std::string(old.param.name);
                         });

} // namespace
