#include <zetcore/string/Utf.h>

#include "ScannerFixture.h"

// The file through which the real scanner hands over what it finds.
namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;

using testing::HasSubstr;
using testing::Not;

class ScanResult : public ScannerFixture
{};

TEST_F(ScanResult, TheResultFileHoldsTheLastPluginsRecordsAndNoOthers)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_shell")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("vst2_effect"));
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    const std::string second = zettesting::ReadAll(client.ResultPath());
    EXPECT_THAT(second, Not(HasSubstr("vst2_effect")));
    std::size_t records = 0;
    for (auto at = second.find("<module "); at != std::string::npos; at = second.find("<module ", at + 1))
        ++records;
    EXPECT_EQ(records, 3U);
}

TEST_F(ScanResult, EveryResultHasAMarkOfItsOwn)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_effect")});
    std::vector<std::string> results;
    while (client.GetScanInfo().continues) {
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        results.push_back(zettesting::ReadAll(client.ResultPath()));
    }
    ASSERT_EQ(results.size(), 2U);
    const auto withoutMark = [](const std::string& text) {
        return text.substr(0, text.find("<!-- scanner"));
    };
    EXPECT_EQ(withoutMark(results[0]), withoutMark(results[1]));
    EXPECT_NE(results[0], results[1]);
}

TEST_F(ScanResult, AResultThatItsHostDeletesIsWrittenOnceMoreAndNoOftener)
{
    ScannerClient client(prefs);
    client.StartScan(
        {Plugin("good/vst2_effect"), Plugin("good/vst2_synth"), Plugin("good/vst3_single_file")});
    std::vector<PluginLocator> rounds;
    std::vector<std::string> results;
    for (zetscanprotocol::ScanInfo info = client.GetScanInfo(); info.continues; info = client.GetScanInfo()) {
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        rounds.push_back(info.locator);
        results.push_back(zettesting::ReadAll(client.ResultPath()));
        std::filesystem::remove(client.ResultPath());
    }
    EXPECT_THAT(rounds,
                testing::ElementsAre(Plugin("good/vst2_effect"), PluginLocator(), Plugin("good/vst2_synth"),
                                     PluginLocator(), Plugin("good/vst3_single_file"), PluginLocator()));
    ASSERT_EQ(results.size(), 6U);
    for (std::size_t i = 0; i < results.size(); i += 2)
        for (const std::size_t copy : {i, i + 1})
            EXPECT_THAT(results[copy], HasSubstr(zetcore::string::UTF16to8(rounds[i].ToString())));
}

TEST_F(ScanResult, AResultThatAnotherScannerReplacesIsWrittenUntilItStays)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_synth")});
    ASSERT_EQ(client.GetScanInfo().locator, Plugin("good/vst2_effect"));
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    for (int times = 0; times < 5; ++times) {
        zettesting::WriteAll(client.ResultPath(), "another's");
        ASSERT_EQ(client.GetScanInfo().locator, PluginLocator()) << times;
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("vst2_effect"));
    }
    EXPECT_EQ(client.GetScanInfo().locator, Plugin("good/vst2_synth"));
}

TEST_F(ScanResult, TheResultFileIsReplacedWhole)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect")});
    // A second name of the file shows the old content only when the file was replaced, not overwritten.
    zettesting::WriteAll(client.ResultPath(), "old");
    std::filesystem::create_hard_link(client.ResultPath(), prefs / "second_name");
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_EQ(zettesting::ReadAll(prefs / "second_name"), "old");
    EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("vst2_effect"));
}

TEST_F(ScanResult, GoesOnWhenTheResultCannotBeWrittenAndNotesWhichFile)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_synth")});
    std::filesystem::create_directory(client.ResultPath());
    ASSERT_TRUE(client.GetScanInfo().continues);
    EXPECT_TRUE(client.ScanOneEntity().Succeeded());
    std::filesystem::remove(client.ResultPath());
    ASSERT_TRUE(client.GetScanInfo().continues);
    EXPECT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_TRUE(std::filesystem::exists(client.ResultPath()));
    std::string logs;
    for (const auto& entry : std::filesystem::directory_iterator(prefs / "scan-logs"))
        logs += zettesting::ReadAll(entry.path());
    EXPECT_NE(logs.find("plugins.xml.scan"), std::string::npos) << logs;
}

} // namespace
} // namespace zetaudiofilterscan
