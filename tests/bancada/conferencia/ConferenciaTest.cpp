// The whole reconciliation: what is left on purpose is no fault, and of each planted fault exactly
// what must be found is found.
#include "bancada/Unusable.h"
#include "tests/bancada/conferencia/PlantedFault.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::IsEmpty;

class Conferencia : public CheckedDatabase
{
};

TEST_F(Conferencia, AnEmptyDatabaseIsClean)
{
    Check();
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(summary.faults, 0);
    EXPECT_EQ(summary.notes, 0);
}

TEST_F(Conferencia, WhatTheLoggersLeaveOnPurposeIsNoFault)
{
    Execute(CLEAN_DAYS);
    Check();
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_EQ(notes, CLEAN_NOTES);
    EXPECT_EQ(summary.rows.cupons, 7);
    EXPECT_EQ(summary.rows.cuponsNf, 4);
    EXPECT_EQ(summary.rows.reducoes, 2);
    EXPECT_EQ(summary.faults, 0);
    EXPECT_EQ(summary.notes, 2);
}

TEST_F(Conferencia, AnotherProgramsDatabaseIsRefused)
{
    Execute("DROP TABLE moeda");
    EXPECT_THROW(Check(), Unusable);
}

TEST_P(Planted, IsFound)
{
    Execute(CLEAN_DAYS);
    Execute(GetParam().sql);
    Check();
    EXPECT_EQ(faults, GetParam().faults);
    EXPECT_EQ(notes, GetParam().notes);
    EXPECT_EQ(summary.faults, static_cast<std::int64_t>(faults.size()));
    EXPECT_EQ(summary.notes, static_cast<std::int64_t>(notes.size()));
}

} // namespace
} // namespace bancada::conferencia_test
