#include "process/NativePath.h"

namespace zetaudiopluginhost {

std::filesystem::path NativePath(const std::wstring& path)
{
    return std::filesystem::path(path);
}

std::wstring WidePath(const std::filesystem::path& path)
{
    return path.native();
}

} // namespace zetaudiopluginhost
