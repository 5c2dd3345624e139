#include <zetscanprotocol/ScanRelay.h>

#include <exception>
#include <filesystem>
#include <system_error>
#include <vector>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetscanprotocol {

std::string RelayNamesOf(std::uint64_t hostProcess)
{
    return relayPrefix + std::to_string(hostProcess) + "-";
}

void DeleteRelayOf(std::uint64_t hostProcess)
{
    namespace filesupport = zetcore::filesupport;
    try {
        const std::string beginning = RelayNamesOf(hostProcess);
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(
                 filesupport::ToNativePath(filesupport::commondirs::RuntimeDir().FullPath()))) {
            const std::wstring name = filesupport::FromNativePath(entry.path().filename());
            if (zetcore::string::UTF16to8(name).starts_with(beginning))
                found.push_back(entry.path());
        }
        for (const std::filesystem::path& file : found)
            std::filesystem::remove(file);
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, "ScanRelay", error.what());
    }
}

} // namespace zetscanprotocol
