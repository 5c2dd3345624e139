// The marker of a scan in the host's own process can be neither replaced nor deleted.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <zetcore/debug/DebugDatabase.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

/// A folder in the marker's place can be neither replaced by a file nor deleted like one.
class StaleMarker : public AudioPluginScanFixture
{
  protected:
    void BlockMarker() const
    {
        std::filesystem::remove(Marker());
        std::filesystem::create_directory(Marker());
    }
};

TEST_F(StaleMarker, APluginThatCannotBeMarkedIsNotLoadedAndTheScanGoesOn)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeKnownFile("b.so");
    const auto c = MakeFile("c.so");
    const auto d = MakeFile("d.so");
    zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    int step = 0;
    shown.onStep = [&] {
        if (++step == 1)
            BlockMarker();
        else if (step == 3)
            std::filesystem::remove(Marker());
        return false;
    };
    Scan({a, b, c, d});
    EXPECT_EQ(step, 4);
    EXPECT_TRUE(IsSaved(a));
    EXPECT_FALSE(IsKnown(b));
    EXPECT_FALSE(IsKnown(c));
    EXPECT_TRUE(IsSaved(d));
    // The user is told once, and sees no note that the two are about to be loaded.
    EXPECT_THAT(shown.Starting("caution"), ElementsAre(Caution()));
    EXPECT_THAT(shown.Starting("note"),
                ElementsAre("note Scanning: " + Path(a), "note Scanning: " + Path(d)));
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
    EXPECT_NE(scan->GetEnd().reason.find("ScannedPluginPath.txt"), std::string::npos)
        << scan->GetEnd().reason;
    EXPECT_EQ(atSignal, scan->GetEnd());
    // The record from before is not lost.
    EXPECT_EQ(registry.PutBackUnreached(), (std::vector<PluginLocator>{b}));
    EXPECT_TRUE(IsKnown(b));
}

TEST_F(StaleMarker, CancelEndsTheScanAlsoWhileNothingCanBeMarked)
{
    BlockMarker();
    shown.onStep = [] { return true; };
    Scan({MakeFile("a.so"), MakeFile("b.so")});
    EXPECT_THAT(shown.Starting("step"), SizeIs(1));
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::Cancelled);
}

TEST_F(StaleMarker, OneThatIsThereFromBeforeIsToldOnceAndNothingIsLoaded)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    BlockMarker();
    Scan({a, b});
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/2)",
                                         Caution(), "step " + Path(b) + " (1/2)", "hide"));
    EXPECT_FALSE(IsKnown(a));
    EXPECT_FALSE(IsKnown(b));
    // The next scan begins anew.
    std::filesystem::remove(Marker());
    Scan({a, b});
    EXPECT_TRUE(IsKnown(a));
    EXPECT_TRUE(IsKnown(b));
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_THAT(shown.Starting("caution"), SizeIs(1));
}

TEST_F(StaleMarker, ACancelWorksWhileNothingIsLoaded)
{
    BlockMarker();
    shown.onStep = [] { return true; };
    Scan({MakeFile("a.so"), MakeFile("b.so")});
    EXPECT_THAT(shown.Starting("step"), SizeIs(1));
    EXPECT_EQ(scan->GetEnd(), (ScanEnd{ScanEnd::How::Cancelled, {}}));
}

TEST_F(StaleMarker, OneThatCannotBeDeletedOnlyAtTheEndIsTold)
{
    shown.onHide = [&] { BlockMarker(); };
    Scan({MakeFile("a.so")});
    EXPECT_THAT(shown.Starting("caution"), ElementsAre(Caution()));
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
}

} // namespace
} // namespace zetaudiopluginhostui
