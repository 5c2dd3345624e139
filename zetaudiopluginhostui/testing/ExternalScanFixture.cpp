#include "testing/ExternalScanFixture.h"

#include <algorithm>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

ExternalScanFixture::~ExternalScanFixture()
{
    if (scan)
        scan->StopScan();
}

bool ExternalScanFixture::Start(const std::vector<PluginLocator>& plugins, bool disableShellSkipping,
                                bool quickScan)
{
    return scan->StartScan(
        Settings(), banned, zettesting::ToWide(prefs / "permanent.xml"), plugins, disableShellSkipping,
        quickScan,
        [this](const PluginLocator& plugin, const std::string& subcomponent, int progress, int total) {
            const zetcore::filesupport::File file(plugin.GetPath());
            reports.push_back(zetcore::string::UTF16to8(file.GetTitle()) +
                              (subcomponent.empty() ? "" : ":" + subcomponent) + " " +
                              std::to_string(progress) + "/" + std::to_string(total));
            if (onReport)
                onReport();
        });
}

void ExternalScanFixture::RunUntilEnd()
{
    const int before = EndReports();
    RunUntil([&] { return EndReports() > before; });
}

int ExternalScanFixture::EndReports() const
{
    return static_cast<int>(std::count(reports.begin(), reports.end(), endReport));
}

} // namespace zetaudiopluginhostui
