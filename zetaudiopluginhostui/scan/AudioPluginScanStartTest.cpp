// The scan in the scanner process when that cannot be started.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfoManager;

class AudioPluginScanStartTest : public AudioPluginScanFixture
{};

TEST_F(AudioPluginScanStartTest, AnExternalScanThatCannotStartShowsNothingButSavesAndSignals)
{
    const auto a = MakeKnownFile("a.so");
    const auto other = MakeKnownFile("other.so");
    zettesting::WriteAll(Marker(), "VST|/stale.so|");
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    bool savedAtSignal = false;
    bool markerAtSignal = true;
    onSignal = [&] {
        savedAtSignal = IsSaved(other) && !IsSaved(a);
        markerAtSignal = std::filesystem::exists(Marker());
    };
    Scan({a}, true);
    EXPECT_THAT(shown.calls, IsEmpty());
    EXPECT_FALSE(IsKnown(a)) << "it is not scanned in this process instead";
    EXPECT_TRUE(savedAtSignal);
    EXPECT_FALSE(markerAtSignal);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
    EXPECT_THAT(scan->GetEnd().reason, HasSubstr("There is no scanner program"));
    EXPECT_EQ(atSignal, scan->GetEnd());
}

TEST_F(AudioPluginScanStartTest, AFailedStartLeavesTheScannerThatItMayHaveStartedAlone)
{
    Script(1, {"dead", "wait end"});
    bool ran = false;
    zetcore::threads::AsyncCallFromMainThread([&ran] { ran = true; }, 0);
    Scan({MakeFile("a.so")}, true);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
    EXPECT_THAT(scan->GetEnd().reason, HasSubstr("does not answer at port"));
    EXPECT_TRUE(ScannersRun());
    EXPECT_FALSE(ran) << "nothing was to be stopped";
    Touch("end");
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanStartTest, AnOldResultFileThatCannotBeDeletedIsReportedAndNothingIsScanned)
{
    const auto a = MakeFile("a.so");
    const std::wstring settings = PluginModuleInfoManager::GetSettingsFileName();
    std::filesystem::create_directories(prefs / (settings + L".scan") / "not empty");
    Scan({a}, true);
    EXPECT_THAT(shown.calls, ElementsAre(Caution()));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Launches(), 0);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
    EXPECT_THAT(scan->GetEnd().reason, HasSubstr(".scan"));
}

/// Something happens between the first save and the start, which then fails.
class FailedStart : public AudioPluginScanStartTest
{
  protected:
    void ScanWith(std::function<void()> betweenSaveAndStart)
    {
        zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
        zetcore::debug::SetTraceSink([&](int, std::string_view, std::string_view text) {
            if (text.starts_with("Writing trace volume"))
                betweenSaveAndStart();
        });
        zetcore::debug::SetMasterTraceVolume(6);
        onSignal = [&] {
            shown.calls.emplace_back("signal");
            lateIsSaved = IsSaved(late);
        };
        Scan({MakeFile("a.so")}, true);
        EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
    }

    const PluginLocator late = MakeFile("late.so");
    bool lateIsSaved = false;
};

TEST_F(FailedStart, IsFollowedByASaveAndThenTheSignal)
{
    ScanWith([&] { registry.AddModule(std::make_shared<zetaudiofilterhost::PluginModuleInfo>(late)); });
    EXPECT_THAT(shown.calls, ElementsAre("signal"));
    EXPECT_TRUE(lateIsSaved);
}

TEST_F(FailedStart, TellsOfAFailedSaveAfterTheSignal)
{
    ScanWith([&] { MakePrefsUnwritable(); });
    EXPECT_THAT(shown.calls, ElementsAre("signal", Caution()));
}

TEST_F(FailedStart, TellsOfAFailedFirstSaveAfterTheSignal)
{
    MakePrefsUnwritable();
    ScanWith([&] { MakePrefsWritable(); });
    EXPECT_THAT(shown.calls, ElementsAre("signal", Caution()));
    EXPECT_TRUE(std::filesystem::exists(Saved()));
}

} // namespace
} // namespace zetaudiopluginhostui
