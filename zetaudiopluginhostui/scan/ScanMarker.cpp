#include "scan/ScanMarker.h"

#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

namespace filesupport = zetcore::filesupport;

ScanMarker::Outcome ScanMarker::Write(const zetaudiofilterhost::PluginLocator& plugin)
{
    try {
        filesupport::FileUtils::SimpleWriteStringToFile(
            AudioPluginScan::GetLastScannedPluginPath().FullPath(),
            zetcore::string::UTF16to8(plugin.ToString()));
        return {};
    } catch (const filesupport::file_exception& error) {
        return {Delete() ? State::Absent : State::Stale, error.what()};
    }
}

bool ScanMarker::Delete()
{
    try {
        // Without a look first: where the folder lets nobody look, none seems to be there.
        AudioPluginScan::GetLastScannedPluginPath().Delete();
        return true;
    } catch (const filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, "AudioPluginScan", error.what());
        return false;
    }
}

} // namespace zetaudiopluginhostui
