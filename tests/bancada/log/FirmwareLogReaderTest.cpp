// Reading a firmware log back, whatever stands in the file.
#include "bancada/log/FirmwareLogReader.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace bancada;
using test_support::TempFolder;

namespace
{

TEST(FirmwareLogReaderTest, WhatIsNoRecordIsPassedOverAndCounted)
{
    const TempFolder folder;
    folder.Write("log", "2026-03-02 08:00:00\ta\n"
                        "no record\n"
                        "2026-03-02 08:00:00 b\n"
                        "2026-03-02T08:00:00\tc\n"
                        "2026-03-02 08:00:00\td\\\n"
                        "2026-03-02 08:00:00\te\\x4\n"
                        "2026-03-02 08:00:00\tf\\q\n"
                        "2026-03-02 08:00:00\tg\n"
                        "2026-03-02 08:00:00\tcut sh");
    FirmwareLogReader reader(folder.File("log"));
    FirmwareLogRecord record;
    ASSERT_TRUE(reader.Next(record));
    EXPECT_EQ(record.text, "a");
    EXPECT_EQ(record.time, "2026-03-02 08:00:00");
    EXPECT_EQ(record.line, 1);
    ASSERT_TRUE(reader.Next(record));
    EXPECT_EQ(record.text, "g");
    EXPECT_EQ(record.line, 8);
    EXPECT_FALSE(reader.Next(record));
    EXPECT_EQ(record.text, "g");
    EXPECT_EQ(reader.DamagedLines(), 7);
}

TEST(FirmwareLogReaderTest, AMissingFileIsUnusable)
{
    const TempFolder folder;
    try {
        FirmwareLogReader reader(folder.File("none"));
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), "cannot read the firmware log " + folder.File("none") +
                                    ": No such file or directory");
    }
}

TEST(FirmwareLogReaderTest, AFolderIsUnusable)
{
    const TempFolder folder;
    FirmwareLogReader reader(folder.File(""));
    FirmwareLogRecord record;
    EXPECT_THROW((void)reader.Next(record), Unusable);
}

} // namespace
