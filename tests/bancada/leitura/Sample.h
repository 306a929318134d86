// A logging database that a test fills with rows of its own.
#pragma once

#include "bancada/Sha256.h"
#include "bancada/banco/LogSchema.h"
#include "tests/support/Files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
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

    // Every file of the folder by its name, with its digest.
    std::map<std::string, std::string> Files() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(Folder().File("."))) {
            const std::string name = entry.path().filename().string();
            files[name] = Sha256Hex(Folder().Read(name));
        }
        return files;
    }

    const test_support::TempFolder& Folder() const { return m_folder; }

  private:
    test_support::TempFolder m_folder;
};

} // namespace bancada::leitura_test
