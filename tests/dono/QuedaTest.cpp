// The power goes at every call that changes a file, the opening's included: what the library finds
// when it opens the disk again, without a bench around it.
#include "tests/dono/Aparelho.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <set>

namespace
{

using namespace dono;
using namespace falhas;

struct Cut {
    bool went = false;
    std::vector<bool> lost = std::vector<bool>(Comandos().size(), true); // not acknowledged
    std::int32_t number = 0;                                             // acknowledged
};

// Of a device whose opening has answered `opened`.
Cut RunUntilDark(Aparelho& device, LogFault opened, const SimulatedDisk& disk)
{
    Cut cut;
    for (std::size_t i = 0; i < cut.lost.size() && opened == LogFault::NONE && !disk.IsDark();
         ++i) {
        cut.lost[i] = device.Run(i).state != LogState::KEPT;
    }
    cut.number = device.Database().CommandNumber();
    cut.went = disk.IsDark();
    return cut;
}

Cut RunUntilDark(const SimulatedDisk& disk, Numbers numbers, int pageSize)
{
    Aparelho device(disk, numbers, pageSize);
    const LogFault opened = device.Open();
    return RunUntilDark(device, opened, disk);
}

// Everything that was acknowledged, and whole or not at all the command at work.
void CheckAfter(const Image& image, bool powersafe, Numbers numbers, const Cut& cut)
{
    SimulatedDisk disk(image, powersafe);
    {
        Aparelho again(disk, numbers);
        ASSERT_EQ(again.Open(), LogFault::NONE) << again.Database().Text();
        const std::string dump = Dump(again.Database().Handle());
        std::vector<bool> lost = cut.lost;
        std::int32_t number = cut.number;
        if (dump != Expected(lost.size(), lost)) {
            const std::size_t atWork = static_cast<std::size_t>(
                std::distance(lost.begin(), std::find(lost.begin(), lost.end(), true)));
            ASSERT_LT(atWork, lost.size()) << dump;
            lost[atWork] = false;
            number = static_cast<std::int32_t>(atWork) + 1;
            EXPECT_EQ(dump, Expected(lost.size(), lost));
        }
        const std::int32_t carried = again.Database().CommandNumber();
        if (numbers == Numbers::EACH) {
            // A command without a row has its number all the same.
            EXPECT_TRUE(carried == number || carried == number + 1) << carried << ", " << number;
        } else {
            EXPECT_EQ(carried, 0);
        }
        EXPECT_EQ(again.Run(0).state, LogState::KEPT);
    }
    EXPECT_EQ(Leitura(disk).Integrity(), "ok");
}

enum class Journal {
    WRITE_AHEAD,
    ROLLED_BACK // the disk has no write-ahead log
};

struct Case {
    const char* name;
    bool powersafe;
    Numbers numbers;
    int pageSize; // 0 is the library's own
    Journal journal;
};

class OwnersPower : public testing::TestWithParam<Case>
{
};

TEST_P(OwnersPower, WhatWasAcknowledgedIsKeptAndNothingInPart)
{
    const Case& of = GetParam();
    int cuts = 0;
    int images = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk({}, of.powersafe);
        if (of.journal == Journal::ROLLED_BACK) {
            disk.LeaveOutSharedMemory();
        }
        disk.CutPowerAt(at);
        const Cut cut = RunUntilDark(disk, of.numbers, of.pageSize);
        if (!cut.went) {
            break;
        }
        ++cuts;
        std::set<Image> seen; // patterns may come to the same
        for (const Damage damage : Damages(of.powersafe)) {
            SCOPED_TRACE("cut at call " + std::to_string(at) + ", damage " +
                         std::to_string(static_cast<int>(damage)));
            const Image image = disk.AfterCut(damage, static_cast<std::uint32_t>(at));
            if (seen.insert(image).second) {
                CheckAfter(image, of.powersafe, of.numbers, cut);
                ++images;
            }
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(cuts, 0);
    std::cout << cuts << " power cuts, " << images << " different disks looked at\n";
}

INSTANTIATE_TEST_SUITE_P(
    Disks, OwnersPower,
    testing::Values(Case{"WithPowersafeOverwrite", true, Numbers::NONE, 0, Journal::WRITE_AHEAD},
                    Case{"WithPowersafeOverwriteNumbered", true, Numbers::EACH, 0,
                         Journal::WRITE_AHEAD},
                    Case{"WithoutNumbered", false, Numbers::EACH, 0, Journal::WRITE_AHEAD},
                    Case{"PagesOf4096Without", false, Numbers::NONE, 4096, Journal::WRITE_AHEAD},
                    Case{"WithoutAWriteAheadLog", true, Numbers::EACH, 0, Journal::ROLLED_BACK}),
    [](const testing::TestParamInfo<Case>& disk) { return std::string(disk.param.name); });

// A call fails while the database is opened, and the power goes later: what the opening could not
// have, the write-ahead log above all, costs no command that was acknowledged.
struct OpeningFault {
    const char* name;
    Io io;
    int result;
};

class OwnersOpening : public testing::TestWithParam<OpeningFault>
{
};

TEST_P(OwnersOpening, AFaultThereCostsNothingThatIsAcknowledgedLater)
{
    const std::vector<Damage> damages = Damages(true);
    int withoutLog = 0;
    int images = 0;
    bool everyCallTried = false;
    for (int at = 1; !everyCallTried; ++at) {
        bool went = true;
        for (int cutAt = 1; went; cutAt += Step()) {
            SimulatedDisk disk;
            disk.FailAt(at, {GetParam().io, GetParam().result, false, false});
            Cut cut;
            {
                Aparelho device(disk, Numbers::EACH);
                const LogFault opened = device.Open();
                everyCallTried = !disk.HasFailed();
                if (opened != LogFault::NONE || everyCallTried) {
                    break;
                }
                withoutLog += device.Database().HasWriteAheadLog() ? 0 : 1;
                disk.CutPowerAt(cutAt);
                cut = RunUntilDark(device, opened, disk);
            }
            went = cut.went;
            // All that was not synced is lost, and one kind of damage more, another one each time.
            for (const Damage damage :
                 {Damage::ALL_LOST,
                  damages[static_cast<std::size_t>(at + cutAt) % damages.size()]}) {
                SCOPED_TRACE("call " + std::to_string(at) + " of the opening failed, cut at call " +
                             std::to_string(cutAt) + " after it, damage " +
                             std::to_string(static_cast<int>(damage)));
                CheckAfter(disk.AfterCut(damage, static_cast<std::uint32_t>(cutAt)), true,
                           Numbers::EACH, cut);
                ++images;
            }
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(images, 0);
    std::cout << images << " disks looked at, " << withoutLog
              << " runs without a write-ahead log at the start\n";
}

// All kinds but truncations: the opening of a new database has none.
INSTANTIATE_TEST_SUITE_P(Faults, OwnersOpening,
                         testing::Values(OpeningFault{"Write", Io::WRITE, SQLITE_IOERR_WRITE},
                                         OpeningFault{"Sync", Io::SYNC, SQLITE_IOERR_FSYNC},
                                         OpeningFault{"Delete", Io::DELETE, SQLITE_IOERR_DELETE},
                                         OpeningFault{"Open", Io::OPEN, SQLITE_CANTOPEN},
                                         OpeningFault{"Read", Io::READ, SQLITE_IOERR_READ},
                                         OpeningFault{"Share", Io::SHARE, SQLITE_IOERR_SHMMAP},
                                         OpeningFault{"Unlock", Io::UNLOCK, SQLITE_IOERR_UNLOCK}),
                         [](const testing::TestParamInfo<OpeningFault>& fault) {
                             return std::string(fault.param.name);
                         });

// A disk that lies about its syncs loses what was acknowledged: the checks above would see it.
TEST(OwnersLyingDisk, LosesWhatWasAcknowledged)
{
    int missing = 0;
    for (int at = 60;; at += 20) {
        SimulatedDisk disk;
        disk.LieAboutSyncs();
        disk.CutPowerAt(at);
        const Cut cut = RunUntilDark(disk, Numbers::NONE, 0);
        if (!cut.went) {
            break;
        }
        SimulatedDisk after(disk.AfterCut(Damage::TORN_AT_SECTOR, 1));
        Aparelho again(after, Numbers::NONE);
        missing += again.Open() != LogFault::NONE ||
                           Dump(again.Database().Handle()) != Expected(cut.lost.size(), cut.lost)
                       ? 1
                       : 0;
    }
    EXPECT_GT(missing, 0);
}

} // namespace
