// The engine rolls a whole transaction back within a logger, without a word to anyone.
#include "tests/falhas/Jornada.h"
#include "tests/falhas/RefusedStatements.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iostream>
#include <string>

namespace
{

using namespace falhas;

// Small pages and no room for them in memory: a logger of several statements writes to the disk
// before its command is committed, and a full disk then fails a statement within the logger.
constexpr int SMALL_PAGE = 512;
int MakeSmall(sqlite3* db, char**, const sqlite3_api_routines*)
{
    return sqlite3_exec(db, "PRAGMA cache_size = 1", nullptr, nullptr, nullptr);
}

// The engine's way of setting up connections that others open.
class LostTransaction : public ::testing::Test
{
  protected:
    LostTransaction()
    {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(reinterpret_cast<void*>(MakeSmall)));
    }
    ~LostTransaction() override { sqlite3_reset_auto_extension(); }

    static const bancada::TapeCommand& Z() { return Fita().back(); }
    static std::size_t BeforeZ() { return Fita().size() - 1; }
};

constexpr Fault FULL_ONCE = {Io::WRITE, SQLITE_FULL, false, false};

TEST_F(LostTransaction, NothingMoreOfTheCommandReachesTheFileAndTheNextIsLoggedWhole)
{
    const ScratchFile log;
    const bancada::TapeCommand next = ParseTape({R"({"cmd":"leitura_x"})"}).front();
    int faults = 0;
    int withinLogger = 0;
    for (int at = 1;; ++at) {
        SCOPED_TRACE("write " + std::to_string(at) + " of the Z");
        SimulatedDisk disk;
        Bancada bancada(disk, log.Path(), false, SMALL_PAGE);
        for (std::size_t i = 0; i < BeforeZ(); ++i) {
            ASSERT_TRUE(bancada.Roda(Fita()[i]));
        }
        const std::string before = Dump(bancada.Handle());
        const std::int64_t outrosBefore =
            bancada.banco.Counts().rows.at("outros_documentos").inserted;
        RefusedStatements().clear();

        disk.FailAt(at, FULL_ONCE);
        const bool kept = bancada.Executa(Z());
        if (!disk.HasFailed()) {
            EXPECT_TRUE(kept);
            break;
        }
        ++faults;
        EXPECT_FALSE(kept);
        EXPECT_FALSE(bancada.banco.LastLoss().empty());
        EXPECT_NE(sqlite3_get_autocommit(bancada.Handle()), 0);
        EXPECT_EQ(Dump(bancada.Handle()), before);
        // The one that met the full disk, and those after it, which are refused.
        if (RefusedStatements().size() > 1) {
            ++withinLogger;
        }

        EXPECT_TRUE(bancada.Roda(next));
        EXPECT_EQ(bancada.banco.Counts().rows.at("outros_documentos").inserted, outrosBefore + 1);
        EXPECT_EQ(Dump(bancada.Handle()).size() > before.size(), true);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(withinLogger, 0);
    std::cout << faults << " full disks during a Z, " << withinLogger << " of them within its "
              << "logger, with statements to follow\n";
}

// What the refusal is for: a caller with a transaction alone, which does not look whether it is
// still there, keeps the end of a document whose beginning is gone.
TEST_F(LostTransaction, CallerThatDoesNotLookKeepsHalfADocument)
{
    const ScratchFile log;
    int halves = 0;
    for (int at = 1;; ++at) {
        SimulatedDisk disk;
        SimulatedDisk whole;
        Bancada bancada(whole, log.Path(), false, SMALL_PAGE);
        for (std::size_t i = 0; i < BeforeZ(); ++i) {
            ASSERT_TRUE(bancada.Roda(Fita()[i]));
        }
        {
            const Bancada schema(disk, log.Path(), false, SMALL_PAGE);
        }
        const auto comando = bancada.caixa.Read(Z());
        ASSERT_TRUE(bancada.caixa.Execute(*comando, RtcAbsoluteTime(1709539300)).Executed());

        const Leitura careless(disk);
        const auto rows = [&] {
            return Value(careless.Handle(), "SELECT (SELECT count(*) FROM reducao_z) + "
                                            "(SELECT count(*) FROM totalizador_reducao)");
        };
        ASSERT_EQ(rows(), "0");
        ASSERT_EQ(sqlite3_exec(careless.Handle(), "BEGIN", nullptr, nullptr, nullptr), SQLITE_OK);
        disk.FailAt(at, FULL_ONCE);
        comando->GetCommand().DBLogger(careless.Handle());
        const bool gone = sqlite3_get_autocommit(careless.Handle()) != 0;
        sqlite3_exec(careless.Handle(), "COMMIT", nullptr, nullptr, nullptr);
        if (!disk.HasFailed()) {
            break;
        }
        if (gone && rows() != "0") {
            ++halves;
        }
    }
    EXPECT_GT(halves, 0);
}

} // namespace
