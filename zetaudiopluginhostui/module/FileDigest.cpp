#include "module/FileDigest.h"

#include <limits>

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
    return file.Exists() ? DigestOf(zetcore::filesupport::FileUtils::ReadFile(file, anySize)) : 0;
}

} // namespace zetaudiopluginhostui
