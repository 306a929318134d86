// Each statement of the owner's own refused by the engine, wherever it stands.
#include "tests/LogDatabase/RefusedText.h"

#include "LogDatabase/Schema.h"
#include "tests/LogDatabase/FailingLayer.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <filesystem>

namespace
{

constexpr char INSERT[] = "INSERT INTO versao_sb VALUES (1, 'v')";

class OwnStatements : public LogDatabaseTest
{
  protected:
    OwnStatements()
    {
        layer.syncs = false; // hundreds of openings, and no power is cut
        options.vfs = FailingLayer::NAME;
    }
    ~OwnStatements() override { database.Close(); }

    // Whether `database` answers `fault`, and its commands fit that.
    void ExpectOpening(LogFault fault)
    {
        const bool opened = fault == LogFault::NONE;
        EXPECT_EQ(database.IsOpen(), opened);
        EXPECT_EQ(std::string(database.Text()).empty(), opened);
        EXPECT_EQ(Command({INSERT}).state, opened ? LogState::KEPT : LogState::NOT_BEGUN);
    }

    // Refuses one statement of an opening after the other: what `before` made is either open or as
    // it was, and open the next time. Answers how many openings failed.
    template <class Before>
    int EachOfAnOpening(const Before& before)
    {
        int failed = 0;
        for (int at = 1; !HasFailure(); ++at) {
            SCOPED_TRACE("statement " + std::to_string(at));
            database.Close();
            for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
                std::filesystem::remove(Path() + ending);
            }
            before();
            bool refused = false;
            LogFault fault = LogFault::NONE;
            {
                const RefusedText text(at);
                fault = Open(options);
                refused = text.HasRefused();
            }
            ExpectOpening(fault);
            failed += fault == LogFault::NONE ? 0 : 1;
            LogDatabaseOptions again = options;
            again.onlyEmpty = false;
            EXPECT_EQ(Open(again), LogFault::NONE) << database.Text();
            EXPECT_EQ(Rows("PRAGMA application_id"), std::to_string(0x45434601));
            EXPECT_EQ(Command({INSERT}).state, LogState::KEPT);
            EXPECT_EQ(Rows(), fault == LogFault::NONE ? "1 1" : "1");
            if (!refused) {
                break;
            }
        }
        return failed;
    }

    void MakeVersionZero(const std::string& mode) const
    {
        Plain("PRAGMA synchronous = OFF; PRAGMA journal_mode = " + mode + ";" +
              log_database::LOG_SCHEMA);
    }

    FailingLayer layer;
    LogDatabaseOptions options = Brief();
};

TEST_F(OwnStatements, OfTheOpeningOfANewDatabase)
{
    options.maxBytes = 1 << 20;
    EXPECT_GT(EachOfAnOpening([] {}), 5);
}

TEST_F(OwnStatements, OfTheOpeningOfAnEmptyOneThatWasThere)
{
    options.onlyEmpty = true;
    EXPECT_GT(EachOfAnOpening([&] {
                  LogDatabaseOptions first = options;
                  first.onlyEmpty = false;
                  ASSERT_EQ(Open(first), LogFault::NONE);
                  database.Close();
              }),
              log_database::LOG_TABLE_COUNT);
}

TEST_F(OwnStatements, OfAnUpgrade)
{
    EXPECT_GT(EachOfAnOpening([&] { MakeVersionZero("DELETE"); }), 5);
    EXPECT_GT(EachOfAnOpening([&] { MakeVersionZero("WAL"); }), 5);
}

TEST_F(OwnStatements, OfTheOpeningOfADatabaseInMemory)
{
    bool refused = true;
    int failed = 0;
    for (int at = 1; refused && !HasFailure(); ++at) {
        SCOPED_TRACE("statement " + std::to_string(at));
        LogFault fault = LogFault::NONE;
        {
            const RefusedText text(at);
            fault = database.Open(":memory:");
            refused = text.HasRefused();
        }
        ExpectOpening(fault);
        failed += fault == LogFault::NONE ? 0 : 1;
    }
    EXPECT_GT(failed, 5);
}

// A commit that fails, and all that the owner does about it.
TEST_F(OwnStatements, AfterAFailedCommitCostNoMoreThanItsCommand)
{
    bool refused = true;
    int count = 0;
    for (; refused && !HasFailure(); ++count) {
        SCOPED_TRACE("statement " + std::to_string(count + 1));
        ASSERT_EQ(Open(options), LogFault::NONE);
        ASSERT_TRUE(database.Begin());
        Insert(2);
        sqlite3_commit_hook(
            database.Handle(), [](void*) { return 1; }, nullptr);
        {
            const RefusedText text(count + 1);
            EXPECT_EQ(database.Commit().state, LogState::LOST);
            refused = text.HasRefused();
        }
        sqlite3_commit_hook(database.Handle(), nullptr, nullptr);
        EXPECT_EQ(Command({INSERT}).state, LogState::KEPT) << database.Text();
        EXPECT_EQ(Rows("SELECT count(*) FROM versao_sb"), std::to_string(count + 1));
    }
    EXPECT_GT(count, 3);
}

// A file whose journal is to become the write-ahead log when a command begins.
TEST_F(OwnStatements, OfABeginThatFindsTheWriteAheadLogAgain)
{
    bool refused = true;
    int lost = 0;
    for (int at = 1; refused && !HasFailure(); ++at) {
        SCOPED_TRACE("statement " + std::to_string(at));
        database.Close();
        std::filesystem::remove(Path());
        MakeVersionZero("DELETE");
        {
            Other reader(Path());
            reader.Run("PRAGMA application_id = 0x45434601; BEGIN");
            reader.Run("SELECT count(*) FROM versao_sb");
            ASSERT_EQ(Open(options), LogFault::NONE) << database.Text();
            ASSERT_FALSE(database.HasWriteAheadLog());
        }
        {
            const RefusedText text(at);
            database.Begin();
            refused = text.HasRefused();
        }
        Insert(1);
        const bool kept = database.Commit().state == LogState::KEPT;
        lost += kept ? 0 : 1;
        EXPECT_EQ(Rows(), kept ? "1" : "");
        EXPECT_EQ(Command({INSERT}).state, LogState::KEPT);
        EXPECT_TRUE(database.HasWriteAheadLog());
    }
    EXPECT_GT(lost, 0);
}

TEST_F(OwnStatements, OfTheRoom)
{
    ASSERT_EQ(Open(options), LogFault::NONE);
    for (int at = 1; at <= 3; ++at) {
        const RefusedText text(at);
        EXPECT_EQ(database.RoomBytes(), -1) << at;
    }
    EXPECT_GT(database.RoomBytes(), 0);
}

} // namespace
