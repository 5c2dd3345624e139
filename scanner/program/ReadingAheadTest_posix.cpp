// Tests that a scan asks the system for the files of the plug-ins that come next.
#include <string>

#include "ColdFile_posix.h"
#include "ScannerFixture.h"

namespace zetaudiofilterscan {
namespace {

using testing::Lt;
using zetaudiofilterhost::PluginLocator;

class ReadingAhead : public ScannerFixture, public testing::WithParamInterface<int>
{
  protected:
    ReadingAhead() : ScannerFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Workers, ReadingAhead, testing::Values(1, 4),
                         [](const auto& test) { return std::to_string(test.param); });

// Every worker is at a plug-in that hangs, so that nobody opens those behind.
TEST_P(ReadingAhead, HasTheNextFilesInMemoryBeforeAnybodyOpensThem)
{
    constexpr std::size_t fileSize = 1 << 20;
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 5000\n");
    std::vector<PluginLocator> locators;
    for (int number = 0; number < workers; ++number)
        locators.push_back(LocatorOf(zettesting::CopyTestPlugin("bad/hangs_on_load", folder.Path(),
                                                                "hangs" + std::to_string(number))));
    std::vector<std::filesystem::path> files;
    // Two for each worker are read ahead, and not the one after them.
    for (int number = 0; number < 2 * workers + 1; ++number) {
        files.push_back(folder / ("file" + std::to_string(number) + ".so"));
        if (!MakeColdFile(files.back(), fileSize))
            GTEST_SKIP() << "the temporary folder is in memory";
        locators.push_back(LocatorOf(files.back()));
    }
    const std::filesystem::path tooFar = files.back();
    files.pop_back();
    ScannerClient client(prefs);
    client.StartScan(locators);
    ASSERT_TRUE(client.GetScanInfo().continues);
    for (const auto& file : files)
        ASSERT_TRUE(WaitUntilInMemory(file)) << file;
    EXPECT_THAT(PartInMemory(tooFar), Lt(0.1));
}

} // namespace
} // namespace zetaudiofilterscan
