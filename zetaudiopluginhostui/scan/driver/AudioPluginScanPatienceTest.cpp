// When a plug-in takes long in the scanner process, the user sees that.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <algorithm>
#include <string_view>

#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/ScopedFaults.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

/// The dialog thinks that the plug-in has been shown for 4 seconds longer than it has.
class SlowPlugin : public AudioPluginScanFixture
{
  protected:
    static constexpr int mostLooks = 20;

    std::vector<std::string> ExtraTextsOfAPluginThatTakes4Seconds()
    {
        const zettesting::ScopedFaults faults("dialog.patience:1:late=4");
        Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "wait seen", "ok", Info(none, 1, 1, false)});
        int looks = 0;
        shown.onInput = [&] {
            // A dialog that never tells must not be waited for.
            if (shown.extraTexts.size() > 1 || ++looks > mostLooks)
                Touch("seen");
            return false;
        };
        Scan({a}, true);
        return shown.extraTexts;
    }

    const PluginLocator a = MakeFile("a.so");
};

TEST_F(SlowPlugin, IsShownWithItsSecondsAndTheLimit)
{
    const auto texts = ExtraTextsOfAPluginThatTakes4Seconds();
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts.at(0), Path(a));
    const std::string& text = texts.at(1);
    const std::size_t seconds = text.find("a.so (") + std::string_view("a.so (").size();
    EXPECT_EQ(text.substr(std::min(text.find_first_not_of("0123456789", seconds), text.size())),
              " s, will be stopped after 60 s)")
        << text;
}

TEST_F(SlowPlugin, IsShownWithTheLimitThatIsSet)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("zetaudiofilterscan.EntityTimeoutSeconds", "300.5");
    EXPECT_THAT(ExtraTextsOfAPluginThatTakes4Seconds(),
                Contains(HasSubstr("s, will be stopped after 301 s)")));
}

} // namespace
} // namespace zetaudiopluginhostui
