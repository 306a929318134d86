// The journal beside a memory: what it may be, and what becomes of it.
#include "bancada/memoria/MemoriaJournal.h"

#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/FileStorage.h"
#include "bancada/memoria/MemoriaFile.h"
#include "tests/bancada/memoria/MemoriaParts.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

using namespace bancada;
using bancada_test::Same;

namespace
{

class MemoriaJournalTest : public testing::Test
{
  protected:
    std::string Path() const { return folder.File("m"); }
    std::string JournalPath() const { return folder.File("m.journal"); }

    // A memory of which a run was killed behind its `count`-th record: each of them a refused
    // command that counted the GT on.
    Memoria Killed(int count)
    {
        MemoriaFile memory(Path());
        memory.Settle(0);
        Memoria registro = memory.State();
        for (int i = 0; i < count; ++i) {
            registro.gt += Financial::FromCents(100);
            CommandProgress progress = memory.GetProgress();
            ++progress.tape.line;
            memory.WriteSettled(registro, progress);
        }
        return registro;
    }
    // The same, with a command at the end whose COMMIT is not known.
    Memoria KilledPending(int count)
    {
        Killed(count);
        MemoriaFile memory(Path());
        memory.Settle(0);
        Memoria registro = memory.State();
        registro.contadores[COUNTER_COO] = 7;
        CommandProgress progress = memory.GetProgress();
        ++progress.sequence;
        memory.WritePending(registro, progress);
        return registro;
    }

    // Where it begins.
    static std::size_t LastRecord(const std::string& journal)
    {
        return journal.rfind('\n', journal.find_last_not_of('\n')) + 1;
    }

    std::string Refusal() const
    {
        try {
            const MemoriaFile memory(Path());
        } catch (const Unusable& error) {
            return error.what();
        }
        return "";
    }

    test_support::TempFolder folder;
};

TEST_F(MemoriaJournalTest, HoldsWhatTheFileDoesNot)
{
    const Memoria registro = Killed(3);
    EXPECT_EQ(folder.Read("m").find("\"3.00\""), std::string::npos);
    MemoriaFile again(Path());
    EXPECT_TRUE(Same(again.State(), registro));
    EXPECT_EQ(again.GetProgress().tape.line, 3);
    again.Settle(0);
    EXPECT_FALSE(folder.Has("m.journal"));
    EXPECT_NE(folder.Read("m").find("\"3.00\""), std::string::npos);
    EXPECT_TRUE(Same(MemoriaFile(Path()).State(), registro));
}

TEST_F(MemoriaJournalTest, TheDatabaseTellsWhetherThePendingCommandHolds)
{
    const Memoria after = KilledPending(2);
    MemoriaFile has(Path());
    EXPECT_NO_THROW(has.CheckNumber(0, "db"));
    EXPECT_NO_THROW(has.CheckNumber(1, "db"));
    EXPECT_THROW(has.CheckNumber(2, "db"), Unusable);
    const std::string file = folder.Read("m");
    const std::string journal = folder.Read("m.journal");
    has.Settle(1);
    EXPECT_TRUE(Same(has.State(), after));
    EXPECT_EQ(has.GetProgress().sequence, 1);

    folder.Write("m", file);
    folder.Write("m.journal", journal);
    MemoriaFile hasNot(Path());
    hasNot.Settle(0);
    EXPECT_EQ(hasNot.State().contadores[COUNTER_COO], 0);
    EXPECT_EQ(hasNot.GetProgress().sequence, 0);
    EXPECT_EQ(hasNot.GetProgress().tape.line, 2);
}

// A power cut leaves any beginning of the last record, or anything in its place.
TEST_F(MemoriaJournalTest, ALastRecordThatIsNotWholeCountsAsNone)
{
    Killed(2);
    const std::string whole = folder.Read("m.journal");
    const std::size_t last = LastRecord(whole);
    const std::size_t end = whole.find('\n', last);
    for (std::size_t length = last; length < end; length += 5) {
        folder.Write("m.journal", whole.substr(0, length));
        EXPECT_EQ(MemoriaFile(Path()).GetProgress().tape.line, 1) << length;
        std::string garbage = whole;
        garbage[length] = '\n';
        folder.Write("m.journal", garbage);
        EXPECT_EQ(MemoriaFile(Path()).GetProgress().tape.line, 1) << length;
    }
    folder.Write("m.journal", whole.substr(0, end));
    EXPECT_EQ(MemoriaFile(Path()).GetProgress().tape.line, 2) << "without its line's end";
    for (std::size_t length = 0; length < whole.find('\n'); length += 5) {
        folder.Write("m.journal", whole.substr(0, length));
        EXPECT_EQ(MemoriaFile(Path()).GetProgress().tape.line, 0) << length;
    }
}

TEST_F(MemoriaJournalTest, DamageBeforeAWholeRecordIsRefused)
{
    Killed(2);
    const std::string whole = folder.Read("m.journal");
    // Each third byte, and the lines' ends, but that right before the last record.
    const std::size_t last = LastRecord(whole) - 1;
    for (std::size_t at = 0; at < last; at += whole[at + 1] != '\n' ? 3
                                              : whole[at] == '\n'   ? 500
                                                                    : 1) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        folder.Write("m.journal", damaged);
        EXPECT_NE(Refusal().find(" is damaged"), std::string::npos) << at;
        EXPECT_EQ(folder.Read("m.journal"), damaged);
    }

    const std::string head =
        "cannot use the memory " + Path() + " with its journal " + JournalPath() + ": its ";
    std::string damaged = whole;
    damaged[100] = 'x';
    folder.Write("m.journal", damaged);
    EXPECT_EQ(Refusal(), head + "first line is damaged");
    damaged = whole;
    damaged[4096 + 100] = 'x';
    folder.Write("m.journal", damaged);
    EXPECT_EQ(Refusal(), head + "record 1 is damaged");
}

TEST_F(MemoriaJournalTest, ARecordThatIsMissingIsNoticed)
{
    Killed(3);
    std::string journal = folder.Read("m.journal");
    const std::size_t second = journal.find('{', journal.find("\n\n")) - 65;
    journal.erase(second, journal.find('\n', second) + 1 - second);
    folder.Write("m.journal", journal);
    EXPECT_NE(Refusal().find(": its record 1 is missing"), std::string::npos) << Refusal();
}

// A crash between writing the file and removing the journal.
TEST_F(MemoriaJournalTest, OneThatHasComeIntoTheFileIsLeftAside)
{
    Killed(2);
    const std::string journal = folder.Read("m.journal");
    MemoriaFile(Path()).Settle(0);
    folder.Write("m.journal", journal);
    EXPECT_EQ(MemoriaFile(Path()).GetProgress().tape.line, 2);

    KilledPending(2);
    const std::string pending = folder.Read("m.journal");
    MemoriaFile(Path()).Settle(0);
    folder.Write("m.journal", pending);
    EXPECT_EQ(Refusal(), "");
}

TEST_F(MemoriaJournalTest, OneOfAnotherMemoryIsRefused)
{
    Killed(2);
    const std::string refusal = "cannot use the memory " + Path() + " with its journal " +
                                JournalPath() +
                                ": the journal holds commands of another state of the memory; "
                                "remove the journal if the memory is the right one";
    folder.Write("m", R"({"formato":"ecf-bancada memoria","versao":2})");
    EXPECT_EQ(Refusal(), refusal);
    std::filesystem::remove(Path());
    EXPECT_EQ(Refusal(), refusal);
    EXPECT_FALSE(folder.Has("m"));
    std::filesystem::remove(JournalPath());
    EXPECT_EQ(Refusal(), "");
}

// Whoever can make a digest can write any JSON.
TEST_F(MemoriaJournalTest, FieldsOfAnotherKindAreRefused)
{
    Killed(1);
    const std::string memory = nlohmann::json::parse(folder.Read("m"))["digest"];
    const auto line = [](const std::string& base, const std::string& json) {
        return Sha256Hex(base + json) + " " + json + "\n";
    };
    const auto refusalOf = [&](const std::string& head, const std::string& record) {
        folder.Write("m.journal", line("", head) + line(memory, record));
        return Refusal();
    };
    const std::string head = R"({"formato":"ecf-bancada diario","memoria":")" + memory + R"("})";
    const std::string begins =
        "cannot use the memory " + Path() + " with its journal " + JournalPath() + ": ";
    EXPECT_EQ(refusalOf(head, R"({"execucao":{},"pendente":1,"registro":{}})"),
              begins + "pendente: true or false is due");
    EXPECT_EQ(refusalOf(head, R"({"execucao":[],"registro":{}})"),
              begins + "execucao: an object is due");
    EXPECT_EQ(refusalOf(head, "[1]"), begins + "execucao: an object is due");
    EXPECT_EQ(refusalOf(R"({"formato":1})", "{}"), begins + "it is no journal of this program");
    EXPECT_EQ(refusalOf("7", "{}"), begins + "it is no journal of this program");

    // Of another memory: how far it has come is asked first.
    const auto refusalOfAnother = [&](const std::string& record) {
        folder.Write("m.journal", line("", R"({"formato":"ecf-bancada diario","memoria":"ab"})") +
                                      line("ab", record));
        return Refusal();
    };
    EXPECT_EQ(refusalOfAnother(R"({"execucao":{"passos":"7"}})"),
              begins + "execucao.passos: an integer is due");
    EXPECT_EQ(refusalOfAnother(R"({"execucao":{"passos":7},"pendente":"x"})"),
              begins + "pendente: true or false is due");
    EXPECT_EQ(refusalOfAnother(R"({"execucao":{}})"), "") << "it has not gone further";
}

TEST_F(MemoriaJournalTest, ComesIntoTheFileWhenItHasGrown)
{
    constexpr std::size_t MAX = 5 * 4096;
    MemoriaFile memory(Path(), nullptr, MAX);
    memory.Settle(0);
    Memoria registro;
    int folded = 0;
    for (int i = 1; i <= 50; ++i) {
        registro.contadores[COUNTER_COO] = i;
        CommandProgress progress = memory.GetProgress();
        ++progress.sequence;
        memory.WritePending(registro, progress);
        memory.Confirm();
        if (folder.Has("m.journal")) {
            EXPECT_LE(folder.Read("m.journal").size(), MAX);
        } else {
            ++folded;
        }
        MemoriaFile again(Path());
        EXPECT_NO_THROW(again.CheckNumber(i, "db"));
        EXPECT_TRUE(Same(again.State(), registro));
    }
    EXPECT_GT(folded, 2);
    EXPECT_LT(folded, 25);
}

TEST_F(MemoriaJournalTest, WhoMayReadTheMemoryMayReadIt)
{
    Killed(0);
    const mode_t mask = umask(022);
    for (const mode_t mode : {0600U, 0660U}) {
        ASSERT_EQ(chmod(Path().c_str(), mode), 0);
        Killed(1);
        struct stat status = {};
        ASSERT_EQ(stat(JournalPath().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
    }
    umask(mask);
}

TEST_F(MemoriaJournalTest, StandsBesideTheFileThatALinkNames)
{
    std::filesystem::create_directory(folder.File("kept"));
    std::filesystem::create_symlink("kept/real", Path());
    const Memoria registro = Killed(1);
    EXPECT_TRUE(folder.Has("kept/real.journal"));
    EXPECT_FALSE(folder.Has("m.journal"));
    EXPECT_TRUE(Same(MemoriaFile(Path()).State(), registro));
    EXPECT_TRUE(std::filesystem::is_symlink(Path()));
}

} // namespace
