// What a firmware log says was lost: rejected statements and lost commands, in one reading.
#include "bancada/log/Losses.h"

#include "bancada/Unusable.h"
#include "bancada/banco/LogDatabase.h"
#include "bancada/log/FirmwareLog.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>

using namespace bancada;
using test_support::TempFolder;

namespace
{

constexpr UINT32 MORNING = 1772438400; // 2026-03-02 08:00:00

class LossesTest : public testing::Test
{
  protected:
    LossesTest() : log(folder.File("log")) { log.SetTime(RtcAbsoluteTime(MORNING)); }

    Losses Read() const { return ReadLosses(folder.File("log")); }

    TempFolder folder;
    FirmwareLog log;
};

TEST_F(LossesTest, OfAnEmptyLogThereAreNone)
{
    log.Write("something else");
    const Losses losses = Read();
    EXPECT_TRUE(losses.rejected.empty());
    EXPECT_TRUE(losses.lost.empty());
}

TEST_F(LossesTest, RejectedStatementsAreFound)
{
    log.Write("something else");
    log.Write("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'157', Erro:'near \"', "
              "Erro:'\": syntax error'");
    log.Write("INSERT INTO t VALUES ('a\nb')");
    log.Write("something else");
    log.Write("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:''");
    log.Write("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'3', Erro:'e'");
    log.Write("UPDATE t");
    const auto rejected = Read().rejected;
    ASSERT_EQ(rejected.size(), 3U);
    EXPECT_EQ(rejected[0].line, 2);
    EXPECT_EQ(rejected[0].time, "2026-03-02 08:00:00");
    EXPECT_EQ(rejected[0].command, 157);
    EXPECT_EQ(rejected[0].error, "near \"', Erro:'\": syntax error");
    EXPECT_EQ(rejected[0].statement, "INSERT INTO t VALUES ('a\nb')");
    EXPECT_EQ(rejected[1].command, 2);
    EXPECT_EQ(rejected[1].error, "");
    EXPECT_EQ(rejected[1].statement, ""); // its record is missing
    EXPECT_EQ(rejected[2].line, 6);
    EXPECT_EQ(rejected[2].command, 3);
    EXPECT_EQ(rejected[2].statement, "UPDATE t");
}

TEST_F(LossesTest, LostCommandsAreFoundAmongThem)
{
    log.Write("LogDatabase: the rows of this command are lost: database is locked");
    log.Write("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'3', Erro:'e'");
    log.SetTime(RtcAbsoluteTime(MORNING + 1));
    log.Write("LogDatabase: the rows of this command are lost: ");
    log.Write("the rows of this command are lost: not at the beginning");
    const Losses losses = Read();
    ASSERT_EQ(losses.lost.size(), 2U);
    EXPECT_EQ(losses.lost[0].line, 1);
    EXPECT_EQ(losses.lost[0].time, "2026-03-02 08:00:00");
    EXPECT_EQ(losses.lost[0].reason, "database is locked");
    EXPECT_EQ(losses.lost[1].line, 3);
    EXPECT_EQ(losses.lost[1].time, "2026-03-02 08:00:01");
    EXPECT_EQ(losses.lost[1].reason, "");
    ASSERT_EQ(losses.rejected.size(), 1U);
    EXPECT_EQ(losses.rejected[0].statement, ""); // a lost command's record is no statement
}

// The reader has the text of its own; this is the writer's.
TEST_F(LossesTest, TheEntryOfTheDatabaseIsUnderstood)
{
    log.Write(std::string(LOST_COMMAND_ENTRY) + "disk I/O error");
    const auto lost = Read().lost;
    ASSERT_EQ(lost.size(), 1U);
    EXPECT_EQ(lost[0].reason, "disk I/O error");
}

TEST_F(LossesTest, AMissingLogIsUnusable)
{
    EXPECT_THROW(ReadLosses(folder.File("none")), Unusable);
}

} // namespace
