// The power goes at every call that changes something, and what was not synced is damaged.
#include "bancada/Unusable.h"
#include "tests/falhas/Jornada.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iostream>
#include <set>
#include <string>

namespace
{

using namespace falhas;

// A run until the power went.
struct Cut {
    bool went = false;                 // the run ended before
    std::vector<bool> acknowledged;    // by command
    std::string command = "the start"; // at which it went
};

Cut RunUntilDark(SimulatedDisk& disk)
{
    static const ScratchFile log;
    const std::vector<bancada::TapeCommand>& tape = Fita();
    Cut cut;
    cut.acknowledged.assign(tape.size(), false);
    try {
        Bancada bancada(disk, log.Path());
        for (std::size_t i = 0; i < tape.size() && !disk.IsDark(); ++i) {
            cut.acknowledged[i] = bancada.Roda(tape[i]);
            cut.command = tape[i].name;
        }
    } catch (const bancada::Unusable&) {
        // Dark while it opened.
    }
    cut.went = disk.IsDark();
    return cut;
}

// What the database may hold afterwards: what was acknowledged, and, whole or not at all, the
// command that was at work.
bool IsAllowed(const std::string& dump, const Cut& cut)
{
    std::vector<bool> lost = cut.acknowledged;
    lost.flip();
    if (dump == SemFalhas(lost.size(), lost).linhas) {
        return true;
    }
    for (std::size_t i = 0; i < lost.size(); ++i) {
        if (lost[i]) {
            lost[i] = false;
            return dump == SemFalhas(lost.size(), lost).linhas;
        }
    }
    return false;
}

// A register that starts again on the damaged disk: it opens the database, finds it as it should
// be, and logs another document.
void CheckAfter(const Image& image, bool powersafe, const Cut& cut)
{
    static const ScratchFile log;
    SimulatedDisk disk(image, powersafe);
    try {
        Bancada again(disk, log.Path(), true);
        const std::string dump = Dump(again.Handle());
        EXPECT_TRUE(IsAllowed(dump, cut)) << dump;
        static const bancada::TapeCommand leituraX = ParseTape({R"({"cmd":"leitura_x"})"}).front();
        EXPECT_TRUE(again.Roda(leituraX));
    } catch (const std::exception& error) {
        ADD_FAILURE() << "cannot be opened afterwards: " << error.what();
        return;
    }
    const Leitura leitura(disk);
    EXPECT_EQ(leitura.Integrity(), "ok");
}

class PowerCut : public ::testing::TestWithParam<bool>
{
};

TEST_P(PowerCut, KeepsWhatWasAcknowledgedAndNothingInPart)
{
    const bool powersafe = GetParam();
    int cuts = 0;
    int images = 0;
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk({}, powersafe);
        disk.CutPowerAt(at);
        const Cut cut = RunUntilDark(disk);
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

INSTANTIATE_TEST_SUITE_P(Disks, PowerCut, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& disk) {
                             return disk.param ? "WithPowersafeOverwrite" : "Without";
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
        const Cut cut = RunUntilDark(disk);
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
