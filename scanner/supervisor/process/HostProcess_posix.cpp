#include "supervisor/process/HostProcess.h"

#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetscanprotocol/ScanProtocol.h>

namespace zetaudiofilterscan {

std::uint64_t HostProcessNumber()
{
    return static_cast<std::uint64_t>(::getppid());
}

bool HostProcessHasEnded(std::uint64_t number)
{
    return number != 0 && static_cast<std::uint64_t>(::getppid()) != number;
}

bool HostProcessIsWaiting(std::uint64_t number)
{
    const std::wstring name(zetscanprotocol::blockName,
                            zetscanprotocol::blockName +
                                std::char_traits<char>::length(zetscanprotocol::blockName));
    const zetcore::filesupport::File block(zetcore::filesupport::commondirs::RuntimeDir(), name);
    const std::filesystem::path blockPath = zetcore::filesupport::ToNativePath(block.FullPath());
    std::error_code error;
    std::filesystem::directory_iterator opened("/proc/" + std::to_string(number) + "/fd", error);
    // The first process takes over those whose parent has ended, and shows itself to few.
    if (number == 0 || error)
        return number != 1;
    for (; !error && opened != std::filesystem::directory_iterator(); opened.increment(error)) {
        std::error_code closed;
        if (std::filesystem::equivalent(opened->path(), blockPath, closed))
            return true;
    }
    return false;
}

} // namespace zetaudiofilterscan
