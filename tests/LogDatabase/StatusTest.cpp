// What a service menu shows.
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

class Status : public LogDatabaseTest
{
};

TEST_F(Status, TheVersionsAreTold)
{
    EXPECT_STRNE(LogDatabase::Version(), "");
    EXPECT_EQ(LogDatabase::SchemaVersion(), 1);
}

TEST_F(Status, TheRoomShrinksByWhatIsWrittenAndAFullDatabaseLosesWhatDoesNotFit)
{
    LogDatabaseOptions options = Brief();
    options.maxBytes = 200 * 1024;
    EXPECT_EQ(database.RoomBytes(), -1);
    ASSERT_EQ(Open(options), LogFault::NONE);
    const std::int64_t room = database.RoomBytes();
    EXPECT_GT(room, 0);
    EXPECT_LT(room, 200 * 1024);
    const std::string big = "INSERT INTO versao_sb VALUES (2, '" + std::string(7000, 'x') + "')";
    EXPECT_EQ(Command({big}).state, LogState::KEPT);
    EXPECT_LT(database.RoomBytes(), room - 4000);
    EXPECT_GT(database.RoomBytes(), room - 20000);
    LogOutcome outcome;
    for (int i = 0; i < 100 && outcome.state == LogState::KEPT; ++i) {
        outcome = Command({big});
    }
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::FULL);
    EXPECT_STREQ(outcome.text, "database or disk is full");
    EXPECT_EQ(Command({"INSERT INTO moeda (num_ecf) VALUES (1)"}).state, LogState::KEPT);
}

} // namespace
