// The firmware log: written, and read back.
#include "bancada/log/FirmwareLog.h"

#include "bancada/Unusable.h"
#include "bancada/log/FirmwareLogReader.h"
#include "tests/support/Files.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <vector>

using namespace bancada;
using test_support::TempFolder;

namespace
{

constexpr UINT32 MORNING = 1772438400; // 2026-03-02 08:00:00

class FirmwareLogTest : public testing::Test
{
  protected:
    std::vector<FirmwareLogRecord> ReadAll(int damaged = 0)
    {
        FirmwareLogReader reader(folder.File("log"));
        std::vector<FirmwareLogRecord> records;
        FirmwareLogRecord record;
        while (reader.Next(record)) {
            records.push_back(record);
        }
        EXPECT_EQ(reader.DamagedLines(), damaged);
        return records;
    }

    TempFolder folder;
};

TEST_F(FirmwareLogTest, ARecordIsOneLineWithTheRegistersTime)
{
    FirmwareLog log(folder.File("log"));
    log.SetTime(RtcAbsoluteTime(MORNING));
    log.Write("first");
    log.SetTime(RtcAbsoluteTime(MORNING + 61));
    log.Write("");
    EXPECT_EQ(folder.Read("log"), "2026-03-02 08:00:00\tfirst\n2026-03-02 08:01:01\t\n");
    EXPECT_EQ(log.Records(), 2);
    EXPECT_EQ(log.WriteErrors(), 0);
}

TEST_F(FirmwareLogTest, LineBreaksAndControlBytesAreEscaped)
{
    FirmwareLog log(folder.File("log"));
    log.SetTime(RtcAbsoluteTime(MORNING));
    log.Write("a\nb\r\tc\\n\x01\x7F ção");
    EXPECT_EQ(folder.Read("log"), "2026-03-02 08:00:00\ta\\nb\\r\\tc\\\\n\\x01\\x7F ção\n");
}

TEST_F(FirmwareLogTest, EveryByteReadsBack)
{
    std::string all;
    for (int round = 0; round < 40; ++round) { // longer than a statement of 8,000 bytes
        for (int byte = 0; byte < 256; ++byte) {
            all += static_cast<char>(byte);
        }
    }
    {
        FirmwareLog log(folder.File("log"));
        log.SetTime(RtcAbsoluteTime(MORNING));
        log.Write(all);
    }
    const auto records = ReadAll();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].text, all);
    EXPECT_EQ(records[0].time, "2026-03-02 08:00:00");
    EXPECT_EQ(records[0].line, 1);
}

TEST_F(FirmwareLogTest, ALogIsAddedTo)
{
    FirmwareLog(folder.File("log")).Write("one");
    FirmwareLog(folder.File("log")).Write("two");
    EXPECT_EQ(ReadAll().size(), 2U);
}

TEST_F(FirmwareLogTest, ALineCutShortIsClosedBeforeTheNextRecord)
{
    folder.Write("log", "2026-03-02 08:00:00\twhole\n2026-03-02 08:0");
    FirmwareLog(folder.File("log")).Write("next");
    const auto records = ReadAll(1);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].text, "whole");
    EXPECT_EQ(records[1].text, "next");
    EXPECT_EQ(records[1].line, 3);
}

TEST_F(FirmwareLogTest, AFailingFileIsCountedAndNothingStops)
{
    FirmwareLog log("/dev/full");
    std::string seen;
    log.SetRejectionObserver([&](std::string_view statement) { seen = statement; });
    log.Write("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:'x'");
    log.Write("INSERT");
    EXPECT_EQ(log.Records(), 2);
    EXPECT_EQ(log.WriteErrors(), 2);
    EXPECT_EQ(seen, "INSERT");
}

TEST_F(FirmwareLogTest, AWriteCutShortCostsItsRecordAlone)
{
    FirmwareLog log(folder.File("log"));
    log.Write("whole"); // 26 bytes
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 40;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    log.Write("cut short");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    log.Write("next");
    EXPECT_EQ(log.WriteErrors(), 1);
    const auto records = ReadAll(1);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].text, "whole");
    EXPECT_EQ(records[1].text, "next");
}

TEST_F(FirmwareLogTest, AFileThatCannotBeOpenedIsUnusable)
{
    try {
        FirmwareLog log(folder.File("none/log"));
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), "cannot write the firmware log " + folder.File("none/log") +
                                    ": No such file or directory");
    }
}

} // namespace
