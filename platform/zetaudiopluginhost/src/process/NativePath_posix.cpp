#include "process/NativePath.h"

#include <zetcore/string/Utf.h>

namespace zetaudiopluginhost {

std::filesystem::path NativePath(const std::wstring& path)
{
    return std::filesystem::path(zetcore::string::UTF16to8(path));
}

std::wstring WidePath(const std::filesystem::path& path)
{
    return zetcore::string::UTF8to16(path.native());
}

} // namespace zetaudiopluginhost
