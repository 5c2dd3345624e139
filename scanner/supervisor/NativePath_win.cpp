#include "supervisor/NativePath.h"

namespace zetaudiofilterscan {

std::filesystem::path ToNativePath(const std::wstring& path)
{
    return path;
}

std::wstring FromNativePath(const std::filesystem::path& path)
{
    return path.native();
}

} // namespace zetaudiofilterscan
