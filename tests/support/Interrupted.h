// A statement that a caller forgot, interrupted in its first step.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace test_support
{

// It stays open on the connection.
inline void LeaveInterrupted(sqlite3* db)
{
    sqlite3_stmt* count = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, "SELECT count(*) FROM versao_sb", -1, &count, nullptr),
              SQLITE_OK);
    sqlite3_progress_handler(
        db, 1, [](void*) { return 1; }, nullptr);
    EXPECT_EQ(sqlite3_step(count), SQLITE_INTERRUPT);
    sqlite3_progress_handler(db, 0, nullptr, nullptr);
}

} // namespace test_support
