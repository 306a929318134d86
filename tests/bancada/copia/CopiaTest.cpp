// A database copied as evidence: nothing is missing of it, and nothing is touched.
#include "bancada/copia/Copia.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"
#include "tests/support/Rows.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bancada::copia
{
namespace
{

using leitura::Manner;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

constexpr uid_t ORDINARY_USER = 65534;

class CopiaTest : public leitura_test::Sample
{
  protected:
    // A register in a process of its own, which logs three documents into its write-ahead log and
    // then waits to be killed.
    pid_t StartRegister() const
    {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            sqlite3* db = nullptr;
            sqlite3_open(Path().c_str(), &db);
            sqlite3_exec(db,
                         "PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0;"
                         "INSERT INTO cupom_fiscal (cont_coo) VALUES (1), (2), (3);"
                         "PRAGMA user_version = 3",
                         nullptr, nullptr, nullptr);
            _exit(write(ready[1], ".", 1) == 1 ? pause() : 1);
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

    // The empty file that the copy goes to, in a folder of its own.
    std::string To() const { return target.Write("copy.db", ""); }

    std::string Refusal() const
    {
        try {
            static_cast<void>(CopyDatabase(Path(), To()));
        } catch (const Unusable& error) {
            return error.what();
        }
        return "copied";
    }

    test_support::TempFolder target;
};

TEST_F(CopiaTest, HoldsWhatAKilledRegisterLeftInItsLog)
{
    Execute("");
    Kill(StartRegister());
    ASSERT_TRUE(Folder().Has("registro.db-wal"));
    const auto before = Files();
    const Copia copia = CopyDatabase(Path(), To());
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(copia.howRead, Manner::WITH_LOG);
    EXPECT_THAT(copia.damage, IsEmpty());
    EXPECT_EQ(copia.rows, 3);
    EXPECT_GE(copia.tables, 15);
    EXPECT_EQ(copia.bytes, fs::file_size(target.File("copy.db")));
    EXPECT_EQ(copia.sha256, Sha256Hex(target.Read("copy.db")));
    EXPECT_EQ(std::distance(fs::directory_iterator(target.File(".")), fs::directory_iterator()), 1);
    EXPECT_THAT(test_support::Rows(target.File("copy.db"), "SELECT cont_coo FROM cupom_fiscal"),
                testing::ElementsAre("1", "2", "3"));
    // The same state gives the same copy.
    EXPECT_EQ(CopyDatabase(Path(), To()).sha256, copia.sha256);
}

TEST_F(CopiaTest, IsTakenWhileTheRegisterGoesOn)
{
    Execute("");
    const pid_t child = StartRegister();
    const Copia copia = CopyDatabase(Path(), To());
    EXPECT_EQ(copia.howRead, Manner::SHARED);
    EXPECT_EQ(copia.rows, 3);
    EXPECT_EQ(kill(child, 0), 0);
    Kill(child);
}

TEST_F(CopiaTest, NeedsNoPermissionButThatOfReading)
{
    Execute("");
    Kill(StartRegister());
    fs::remove(Folder().File("registro.db-shm")); // as on other media
    chmod(To().c_str(), 0666);
    chmod(target.File(".").c_str(), 0777);
    for (const auto& [name, digest] : Files()) {
        chmod(Folder().File(name).c_str(), 0444);
    }
    chmod(Folder().File(".").c_str(), 0555);
    const auto before = Files();
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(ORDINARY_USER) != 0 || setuid(ORDINARY_USER) != 0)) {
            _exit(1);
        }
        try {
            _exit(CopyDatabase(Path(), target.File("copy.db")).rows == 3 ? 0 : 2);
        } catch (const std::exception&) {
            _exit(3);
        }
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    chmod(Folder().File(".").c_str(), 0755);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(Files(), before);
}

TEST_F(CopiaTest, OfADatabaseWithAWrongIndexIsTheSameAndTold)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (1);"
            "PRAGMA writable_schema = ON;"
            "UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name ="
            " 'idx_outros_documentos') WHERE tbl_name = 'cupom_fiscal' AND type = 'index'");
    const auto before = Files();
    const Copia copia = CopyDatabase(Path(), To());
    EXPECT_THAT(copia.damage, Contains(HasSubstr("missing from index")));
    EXPECT_EQ(copia.rows, 1);
    EXPECT_EQ(Files(), before);
}

TEST_F(CopiaTest, OfADatabaseThatCannotBeReadToItsEndIsTold)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    const std::string root = test_support::Rows(
        Path(), "SELECT rootpage FROM sqlite_schema WHERE name = 'cupom_fiscal'")[0];
    std::fstream file(Path(), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp((std::stoll(root) - 1) * 4096);
    file << std::string(4096, '\xFF');
    file.close();
    const Copia copia = CopyDatabase(Path(), To());
    EXPECT_THAT(copia.damage, Contains(HasSubstr("the table cupom_fiscal, behind row 0: ")));
    EXPECT_EQ(copia.sha256, Sha256Hex(target.Read("copy.db")));
}

TEST_F(CopiaTest, WhatIsNoLoggingDatabaseIsRefused)
{
    EXPECT_EQ(Refusal(), Path() + ": no such file");
    Folder().Write("registro.db", "");
    EXPECT_EQ(Refusal(), Path() + ": not a logging database (no such table: cupom_fiscal)");
    Folder().Write("registro.db", std::string(5000, 'x'));
    EXPECT_EQ(Refusal(), Path() + ": file is not a database");
}

TEST_F(CopiaTest, APlaceThatCannotHoldItIsTold)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (1)");
    EXPECT_THROW(static_cast<void>(CopyDatabase(Path(), target.File("no/such/file"))), Unusable);
}

} // namespace
} // namespace bancada::copia
