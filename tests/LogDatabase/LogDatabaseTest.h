// A database in a folder of its own, and a firmware log that is a list of entries.
#pragma once

#include "LogDatabase/LogDatabase.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

// What Vindral_GravaLog was given since the test began.
std::vector<std::string>& Entries();

class LogDatabaseTest : public testing::Test
{
  protected:
    LogDatabaseTest() { Entries().clear(); }

    std::string Path() const { return folder.File("db"); }

    LogFault Open(const LogDatabaseOptions& options = Brief());
    // A wait for a lock that a test can afford.
    static LogDatabaseOptions Brief();

    // As a logger does: one statement, reported to the log when it is rejected.
    void Execute(const std::string& sql);
    void Insert(int value);
    // A command of these statements, each as a logger does.
    LogOutcome Command(const std::vector<std::string>& statements);
    LogOutcome NumberedCommand(int number, int value);

    // The first column of `sql`, by a connection of its own; Rows joins it by blanks.
    std::vector<std::string> Lines(const std::string& sql) const;
    std::string Rows(const std::string& sql = "SELECT num_ecf FROM versao_sb ORDER BY rowid") const;
    // Runs `sql` on a connection of its own.
    void Plain(const std::string& sql) const;

    // The entries that contain `text`.
    static int CountEntries(const std::string& text);

    test_support::TempFolder folder;
    LogDatabase database;
};

// Another program's connection, while it lives.
class Other
{
  public:
    explicit Other(const std::string& path);
    ~Other() { sqlite3_close(m_db); }
    Other(const Other&) = delete;
    Other& operator=(const Other&) = delete;

    // The first column of the first row, if there is one.
    std::string Run(const std::string& sql);

    sqlite3* Handle() const { return m_db; }

  private:
    sqlite3* m_db = nullptr;
};
