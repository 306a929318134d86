// The sample database of the show command's tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>

#include "bancada/Unusable.h"
#include "bancada/banco/LogSchema.h"
#include "bancada/relatorio/Show.h"

namespace bancada::show_test
{

class Sample : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        m_folder = std::filesystem::path(::testing::TempDir()) /
                   (std::string("show_") + test->test_suite_name() + "_" + test->name());
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string File(const char* name) const { return (m_folder / name).string(); }
    std::string Database() const { return File("registro.db"); }

    // Runs SQL on the database, which is made empty of rows when it is not there.
    void Write(const std::string& sql)
    {
        const bool fresh = !std::filesystem::exists(Database());
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(Database().c_str(), &db), SQLITE_OK);
        const std::string all = "PRAGMA synchronous = OFF; BEGIN;" +
                                (fresh ? std::string(LOG_SCHEMA) : "") + sql + ";COMMIT";
        char* reason = nullptr;
        const int rc = sqlite3_exec(db, all.c_str(), nullptr, nullptr, &reason);
        EXPECT_EQ(rc, SQLITE_OK) << (reason ? reason : "");
        sqlite3_free(reason);
        sqlite3_close(db);
    }

    void WriteSample()
    {
        Write(ReadFile(std::string(ECF_SOURCE_DIR) + "/tests/bancada/relatorio/sample.sql"));
    }

    static std::string ReadFile(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file) << path;
        return {std::istreambuf_iterator<char>(file), {}};
    }

    enum Result {
        SHOWN,
        NOT_THERE,
        UNUSABLE,
    };

    // Shows and keeps the result and both outputs.
    void RunShow(ShowOptions options)
    {
        if (options.databases.empty()) {
            options.databases = {Database()};
        }
        std::ostringstream out;
        std::ostringstream errors;
        try {
            result = Show(options, out, errors) ? SHOWN : NOT_THERE;
        } catch (const Unusable& unusable) {
            result = UNUSABLE;
            errors << unusable.what();
        }
        text = out.str();
        error = errors.str();
    }
    void ShowCoo(std::int64_t coo)
    {
        ShowOptions options;
        options.coo = coo;
        RunShow(options);
    }
    void ShowCrz(std::int64_t crz)
    {
        ShowOptions options;
        options.crz = crz;
        RunShow(options);
    }

    nlohmann::json ShowJson(ShowOptions options = {})
    {
        options.json = true;
        RunShow(options);
        return nlohmann::json::parse(text);
    }

    Result result = SHOWN;
    std::string text;
    std::string error;

  private:
    std::filesystem::path m_folder;
};

} // namespace bancada::show_test
