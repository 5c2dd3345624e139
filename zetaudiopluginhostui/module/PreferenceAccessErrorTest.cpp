#include "module/PreferenceAccessError.h"

#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

#include "testing/RecordingPresentation.h"

namespace zetaudiopluginhostui {
namespace {

using PreferenceAccessError = zettesting::HostFixture;

TEST_F(PreferenceAccessError, TheCautionNamesTheHostInItsTitleAndInItsText)
{
    const std::wstring before = zetcore::utility::GetClientName();
    zetcore::utility::SetClientName(L"Some @0 Host");
    const RecordingPresentation shown;
    ShowPreferenceAccessCaution(nullptr, nullptr);
    zetcore::utility::SetClientName(before);
    EXPECT_EQ(
        shown.calls,
        std::vector<std::string>{
            "caution Some @0 Host: Unable to load third-party audio plug-ins. Some @0 Host is unable to "
            "access your Preferences folder. Your user account may not have access rights, or the "
            "folder may have been set to Read Only. Please check your permissions and try again."});
}

} // namespace
} // namespace zetaudiopluginhostui
