// Every call of the file layer fails once, and from there on for ever.
#include "tests/falhas/Jornada.h"

#include <gtest/gtest.h>

#include <iostream>

namespace
{

using namespace falhas;

struct Kind {
    const char* name;
    Io io;
    int result;
    bool halfDone;
};

class DiskFaults : public ::testing::TestWithParam<Kind>
{
};

std::string NameOf(const ::testing::TestParamInfo<Kind>& info)
{
    return info.param.name;
}

TEST_P(DiskFaults, EveryCallFailsOnceAndForEver)
{
    const Kind& kind = GetParam();
    int runs = 0;
    int lost = 0;
    for (const bool forever : {false, true}) {
        for (int at = 1;; at += Step()) {
            SimulatedDisk disk;
            disk.FailAt(at, {kind.io, kind.result, forever, kind.halfDone});
            lost += RodaComFalhas(
                disk, [&] { disk.Heal(); },
                std::string(kind.name) + (forever ? " for ever from " : " once at ") +
                    std::to_string(at));
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

// A lock that its connection could not give back stands in the way of every later command, until
// the connection is opened anew.
TEST(UnlockFault, CostsNoCommand)
{
    int runs = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk;
        disk.FailAt(at, {Io::UNLOCK, SQLITE_IOERR_UNLOCK, false, false});
        EXPECT_LE(RodaComFalhas(
                      disk, [&] { disk.Heal(); }, "unlock " + std::to_string(at)),
                  1);
        if (!disk.HasFailed()) {
            break;
        }
        ++runs;
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(runs, 0);
    std::cout << runs << " unlocks failing once\n";
}

INSTANTIATE_TEST_SUITE_P(
    Calls, DiskFaults,
    ::testing::Values(Kind{"WriteError", Io::WRITE, SQLITE_IOERR_WRITE, false},
                      Kind{"WriteErrorHalfDone", Io::WRITE, SQLITE_IOERR_WRITE, true},
                      Kind{"DiskFull", Io::WRITE, SQLITE_FULL, false},
                      Kind{"DiskFullHalfDone", Io::WRITE, SQLITE_FULL, true},
                      Kind{"SyncError", Io::SYNC, SQLITE_IOERR_FSYNC, false},
                      Kind{"TruncateError", Io::TRUNCATE, SQLITE_IOERR_TRUNCATE, false},
                      Kind{"ReadError", Io::READ, SQLITE_IOERR_READ, false},
                      Kind{"DeleteError", Io::DELETE, SQLITE_IOERR_DELETE, false},
                      Kind{"OpenError", Io::OPEN, SQLITE_CANTOPEN, false},
                      Kind{"SharedMemoryError", Io::SHARE, SQLITE_IOERR_SHMMAP, false},
                      Kind{"UnlockError", Io::UNLOCK, SQLITE_IOERR_UNLOCK, false}),
    NameOf);

} // namespace
