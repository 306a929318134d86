// The object takes no memory of its own: every block that is taken while it works is the engine's.
#include "tests/LogDatabase/HeapCount.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <cstdlib>
#include <thread>

namespace
{

class Heap : public LogDatabaseTest
{
  protected:
    void SetUp() override { path = Path(); }

    // As a logger does, without a block of the test's.
    void Execute(const char* sql)
    {
        sqlite3_exec(database.Handle(), sql, nullptr, nullptr, nullptr);
    }
    LogState Insert(int number = 0)
    {
        database.Begin();
        Execute("INSERT INTO versao_sb VALUES (1, 'v')");
        if (number > 0) {
            database.NumberCommand(number);
        }
        return database.Commit().state;
    }
    // What was taken so far, and is not the engine's.
    static int Others() { return CountBlocks().others; }

    std::string path;
    LogDatabaseOptions options = Brief();
};

TEST_F(Heap, TheCountSeesEveryWayToABlock)
{
    ASSERT_EQ(sqlite3_initialize(), SQLITE_OK);
    ForgetBlocks();
    void* volatile block = std::malloc(10);
    block = std::realloc(block, 5000);
    std::free(block);
    EXPECT_EQ(Others(), 2);
    ForgetBlocks();
    int* volatile object = new int;
    delete object;
    EXPECT_EQ(Others(), 1);
    ForgetBlocks();
    void* volatile engines = sqlite3_malloc(10);
    const long held = EngineBytes();
    sqlite3_free(engines);
    EXPECT_EQ(CountBlocks().engine, 1);
    EXPECT_EQ(Others(), 0);
    EXPECT_GE(held - EngineBytes(), 10);
    EXPECT_EQ(EnginePeakBytes(), held);
}

// A test's readers have a thread of their own; what it takes disturbs no count.
TEST_F(Heap, AThreadDoesNotDisturbTheCountOfAnother)
{
    ASSERT_EQ(sqlite3_initialize(), SQLITE_OK);
    const auto take = [] {
        for (int i = 0; i < 200000; ++i) {
            void* volatile engines = sqlite3_malloc(10);
            sqlite3_free(engines);
        }
    };
    const long before = EngineBytes();
    std::thread other(take);
    ForgetBlocks();
    take();
    EXPECT_EQ(CountBlocks().engine, 200000);
    EXPECT_EQ(Others(), 0);
    other.join();
    EXPECT_EQ(EngineBytes(), before);
    ForgetBlocks();
    void* volatile block = std::malloc(10);
    std::free(block);
    EXPECT_EQ(Others(), 1);
    EXPECT_EQ(CountBlocks().engine, 0);
}

TEST_F(Heap, OpeningAFileTakesNothing)
{
    ForgetBlocks();
    EXPECT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    EXPECT_EQ(Others(), 0);
    EXPECT_GT(CountBlocks().engine, 0);
    ForgetBlocks();
    database.Close();
    EXPECT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    EXPECT_EQ(database.Open(":memory:", options), LogFault::NONE);
    EXPECT_EQ(database.Open("/", options), LogFault::CANNOT_OPEN);
    EXPECT_EQ(Others(), 0);
}

TEST_F(Heap, ACommandTakesNothing)
{
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    ForgetBlocks();
    EXPECT_EQ(Insert(1), LogState::KEPT);
    EXPECT_EQ(Insert(), LogState::KEPT);
    database.Begin();
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    // A rejected statement, and a query that is left open.
    database.Begin();
    Execute("INSERT INTO versao_sb VALUES ('");
    Execute("DROP TABLE versao_sb");
    sqlite3_stmt* open = nullptr;
    sqlite3_prepare_v2(database.Handle(), "SELECT count(*) FROM versao_sb", -1, &open, nullptr);
    EXPECT_EQ(sqlite3_step(open), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(open, 0), 2);
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    EXPECT_EQ(Others(), 0);
    EXPECT_GT(CountBlocks().engine, 0);
}

TEST_F(Heap, ACheckpointARestAndTheServiceMenuTakeNothing)
{
    options.checkpointBytes = 4096;
    options.tellLogBytes = 4096;
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    Other reader(path);
    ForgetBlocks();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(Insert(), LogState::KEPT);
    }
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_GT(database.RoomBytes(), 0);
    EXPECT_EQ(database.LogBytes(), 0);
    EXPECT_EQ(Others(), 0);
}

TEST_F(Heap, ALossIsToldWithoutTakingAnything)
{
    options.maxBytes = 60 * 1024;
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    const std::string big = "INSERT INTO versao_sb VALUES (2, '" + std::string(7000, 'x') + "')";
    ForgetBlocks();
    LogState state = LogState::KEPT;
    for (int i = 0; i < 100 && state == LogState::KEPT; ++i) {
        database.Begin();
        Execute(big.c_str());
        state = database.Commit().state;
    }
    EXPECT_EQ(state, LogState::LOST);
    EXPECT_EQ(Others(), 0);
}

TEST_F(Heap, AConnectionThatIsOpenedAnewTakesNothing)
{
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    {
        Other other(path);
        other.Run("BEGIN IMMEDIATE");
        ForgetBlocks();
        EXPECT_EQ(Insert(), LogState::NOT_BEGUN);
        EXPECT_EQ(Others(), 0);
    }
    ForgetBlocks();
    EXPECT_EQ(Insert(), LogState::KEPT);
    EXPECT_EQ(Others(), 0);
}

TEST_F(Heap, ADatabaseBegunAnewTakesNothing)
{
    const std::string aside = folder.File("aside");
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    EXPECT_EQ(Insert(), LogState::KEPT);
    ForgetBlocks();
    EXPECT_EQ(database.BeginAnew(aside.c_str()), LogFault::NONE);
    EXPECT_EQ(Insert(), LogState::KEPT);
    EXPECT_EQ(Others(), 0);
    EXPECT_EQ(Rows(), "1");
}

// What docs/integration.md says of it.
TEST_F(Heap, TheObjectHasTheStatedSize)
{
    EXPECT_LE(sizeof(LogDatabase), 2304U);
}

// The engine gives back what a command took: what it keeps is its cache, which has a limit.
TEST_F(Heap, CommandsOfOneKindLeaveNothingBehindInTheEngine)
{
    ASSERT_EQ(database.Open(path.c_str(), options), LogFault::NONE);
    const auto update = [this] {
        database.Begin();
        Execute("UPDATE versao_sb SET versao = 'w'");
        return database.Commit().state;
    };
    EXPECT_EQ(Insert(), LogState::KEPT);
    EXPECT_EQ(update(), LogState::KEPT);
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    const long before = EngineBytes();
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(update(), LogState::KEPT);
    }
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_EQ(EngineBytes(), before);
}

} // namespace
