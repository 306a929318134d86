// The power goes at every call that changes something, and what was not synced is damaged.
#include "bancada/Unusable.h"
#include "tests/falhas/Cut.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <set>
#include <string>

namespace
{

using namespace falhas;

// A run from the opening on.
Cut RunUntilDark(SimulatedDisk& disk, int pageSize)
{
    static const ScratchFile log;
    std::optional<Bancada> bancada;
    try {
        bancada.emplace(disk, log.Path(), false, pageSize);
    } catch (const bancada::Unusable&) {
        // Dark while it opened.
        Cut cut;
        cut.acknowledged.assign(Fita().size(), false);
        cut.went = disk.IsDark();
        return cut;
    }
    return RunUntilDark(*bancada, disk);
}

struct Case {
    const char* name;
    bool powersafe;
    int pageSize; // 0 is the library's own
};

class PowerCut : public ::testing::TestWithParam<Case>
{
};

TEST_P(PowerCut, KeepsWhatWasAcknowledgedAndNothingInPart)
{
    const bool powersafe = GetParam().powersafe;
    int cuts = 0;
    int images = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk({}, powersafe);
        disk.CutPowerAt(at);
        const Cut cut = RunUntilDark(disk, GetParam().pageSize);
        if (!cut.went) {
            break;
        }
        ++cuts;
        std::set<Image> seen; // patterns may come to the same
        for (const Damage damage : Damages(powersafe)) {
            SCOPED_TRACE("cut at call " + std::to_string(at) + ", after " + cut.command +
                         ", damage " + std::to_string(static_cast<int>(damage)));
            const Image image = disk.AfterCut(damage, static_cast<std::uint32_t>(at));
            if (!seen.insert(image).second) {
                continue;
            }
            CheckAfter(image, powersafe, cut);
            ++images;
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(cuts, 0);
    std::cout << cuts << " power cuts, " << Damages(powersafe).size() << " damage patterns each, "
              << images << " different disks looked at\n";
}

INSTANTIATE_TEST_SUITE_P(Disks, PowerCut,
                         ::testing::Values(Case{"WithPowersafeOverwrite", true, 0},
                                           Case{"Without", false, 0},
                                           Case{"PagesOf4096WithPowersafeOverwrite", true, 4096},
                                           Case{"PagesOf4096Without", false, 4096}),
                         [](const ::testing::TestParamInfo<Case>& disk) {
                             return std::string(disk.param.name);
                         });

// The same with a disk that says that it has synced and has not: were no command missing then, the
// test above would see nothing.
TEST(LyingDisk, LosesWhatWasAcknowledgedAndThatIsSeen)
{
    int missing = 0;
    for (int at = 100;; at += 50) {
        SimulatedDisk disk;
        disk.LieAboutSyncs();
        disk.CutPowerAt(at);
        const Cut cut = RunUntilDark(disk, 0);
        if (!cut.went) {
            break;
        }
        const SimulatedDisk after(disk.AfterCut(Damage::TORN_AT_SECTOR, 1));
        const Leitura leitura(after);
        missing += leitura.Integrity() != "ok" || !IsAllowed(Dump(leitura.Handle()), cut) ? 1 : 0;
    }
    EXPECT_GT(missing, 0);
}

} // namespace
