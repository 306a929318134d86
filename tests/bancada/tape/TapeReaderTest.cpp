// The tape as a file of lines.
#include "bancada/tape/TapeReader.h"
#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace bancada;
using test_support::TempFolder;

namespace
{

class TapeReaderTest : public testing::Test
{
  protected:
    // "name@line" of every command, and the error that ended the reading, if any.
    std::vector<std::string> ReadAll(const std::string& content)
    {
        const std::string path = folder.Write("t", content);
        std::vector<std::string> read;
        TapeReader reader(path);
        TapeCommand command;
        try {
            while (reader.Next(command)) {
                read.push_back(command.name + "@" + std::to_string(command.place.line));
            }
        } catch (const TapeError& error) {
            read.push_back(std::string(error.what()).substr(path.size()));
        }
        return read;
    }

    using Read = std::vector<std::string>;
    TempFolder folder;
};

TEST_F(TapeReaderTest, AnEmptyTapeHasNoCommands)
{
    EXPECT_EQ(ReadAll(""), Read{});
    EXPECT_EQ(ReadAll("\n\n  \n\t\r\n"), Read{});
}

TEST_F(TapeReaderTest, LinesEndWithLfOrCrLfOrTheTape)
{
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\"}\n\n{\"cmd\":\"b\"}\r\n{\"cmd\":\"c\"}"),
              (Read{"a@1", "b@3", "c@4"}));
}

TEST_F(TapeReaderTest, ATruncatedLastLineIsAnErrorAfterTheCommandsBeforeIt)
{
    const Read read = ReadAll("{\"cmd\":\"a\"}\n{\"cmd\":\"b");
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0], "a@1");
    EXPECT_EQ(read[1].substr(0, 17), ":2:10: not JSON: ");
}

TEST_F(TapeReaderTest, ALineAcrossReadsOfTheFileIsWhole)
{
    const std::string note(200000, 'x');
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\",\"obs\":\"" + note + "\"}\n{\"cmd\":\"b\"}\n"),
              (Read{"a@1", "b@2"}));
}

TEST_F(TapeReaderTest, ALineHasALimit)
{
    const std::string head = "{\"cmd\":\"a\",\"obs\":\"";
    const std::string tail = "\"}";
    const std::string full(1048576 - head.size() - tail.size(), 'x');
    EXPECT_EQ(ReadAll(head + full + tail + "\n"), Read{"a@1"});
    EXPECT_EQ(ReadAll(head + full + "x" + tail + "\n"),
              Read{":1:1048577: a line has at most 1048576 bytes"});
    EXPECT_EQ(ReadAll(std::string(3000000, 'x')),
              Read{":1:1048577: a line has at most 1048576 bytes"});
}

TEST_F(TapeReaderTest, EveryLineNamesItsCommand)
{
    EXPECT_EQ(ReadAll("{}"), Read{":1:1: the line needs the field \"cmd\""});
    EXPECT_EQ(ReadAll("\n {\"obs\":\"x\"}"), Read{":2:2: the line needs the field \"cmd\""});
    EXPECT_EQ(ReadAll("{\"cmd\":\"\"}"), Read{":1:8: field \"cmd\": the name of a command is due"});
    EXPECT_EQ(ReadAll("{\"cmd\":1}"), Read{":1:8: field \"cmd\": a text is due, not an integer"});
}

TEST_F(TapeReaderTest, CommonFieldsAreTexts)
{
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\",\"obs\":true}"),
              Read{":1:18: field \"obs\": a text is due, not true or false"});
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\",\"em\":20260302}"),
              Read{":1:17: field \"em\": a text is due, not an integer"});
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\",\"em\":\"2026-02-29 10:00:00\"}"),
              Read{":1:17: field \"em\": an instant \"YYYY-MM-DD hh:mm:ss\" is due, after "
                   "1970-01-01 00:00:00 and up to 2106-02-07 06:28:15"});
    // The marker of an instant never set.
    EXPECT_EQ(ReadAll("{\"cmd\":\"a\",\"fim\":\"1970-01-01 00:00:00\"}"),
              Read{":1:18: field \"fim\": an instant \"YYYY-MM-DD hh:mm:ss\" is due, after "
                   "1970-01-01 00:00:00 and up to 2106-02-07 06:28:15"});
}

TEST_F(TapeReaderTest, AllFaultsAreHandedOutWhereSomebodyLooksForThem)
{
    TapeReader reader(folder.Write("t", std::string(1500000, 'x') +
                                            "\nnot\n{\"cmd\":1,\"em\":\"x\",\"obs\":2}\n"
                                            "{\"cmd\":\"b\",\"fim\":3}\n"));
    std::vector<std::string> faults;
    std::vector<std::string> names;
    TapeCommand command;
    while (reader.Next(command, [&](const TapeError& fault) {
        faults.push_back(std::to_string(fault.GetPlace().line) + ":" +
                         std::to_string(fault.GetPlace().column));
    })) {
        names.push_back(command.name);
    }
    EXPECT_EQ(faults, (Read{"1:1048577", "2:2", "3:8", "3:15", "3:25", "4:18"}));
    EXPECT_EQ(names, (Read{"", "", "", "b"}));
}

TEST_F(TapeReaderTest, IsEmptyLooksAheadAndReadsNothing)
{
    EXPECT_TRUE(TapeReader(folder.Write("t", "")).IsEmpty());
    EXPECT_TRUE(TapeReader(folder.Write("t", " \t\r\n\n")).IsEmpty());
    EXPECT_FALSE(TapeReader(folder.Write("t", " \nx")).IsEmpty());
    EXPECT_FALSE(TapeReader(folder.Write("t", ""), [](int) { return false; }).IsEmpty());
    TapeReader reader(folder.Write("t", "\n{\"cmd\":\"a\"}\n"));
    EXPECT_FALSE(reader.IsEmpty());
    TapeCommand command;
    ASSERT_TRUE(reader.Next(command));
    EXPECT_EQ(command.place.line, 2);
}

TEST_F(TapeReaderTest, CommonFieldsAreTakenOutOfTheOthers)
{
    TapeReader reader(
        folder.Write("t", R"({"b":1,"em":"2026-03-02 08:00:00","obs":"n","cmd":"x","c":true,)"
                          R"("fim":"2026-03-02 08:00:09"})"));
    TapeCommand command;
    ASSERT_TRUE(reader.Next(command));
    EXPECT_EQ(command.name, "x");
    ASSERT_TRUE(command.em.has_value());
    EXPECT_EQ(command.em->s, 1772438400U);
    ASSERT_TRUE(command.fim.has_value());
    EXPECT_EQ(command.fim->s, 1772438409U);
    ASSERT_EQ(command.fields.size(), 2U);
    EXPECT_EQ(command.fields[0].name, "b");
    EXPECT_EQ(command.fields[1].name, "c");
    EXPECT_FALSE(reader.Next(command));
    EXPECT_EQ(command.name, "x");
}

TEST_F(TapeReaderTest, WhatCannotBeOpenedOrReadIsUnusable)
{
    try {
        TapeReader reader(folder.File("none"));
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(),
                  "cannot read the tape " + folder.File("none") + ": No such file or directory");
    }
    try {
        TapeReader reader(folder.File(""));
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), "cannot read the tape " + folder.File("") + ": Is a directory");
    }
}

TEST_F(TapeReaderTest, ATapeEndsWhereItsReaderIsToldNotToWait)
{
    const std::string note(200000, 'x'); // more than is read at once
    const std::string path = folder.Write("t", "{\"cmd\":\"a\"}\n{\"cmd\":\"b\",\"obs\":\"" + note +
                                                   "\"}\n{\"cmd\":\"c\"}\n");
    int asked = 0;
    TapeReader reader(path, [&](int file) {
        EXPECT_GE(file, 0);
        return ++asked < 3;
    });
    TapeCommand command;
    ASSERT_TRUE(reader.Next(command));
    EXPECT_EQ(command.name, "a");
    EXPECT_EQ(asked, 1);
    // Within the second line, of which nothing is taken for one.
    EXPECT_FALSE(reader.Next(command));
    EXPECT_EQ(command.name, "a");
    EXPECT_EQ(asked, 3);
    EXPECT_FALSE(reader.Next(command));
    EXPECT_EQ(asked, 3);
}

TEST_F(TapeReaderTest, ATapeThatEndsBeforeItsPlaceIsNotBegunAgain)
{
    TapePosition position;
    position.line = 1;
    position.bytes = 12;
    position.digest = "none";
    TapeReader reader(folder.Write("t", "{\"cmd\":\"a\"}\n"), [](int) { return false; });
    EXPECT_FALSE(reader.Continue(position));
    TapeCommand command;
    EXPECT_FALSE(reader.Next(command));
}

TEST_F(TapeReaderTest, CountsWhatItHasRead)
{
    TapeReader reader(folder.Write("t", "{\"cmd\":\"a\"}\n{\"cmd\":\"b\"}\n"));
    EXPECT_EQ(reader.Size(), 24);
    EXPECT_EQ(reader.BytesRead(), 0);
    TapeCommand command;
    while (reader.Next(command)) {
        continue;
    }
    EXPECT_EQ(reader.BytesRead(), 24);
}

} // namespace
