#include "module/FileDigest.h"

#include <limits>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/Fnv1a.h>

namespace zetaudiopluginhostui {

std::uint64_t FileDigest(const zetcore::filesupport::File& file)
{
    constexpr std::uint64_t anySize = std::numeric_limits<std::uint64_t>::max();
    if (const std::error_code error = zetcore::debug::FaultError("host.digest"))
        throw zetcore::filesupport::file_exception("read", file.FullPath(), error);
    return file.Exists() ? zetcore::utility::Fnv1a(zetcore::filesupport::FileUtils::ReadFile(file, anySize))
                         : 0;
}

} // namespace zetaudiopluginhostui
