#include "filesupport/paths/PlatformPath.h"

namespace zetcore::filesupport {

std::filesystem::path ToNative(const std::wstring& path)
{
    return path;
}

std::wstring FromNative(const std::filesystem::path& path)
{
    return path.native();
}

} // namespace zetcore::filesupport
