#include "module/FileDigest.h"

#include <limits>

#include <zetcore/debug/FaultPoint.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/filesupport/FileUtils.h>

namespace zetaudiopluginhostui {

std::uint64_t DigestOf(std::string_view bytes) noexcept
{
    std::uint64_t digest = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        digest ^= static_cast<unsigned char>(byte);
        digest *= 0x100000001b3;
    }
    return digest;
}

std::uint64_t FileDigest(const zetcore::filesupport::File& file)
{
    constexpr std::uint64_t anySize = std::numeric_limits<std::uint64_t>::max();
    if (const std::error_code error = zetcore::debug::FaultError("host.digest"))
        throw zetcore::filesupport::file_exception("read", file.FullPath(), error);
    return file.Exists() ? DigestOf(zetcore::filesupport::FileUtils::ReadFile(file, anySize)) : 0;
}

} // namespace zetaudiopluginhostui
