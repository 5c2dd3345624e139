#include "scan/driver/ScanTexts.h"

#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

namespace zetaudiopluginhostui {
namespace {

using namespace std::chrono_literals;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

TEST(ScannedPluginText, HasTheStatusRightBehindThePath)
{
    const PluginLocator plugin(TechnologyType::VST, L"/a/\x00FC.so");
    EXPECT_EQ(ScannedPluginText(plugin, ""), "/a/\xC3\xBC.so");
    EXPECT_EQ(ScannedPluginText(plugin, " (Hall)"), "/a/\xC3\xBC.so (Hall)");
}

TEST(StillScanningText, TellsTheTimeAndTheLimitInWholeSeconds)
{
    EXPECT_EQ(StillScanningText(12s, 60s), "12 s, will be stopped after 60 s");
    EXPECT_EQ(StillScanningText(60s, 60s), "60 s, will be stopped after 60 s");
    EXPECT_EQ(StillScanningText(4s, 4001ms), "4 s, will be stopped after 5 s");
    EXPECT_EQ(StillScanningText(0s, 86400s), "0 s, will be stopped after 86400 s");
}

TEST(StillScanningText, PromisesNoEndThatHasPassed)
{
    EXPECT_EQ(StillScanningText(61s, 60s), "61 s");
    EXPECT_EQ(StillScanningText(5s, 4001ms), "5 s, will be stopped after 5 s");
    EXPECT_EQ(StillScanningText(6s, 4001ms), "6 s");
}

TEST(StillScanningText, ComesFromTheStringTable)
{
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/StillScanning\"=\"@1 > @0\"\n"
        "\"$$$/AudioPluginManager/StillScanningAgain\"=\"again @0\"\n",
        "test");
    EXPECT_EQ(StillScanningText(12s, 60s), "60 > 12");
    EXPECT_EQ(StillScanningText(61s, 60s), "again 61");
    zetcore::config::Localizer::Get().Reset();
}

} // namespace
} // namespace zetaudiopluginhostui
