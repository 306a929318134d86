// A call fails while the database is opened, and the power goes later: what the opening could not
// have must cost no command that was acknowledged.
#include "bancada/Unusable.h"
#include "tests/falhas/Cut.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace
{

using namespace falhas;

// With ECF_FALHAS=longa every call is tried; else each so-and-so-many-th, another one each time.
int CutStep()
{
    return IsLong() ? 1 : 9 * Step();
}

class OpeningThenCut : public ::testing::TestWithParam<Io>
{
};

int ResultOf(Io kind)
{
    switch (kind) {
    case Io::READ:
        return SQLITE_IOERR_READ;
    case Io::WRITE:
        return SQLITE_IOERR_WRITE;
    case Io::SYNC:
        return SQLITE_IOERR_FSYNC;
    case Io::TRUNCATE:
        return SQLITE_IOERR_TRUNCATE;
    case Io::DELETE:
        return SQLITE_IOERR_DELETE;
    case Io::OPEN:
        return SQLITE_CANTOPEN;
    case Io::SHARE:
        return SQLITE_IOERR_SHMMAP;
    case Io::UNLOCK:
        return SQLITE_IOERR_UNLOCK;
    case Io::RENAME:
        break; // no call of an opening
    }
    return SQLITE_IOERR;
}

TEST_P(OpeningThenCut, KeepsWhatWasAcknowledged)
{
    int openings = 0;
    int withoutLog = 0;
    int images = 0;
    bool everyCallTried = false;
    for (int at = 1; !everyCallTried; ++at) {
        bool opened = false;
        bool went = true;
        for (int cutAt = 1 + at % CutStep(); went; cutAt += CutStep()) {
            SimulatedDisk disk;
            disk.FailAt(at, {GetParam(), ResultOf(GetParam()), false, false});
            const ScratchFile log;
            std::optional<Bancada> bancada;
            try {
                bancada.emplace(disk, log.Path());
            } catch (const bancada::Unusable&) {
                break; // it is said at once, and nothing runs
            }
            if (!disk.HasFailed()) {
                everyCallTried = true;
                break;
            }
            opened = true;
            withoutLog += bancada->banco.HasWriteAheadLog() ? 0 : 1;
            disk.CutPowerAt(cutAt);
            const Cut cut = RunUntilDark(*bancada, disk);
            bancada.reset();
            went = cut.went;
            // One kind of damage a state, another one for each.
            const std::vector<Damage> damages = Damages(true);
            const Damage damage =
                damages[static_cast<std::size_t>(at + cutAt / CutStep()) % damages.size()];
            SCOPED_TRACE("call " + std::to_string(at) + " of the opening failed, cut at call " +
                         std::to_string(cutAt) + " after it, after " + cut.command + ", damage " +
                         std::to_string(static_cast<int>(damage)));
            CheckAfter(disk.AfterCut(damage, static_cast<std::uint32_t>(cutAt)), true, cut);
            ++images;
            if (HasFailure()) {
                return;
            }
        }
        openings += opened ? 1 : 0;
    }
    EXPECT_GT(images, 0);
    std::cout << openings << " openings with a fault, " << images << " disks looked at, "
              << withoutLog << " runs without a write-ahead log at the start\n";
}

// All kinds but truncations: the opening of a new database has none.
INSTANTIATE_TEST_SUITE_P(Faults, OpeningThenCut,
                         ::testing::Values(Io::WRITE, Io::SYNC, Io::DELETE, Io::OPEN, Io::READ,
                                           Io::SHARE, Io::UNLOCK),
                         [](const ::testing::TestParamInfo<Io>& fault) {
                             switch (fault.param) {
                             case Io::WRITE:
                                 return "Write";
                             case Io::SYNC:
                                 return "Sync";
                             case Io::DELETE:
                                 return "Delete";
                             case Io::OPEN:
                                 return "Open";
                             case Io::READ:
                                 return "Read";
                             case Io::SHARE:
                                 return "Share";
                             case Io::UNLOCK:
                                 return "Unlock";
                             default:
                                 return "Other";
                             }
                         });

} // namespace
