// A logging database that a test fills with rows of its own.
#pragma once

#include "bancada/banco/LogSchema.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace bancada::leitura_test
{

class Sample : public ::testing::Test
{
  protected:
    std::string Path() const { return m_folder.File("registro.db"); }

    // Runs SQL on the database, which is made with no rows when it is not there.
    void Execute(const std::string& sql) const
    {
        const bool fresh = !m_folder.Has("registro.db");
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(Path().c_str(), &db), SQLITE_OK);
        // Nothing here survives a power cut, nor need it.
        const std::string all =
            "PRAGMA synchronous = OFF;" + (fresh ? std::string(LOG_SCHEMA) : "") + sql;
        EXPECT_EQ(sqlite3_exec(db, all.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(db);
        sqlite3_close(db);
    }

    const test_support::TempFolder& Folder() const { return m_folder; }

  private:
    test_support::TempFolder m_folder;
};

} // namespace bancada::leitura_test
