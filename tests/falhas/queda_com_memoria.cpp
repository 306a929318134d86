// The power goes at every call that changes something, of a run that keeps its memory on the same
// disk as its database. The next run must go on from both as if nothing had been: every command
// once, whole, and those that were replied are not run again.
#include "bancada/Unusable.h"
#include "bancada/caixa/TapeRun.h"
#include "tests/falhas/DiskStorage.h"
#include "tests/falhas/Jornada.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <set>

namespace
{

using namespace falhas;

constexpr char MEMORIA[] = "memoria";

// Small enough that a short tape makes the journal come into the file several times.
constexpr std::size_t JOURNAL_BYTES = 5 * 4096;

const char TAPE[] = R"({"cmd":"configura","aplicativo":"PDV 7"}
{"cmd":"insere_aliquota","em":"2026-03-02 07:50:00","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"fecha_cupom"}
{"cmd":"programa_moeda","simbolo":"R$"}
{"cmd":"abre_cupom","nome":"JOANA D'ARC"}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"3.00","tributacao":"T","indice":1}
{"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1","valor_unitario":"1.00","tributacao":"T","indice":1}
{"cmd":"cancela_item","item":1}
{"cmd":"efetua_pagamento","meio":1,"valor":"10.00"}
{"cmd":"fecha_cupom"}
{"cmd":"reducao_z"}
{"cmd":"abre_cupom","em":"2026-03-03 08:00:00"}
)";

struct Ran {
    bool toTheEnd = false;
    std::string failure;
    int continuedBehind = 0; // line
    int replied = 0;         // the last line
};

Ran RunTape(SimulatedDisk& disk)
{
    static const ScratchFile tapeFile;
    std::ofstream(tapeFile.Path()) << TAPE;
    Ran ran;
    try {
        bancada::TapeReader tape(tapeFile.Path());
        bancada::LogDatabase::Options options;
        options.vfs = disk.Name();
        options.checkpointBytes = 20 * 1024;
        bancada::TapeRun run(tape, BANCO, options,
                             std::make_unique<bancada::MemoriaFile>(
                                 MEMORIA, std::make_unique<DiskStorage>(disk), JOURNAL_BYTES));
        ran.continuedBehind = run.TakeUp();
        bancada::TapeCommand line;
        while (tape.Next(line)) {
            const bancada::Answer answer = run.Execute(line);
            EXPECT_NE(answer.fate, bancada::Answer::Fate::LOST) << answer.reason;
            ran.replied = line.place.line;
        }
        run.Fold();
        ran.toTheEnd = true;
    } catch (const bancada::Unusable& error) {
        ran.failure = error.what();
    }
    return ran;
}

struct Left {
    std::string rows;
    Bytes memory;
    bool journal = false;

    bool operator==(const Left& other) const
    {
        return rows == other.rows && memory == other.memory && journal == other.journal;
    }
};

Left What(const SimulatedDisk& disk)
{
    const Image files = disk.Files();
    const Leitura leitura(disk);
    EXPECT_EQ(leitura.Integrity(), "ok");
    const auto memory = files.find(MEMORIA);
    return {Dump(leitura.Handle()), memory == files.end() ? Bytes() : memory->second,
            files.count("memoria.journal") != 0};
}

Left Uninterrupted()
{
    SimulatedDisk disk;
    const Ran ran = RunTape(disk);
    EXPECT_TRUE(ran.toTheEnd) << ran.failure;
    return What(disk);
}

class PowerCutWithMemory : public ::testing::TestWithParam<bool>
{
};

TEST_P(PowerCutWithMemory, EveryCommandIsCarriedOutOnce)
{
    const bool powersafe = GetParam();
    const Left expected = Uninterrupted();
    int cuts = 0;
    int images = 0;
    int repeated = 0; // cuts after which a command is run again
    for (int at = 1;; at += Step()) {
        SimulatedDisk disk({}, powersafe);
        disk.CutPowerAt(at);
        const Ran cut = RunTape(disk);
        if (!disk.IsDark()) {
            EXPECT_TRUE(cut.toTheEnd) << cut.failure;
            break;
        }
        ++cuts;
        std::set<Image> seen; // patterns may come to the same
        for (const Damage damage : Damages(powersafe)) {
            // With ECF_FALHAS=longa all of them; else one in nine, another one at each call.
            if (!IsLong() && (static_cast<int>(damage) + at) % 9 != 0) {
                continue;
            }
            SCOPED_TRACE("cut at call " + std::to_string(at) + ", behind line " +
                         std::to_string(cut.replied) + ", damage " +
                         std::to_string(static_cast<int>(damage)));
            const Image image = disk.AfterCut(damage, static_cast<std::uint32_t>(at));
            if (!seen.insert(image).second) {
                continue;
            }
            ++images;
            SimulatedDisk healed(image, powersafe);
            const Ran again = RunTape(healed);
            EXPECT_TRUE(again.toTheEnd) << again.failure;
            EXPECT_GE(again.continuedBehind, cut.replied);
            repeated += again.continuedBehind == cut.replied ? 1 : 0;
            EXPECT_TRUE(What(healed) == expected);
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(cuts, 0);
    EXPECT_GT(repeated, 0);
    if (Step() == 1) { // else perhaps all fall between a command's record and its reply
        EXPECT_LT(repeated, images);
    }
    std::cout << cuts << " power cuts, " << images << " different disks looked at\n";
}

INSTANTIATE_TEST_SUITE_P(Disks, PowerCutWithMemory, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& disk) {
                             return disk.param ? "WithPowersafeOverwrite" : "Without";
                         });

// A disk that says that it has synced, and has not, must be seen.
TEST(LyingDiskWithMemory, IsSeen)
{
    const Left expected = Uninterrupted();
    int missing = 0;
    for (int at = 60; at < 200; at += 20) {
        SimulatedDisk disk;
        disk.LieAboutSyncs();
        disk.CutPowerAt(at);
        const Ran cut = RunTape(disk);
        SimulatedDisk after(disk.AfterCut(Damage::ALL_LOST, 1));
        const Ran again = RunTape(after);
        missing += again.continuedBehind < cut.replied ? 1 : 0;
    }
    EXPECT_GT(missing, 0);
}

} // namespace
