// Who answers the module's calls for the firmware log and for the setting.
#include "bancada/log/FirmwareDuty.h"

#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"
#include "bancada/log/FirmwareLog.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>

using namespace bancada;
using test_support::TempFolder;

namespace
{

void GravaLog(std::string text)
{
    Vindral_GravaLog(text.data());
}

TEST(FirmwareDutyTest, TheModulesTextsGoToTheLogOnDuty)
{
    const TempFolder folder;
    FirmwareLog outer(folder.File("outer"));
    FirmwareLog inner(folder.File("log"));
    const FirmwareDuty first(outer);
    {
        const FirmwareDuty second(inner);
        GravaLog("to the newest");
    }
    GravaLog("to the one before");
    EXPECT_EQ(folder.Read("log"), "1970-01-01 00:00:00\tto the newest\n");
    EXPECT_EQ(folder.Read("outer"), "1970-01-01 00:00:00\tto the one before\n");
}

TEST(FirmwareDutyTest, TheSettingIsAskedEveryTime)
{
    EXPECT_EQ(GetRatearSubtotal(), 0);
    FirmwareLog log;
    bool setting = false;
    const FirmwareDuty duty(log, [&] { return setting; });
    EXPECT_EQ(GetRatearSubtotal(), 0);
    setting = true;
    EXPECT_EQ(GetRatearSubtotal(), 1);
}

} // namespace
