// Opening a database for reading, whatever stands beside it, and leaving nothing behind.
#include "bancada/leitura/DatabaseReading.h"

#include "bancada/Unusable.h"
#include "bancada/leitura/Query.h"
#include "tests/bancada/leitura/Sample.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bancada::leitura
{
namespace
{

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr uid_t ORDINARY_USER = 65534;

class Opening : public leitura_test::Sample
{
  protected:
    // Runs a register in a process of its own: it writes `documents` one by one with a write-ahead
    // log, tells when it is done and waits. The caller ends it.
    pid_t StartRegister(int documents) const
    {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            sqlite3* db = nullptr;
            sqlite3_open(Path().c_str(), &db);
            sqlite3_exec(db, "PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0", nullptr,
                         nullptr, nullptr);
            for (int i = 0; i < documents; ++i) {
                sqlite3_exec(db, "INSERT INTO cupom_fiscal (cont_coo) VALUES (1)", nullptr, nullptr,
                             nullptr);
            }
            const char done = '.';
            if (write(ready[1], &done, 1) != 1) {
                _exit(1);
            }
            pause();
            _exit(0);
        }
        char done = 0;
        EXPECT_EQ(read(ready[0], &done, 1), 1);
        close(ready[0]);
        close(ready[1]);
        return child;
    }
    static void Kill(pid_t child)
    {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }

    static std::int64_t Documents(const DatabaseReading& database)
    {
        Query count(database, "SELECT count(*) AS n FROM cupom_fiscal");
        count.Next();
        return count.ReadInteger("n").Value();
    }

    // What an ordinary user, who may write nothing here, reads: "DOCUMENTS manner", or the error.
    std::string ReadAsOrdinaryUser() const
    {
        const std::string folder = Folder().File(".");
        chmod(folder.c_str(), 0555);
        for (const auto& [name, digest] : Files()) {
            chmod(Folder().File(name).c_str(), 0444);
        }
        int result[2];
        EXPECT_EQ(pipe(result), 0);
        const pid_t child = fork();
        if (child == 0) {
            std::string text;
            if (geteuid() == 0 && (setgid(ORDINARY_USER) != 0 || setuid(ORDINARY_USER) != 0)) {
                _exit(1);
            }
            try {
                const DatabaseReading database(Path());
                text = std::to_string(Documents(database)) + ' ' + Name(database.HowRead());
            } catch (const std::exception& error) {
                text = error.what();
            }
            _exit(write(result[1], text.data(), text.size()) < 0 ? 1 : 0);
        }
        close(result[1]);
        std::string text;
        char buffer[4096];
        for (ssize_t n = 0; (n = read(result[0], buffer, sizeof buffer)) > 0;) {
            text.append(buffer, static_cast<std::size_t>(n));
        }
        close(result[0]);
        waitpid(child, nullptr, 0);
        chmod(folder.c_str(), 0755);
        return text;
    }

    static const char* Name(Manner manner)
    {
        switch (manner) {
        case Manner::SHARED:
            return "shared";
        case Manner::WITH_LOG:
            return "with its log";
        case Manner::FILE_ALONE:
            break;
        }
        return "alone";
    }

    std::string Refusal(const std::string& path) const
    {
        try {
            DatabaseReading database(path);
        } catch (const Unusable& error) {
            return error.what();
        }
        return "accepted";
    }
};

TEST_F(Opening, AMissingFileIsNotMade)
{
    EXPECT_EQ(Refusal(Path()), Path() + ": no such file");
    EXPECT_FALSE(Folder().Has("registro.db"));
}

TEST_F(Opening, WhatIsNoFileIsNamed)
{
    EXPECT_EQ(Refusal(Folder().File(".")), Folder().File(".") + ": is a directory");
    EXPECT_EQ(Refusal("/dev/null"), "/dev/null: not a file");
    const std::string fifo = Folder().File("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(Refusal(fifo), fifo + ": not a file");
}

TEST_F(Opening, AFileThatIsNoDatabase)
{
    Folder().Write("registro.db", std::string(200, 'x'));
    EXPECT_EQ(Refusal(Path()), Path() + ": file is not a database");
}

TEST_F(Opening, ADatabaseWithoutALogIsReadWithTheEnginesLocks)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    const auto before = Files();
    {
        const DatabaseReading database(Path());
        EXPECT_EQ(database.HowRead(), Manner::SHARED);
        EXPECT_EQ(Documents(database), 1);
        database.ConfirmUnchanged();
    }
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(ReadAsOrdinaryUser(), "1 shared");
}

TEST_F(Opening, ADatabaseWhoseLogWasClosedIsReadAlone)
{
    Execute("PRAGMA journal_mode = WAL; INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    const auto before = Files();
    ASSERT_EQ(before.size(), 1U) << "the register has closed its log";
    {
        const DatabaseReading database(Path());
        EXPECT_EQ(database.HowRead(), Manner::FILE_ALONE);
        EXPECT_EQ(Documents(database), 1);
        EXPECT_EQ(Files(), before);
        database.ConfirmUnchanged();
    }
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(ReadAsOrdinaryUser(), "1 alone");
    EXPECT_EQ(Files(), before);
}

TEST_F(Opening, ADatabaseWithALogThatARegisterLeftIsReadWhole)
{
    Execute("");
    Kill(StartRegister(3));
    const auto before = Files();
    ASSERT_EQ(before.size(), 3U) << "the file, its log and the log's index";
    {
        const DatabaseReading database(Path());
        EXPECT_EQ(database.HowRead(), Manner::WITH_LOG);
        EXPECT_EQ(Documents(database), 3);
        EXPECT_EQ(Files(), before);
        database.ConfirmUnchanged();
    }
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(ReadAsOrdinaryUser(), "3 with its log");
    EXPECT_EQ(Files(), before);
}

TEST_F(Opening, ALogWithoutItsIndexIsReadWhole)
{
    Execute("");
    Kill(StartRegister(3));
    std::filesystem::remove(Folder().File("registro.db-shm"));
    const auto before = Files();
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(Documents(DatabaseReading(Path())), 3);
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(ReadAsOrdinaryUser(), "3 with its log");
    EXPECT_EQ(Files(), before);
}

TEST_F(Opening, ALogIsFoundBesideTheFileThatALinkLeadsTo)
{
    Execute("");
    Kill(StartRegister(2));
    const test_support::TempFolder other;
    std::filesystem::create_symlink(Path(), other.File("link.db"));
    EXPECT_EQ(Documents(DatabaseReading(other.File("link.db"))), 2);
}

TEST_F(Opening, ACommandThatWasNotCommittedIsNotRead)
{
    Execute("");
    Kill(StartRegister(2));
    // The last commit's frame is cut short, as by a power cut.
    const std::string log = Folder().File("registro.db-wal");
    std::filesystem::resize_file(log, std::filesystem::file_size(log) - 1);
    EXPECT_EQ(Documents(DatabaseReading(Path())), 1);
}

TEST_F(Opening, ARegisterAtWorkIsNeitherHinderedNorSeenFurther)
{
    Execute("");
    const pid_t child = StartRegister(2);
    {
        const DatabaseReading database(Path());
        EXPECT_EQ(database.HowRead(), Manner::SHARED);
        EXPECT_EQ(Documents(database), 2);
        Kill(child);
        Kill(StartRegister(1));
        EXPECT_EQ(Documents(database), 2) << "one state from the opening to the end";
        database.ConfirmUnchanged();
    }
    EXPECT_EQ(Documents(DatabaseReading(Path())), 3);
}

TEST_F(Opening, ARegisterAtWorkIsReadByAnOrdinaryUser)
{
    Execute("");
    const pid_t child = StartRegister(2);
    EXPECT_EQ(ReadAsOrdinaryUser(), "2 shared");
    Kill(child);
}

TEST_F(Opening, AWriterThatComesLaterIsToldAtTheEnd)
{
    Execute("PRAGMA journal_mode = WAL; INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    const DatabaseReading database(Path());
    EXPECT_EQ(Documents(database), 1);
    Kill(StartRegister(1));
    try {
        database.ConfirmUnchanged();
        ADD_FAILURE() << "not noticed";
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), Path() + ": was written to while it was read");
    }
}

TEST_F(Opening, ANameThatReadsLikeAnAddressIsAName)
{
    Execute("PRAGMA journal_mode = WAL; INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    const std::string name = Folder().File("100%25 a?b#c é.db");
    std::filesystem::rename(Path(), name);
    EXPECT_EQ(Documents(DatabaseReading(name)), 1);
}

TEST_F(Opening, NothingIsWritten)
{
    Execute("");
    const DatabaseReading database(Path());
    EXPECT_EQ(sqlite3_exec(database.Handle(), "INSERT INTO versao_sb VALUES (1, 'x')", nullptr,
                           nullptr, nullptr),
              SQLITE_READONLY);
    EXPECT_NE(
        sqlite3_exec(database.Handle(), "ATTACH ':memory:' AS other", nullptr, nullptr, nullptr),
        SQLITE_OK);
}

TEST_F(Opening, ADamagedPageIsNamed)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    std::fstream file(Path(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(static_cast<std::size_t>(std::filesystem::file_size(Path())) - 4096,
                        '\xFF');
    file.close();
    EXPECT_THAT(Refusal(Path()), AllOf(StartsWith(Path() + ": "), HasSubstr("malformed")));
}

} // namespace
} // namespace bancada::leitura
