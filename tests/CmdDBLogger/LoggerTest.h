// The fixture of the logger tests: a logging database in memory made from sqlite/schema.sql, a
// fiscal data model that answers what the test sets, and a view of all that the library did.
#pragma once

#include "Interpreter.h"
#include "tests/CmdDBLogger/EngineSeam.h"
#include "tests/CmdDBLogger/FakeController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

struct sqlite3;

// The instant of "2026-03-02 08:15:30".
RtcAbsoluteTime Instant(const std::string& text);

// The value of "-1234.56"; up to four decimals.
Financial Money(const std::string& text);

// Copies `text` into a command's array, which it must fit with its terminator.
template <std::size_t size>
void SetText(char (&array)[size], const std::string& text)
{
    ASSERT_LT(text.size(), size);
    text.copy(array, text.size());
    array[text.size()] = '\0';
}

// Fills a command's whole array, so that no terminator stands in it.
template <std::size_t size>
void FillWithoutTerminator(char (&array)[size], const std::string& text)
{
    ASSERT_EQ(text.size(), size);
    text.copy(array, size);
}

// Every byte of a command, to tell whether a call has left it as it was.
template <class CommandClass>
std::string BytesOf(const CommandClass& command)
{
    return std::string(reinterpret_cast<const char*>(&command), sizeof command);
}

class LoggerTest : public ::testing::Test
{
  protected:
    LoggerTest();
    ~LoggerTest() override;

    // What the fixtures have scripted by now is the register's state; what the test scripts after
    // it must be asked for.
    void SetUp() override { fiscal.KeepAsState(); }
    void TearDown() override;

    sqlite3* db = nullptr;
    FakeController fiscal;

    // A new command of a class, started at 2026-03-02 08:15:30, its end not set.
    template <class CommandClass>
    CommandClass NewCommand()
    {
        CommandClass command;
        command.FDController = &fiscal;
        command.m_dtExecStart = Instant("2026-03-02 08:15:30");
        return command;
    }

    // Every text handed to the engine for execution by the library, in order, and the only one.
    const std::vector<std::string>& Statements() const { return seam.statements; }
    std::string Statement() const;

    // Every counting query handed to the engine, and every entry of the firmware log, in order.
    const std::vector<PreparedQuery>& Queries() const { return seam.queries; }
    const std::vector<std::string>& LogEntries() const { return seam.log; }

    // What money texts were asked for, in order, as "size,style,decimals,last".
    std::vector<std::string> MoneyRequests() const;

    // Forgets the statements, queries, log entries, money texts and facade calls so far.
    void Forget();

    // After `passed` more executions, Command::DBLoggerExecuteSQL reports 0 for `count` of them,
    // though it executes them.
    void RejectNextExecutions(int count, int passed = 0);

    // The same with another result than 0, which no execution of the module's own reports.
    void ReportNextExecutions(BOOL result, int count, int passed = 0);

    // What the firmware answers as its apportionment setting.
    void SetRatearSubtotal(int value) { seam.ratearSubtotal = value; }

    // The rows of a query, columns joined by '|', nulls as NULL.
    std::vector<std::string> Rows(const std::string& query);

    // Executes a statement of the test's own, which is not recorded.
    void Execute(const std::string& sql);

    // Leaves a database without any table.
    void DropTables();

    // Statements that the library has left open. A test in which a logger is required to leave some
    // releases them before its end.
    int OpenQueries() const;
    void ReleaseOpenQueries();
};
