// What the engine's own log says of failures beside its results.
#include "LogDatabase/EngineLog.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

using log_database::EngineLog;
using log_database::EngineLogCounts;

// What a work adds to the counts.
template <class Work>
EngineLogCounts Added(Work work)
{
    const EngineLogCounts before = EngineLog();
    work();
    EngineLogCounts added = EngineLog();
    added.records -= before.records;
    added.errors -= before.errors;
    added.failures -= before.failures;
    return added;
}

TEST(EngineLogOf, TheEngineTakesTheLog)
{
    EXPECT_TRUE(log_database::HasEngineLog());
}

// A query that could not be prepared is stepped by the module, as required.
TEST(EngineLogOf, SteppingWhatWasNotPreparedIsARemark)
{
    const EngineLogCounts added = Added([] { EXPECT_EQ(sqlite3_step(nullptr), SQLITE_MISUSE); });
    EXPECT_GE(added.records, 1);
    EXPECT_EQ(added.errors, 0);
    EXPECT_EQ(added.failures, 0);
}

TEST(EngineLogOf, NoticesAndWarningsAreRemarks)
{
    for (const int result : {SQLITE_NOTICE_RECOVER_WAL, SQLITE_WARNING_AUTOINDEX, SQLITE_SCHEMA}) {
        const EngineLogCounts added = Added([&] { sqlite3_log(result, "said"); });
        EXPECT_EQ(added.records, 1) << result;
        EXPECT_EQ(added.errors, 0) << result;
    }
}

TEST(EngineLogOf, AStatementsOwnErrorIsNoFailure)
{
    for (const int result : {SQLITE_ERROR, SQLITE_CONSTRAINT_UNIQUE, SQLITE_MISMATCH, SQLITE_RANGE,
                             SQLITE_TOOBIG, SQLITE_AUTH}) {
        const EngineLogCounts added = Added([&] { sqlite3_log(result, "said"); });
        EXPECT_EQ(added.errors, 1) << result;
        EXPECT_EQ(added.failures, 0) << result;
        EXPECT_TRUE(log_database::IsStatementsOwn(result)) << result;
    }
    for (const int result : {SQLITE_OK, SQLITE_ROW, SQLITE_DONE}) {
        EXPECT_TRUE(log_database::IsStatementsOwn(result)) << result;
    }
}

TEST(EngineLogOf, FailuresOfDiskMemoryOrFileAreCountedAndTheLastIsTold)
{
    for (const int result :
         {SQLITE_IOERR_WRITE, SQLITE_NOMEM, SQLITE_FULL, SQLITE_CORRUPT, SQLITE_INTERRUPT,
          SQLITE_BUSY, SQLITE_LOCKED, SQLITE_CANTOPEN, SQLITE_READONLY, SQLITE_NOTADB}) {
        const EngineLogCounts added = Added([&] { sqlite3_log(result, "said"); });
        EXPECT_EQ(added.errors, 1) << result;
        EXPECT_EQ(added.failures, 1) << result;
        EXPECT_EQ(added.lastFailure, result);
        EXPECT_FALSE(log_database::IsStatementsOwn(result)) << result;
    }
}

} // namespace
