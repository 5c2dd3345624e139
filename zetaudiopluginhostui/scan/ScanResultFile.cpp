#include "scan/ScanResultFile.h"

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetscanprotocol/ScanProtocol.h>

namespace zetaudiopluginhostui {

namespace filesupport = zetcore::filesupport;

ScanResultFile::ScanResultFile(const std::wstring& pluginSettingsPath)
    : file(pluginSettingsPath + zetscanprotocol::resultFileSuffix)
{}

void ScanResultFile::DeleteIfThere() const
{
    if (file.Exists())
        file.Delete();
}

std::string ScanResultFile::Read() const
{
    try {
        if (file.Exists())
            return filesupport::FileUtils::ReadFile(file);
    } catch (const filesupport::file_exception& error) {
        if (error.Cause() != std::errc::no_such_file_or_directory)
            zetcore::debug::TraceLine(1, "ExternalAudioPluginScan", error.what());
    }
    return {};
}

} // namespace zetaudiopluginhostui
