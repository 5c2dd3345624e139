#include "filesupport/paths/PlatformPath.h"

#include <zetcore/string/Utf.h>

namespace zetcore::filesupport {

std::filesystem::path ToNative(const std::wstring& path)
{
    return string::UTF16to8(path);
}

std::wstring FromNative(const std::filesystem::path& path)
{
    return string::UTF8to16(path.native());
}

} // namespace zetcore::filesupport
