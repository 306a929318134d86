#include "tests/falhas/Cut.h"

#include <gtest/gtest.h>

namespace falhas
{

Cut RunUntilDark(Bancada& bancada, const SimulatedDisk& disk)
{
    const std::vector<bancada::TapeCommand>& tape = Fita();
    Cut cut;
    cut.acknowledged.assign(tape.size(), false);
    for (std::size_t i = 0; i < tape.size() && !disk.IsDark(); ++i) {
        cut.acknowledged[i] = bancada.Roda(tape[i]);
        cut.command = tape[i].name;
    }
    cut.went = disk.IsDark();
    return cut;
}

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

} // namespace falhas
