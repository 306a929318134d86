// Which fault each of the engine's results is told as.
#include "LogDatabase/Fault.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace
{

TEST(FaultOf, EachResultOfTheEngineIsOneFault)
{
    const struct {
        int result;
        LogFault fault;
    } all[] = {{SQLITE_OK, LogFault::NONE},
               {SQLITE_CANTOPEN, LogFault::CANNOT_OPEN},
               {SQLITE_CANTOPEN_ISDIR, LogFault::CANNOT_OPEN},
               {SQLITE_PERM, LogFault::CANNOT_OPEN},
               {SQLITE_NOTADB, LogFault::NOT_A_DATABASE},
               {SQLITE_CORRUPT, LogFault::DAMAGED},
               {SQLITE_CORRUPT_INDEX, LogFault::DAMAGED},
               {SQLITE_FORMAT, LogFault::DAMAGED},
               {SQLITE_BUSY, LogFault::LOCKED},
               {SQLITE_BUSY_SNAPSHOT, LogFault::LOCKED},
               {SQLITE_LOCKED, LogFault::LOCKED},
               {SQLITE_PROTOCOL, LogFault::LOCKED},
               {SQLITE_READONLY, LogFault::READ_ONLY},
               {SQLITE_READONLY_CANTINIT, LogFault::READ_ONLY},
               {SQLITE_FULL, LogFault::FULL},
               {SQLITE_NOMEM, LogFault::NO_MEMORY},
               {SQLITE_IOERR_NOMEM, LogFault::NO_MEMORY},
               {SQLITE_IOERR, LogFault::DISK},
               {SQLITE_IOERR_WRITE, LogFault::DISK},
               {SQLITE_IOERR_FSYNC, LogFault::DISK},
               {SQLITE_NOLFS, LogFault::DISK},
               {SQLITE_INTERRUPT, LogFault::INTERRUPTED},
               {SQLITE_ERROR, LogFault::OTHER},
               {SQLITE_CONSTRAINT, LogFault::OTHER},
               {SQLITE_MISUSE, LogFault::OTHER},
               {SQLITE_INTERNAL, LogFault::OTHER}};
    for (const auto& one : all) {
        EXPECT_EQ(log_database::FaultOf(one.result), one.fault) << one.result;
    }
}

TEST(FaultOf, ATextThatIsTooLongIsCut)
{
    char text[4] = "xyz";
    log_database::CopyText(text, "abcdef");
    EXPECT_STREQ(text, "abc");
    log_database::CopyText(text, "a");
    EXPECT_STREQ(text, "a");
}

} // namespace
