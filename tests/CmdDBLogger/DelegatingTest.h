// The fixture of the loggers that hand on to the log of other documents, and of those that have
// nothing to log.
#pragma once

#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

class DelegatingTest : public LoggerTest
{
  protected:
    DelegatingTest()
    {
        fiscal.SetCounter(COUNTER_COO, 1234);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
        fiscal.SetCounter(COUNTER_CRZ, 9);
    }

    // What the insert of a document asks, and what the update of its end does.
    const std::vector<std::string> insertQuestions = {
        "Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_GRG)",
        "Contador_Get(COUNTER_CDC)", "Contador_Get(COUNTER_CRZ)"};
    const std::vector<std::string> endQuestions = {"Contador_Get(COUNTER_COO)"};

    // Logs a command of a class, ended at 08:16:01, and answers its one statement. It must ask just
    // these questions, and an execution that reports 0 must be the logger's answer too.
    template <class CommandClass>
    std::string Logged(CommandClass command, const std::vector<std::string>& questions)
    {
        command.m_dtExecEnd = Instant("2026-03-02 08:16:01");
        EXPECT_EQ(command.DBLogger(db), TRUE);
        EXPECT_EQ(fiscal.calls, questions);
        const std::string statement = Statement();
        EXPECT_THAT(LogEntries(), ::testing::IsEmpty());

        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), FALSE);
        return statement;
    }
    template <class CommandClass>
    std::string Logged(const std::vector<std::string>& questions)
    {
        return Logged(NewCommand<CommandClass>(), questions);
    }

    // Logs a command that has nothing to log: neither fiscal data model nor database are there.
    template <class CommandClass>
    void ExpectNothingLogged()
    {
        CommandClass command;
        EXPECT_EQ(command.DBLogger(nullptr), TRUE);
        EXPECT_EQ(command.m_dtExecEnd.s, 0u);
        EXPECT_THAT(Statements(), ::testing::IsEmpty());
        EXPECT_THAT(LogEntries(), ::testing::IsEmpty());
    }
};
