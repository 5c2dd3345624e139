#include "supervisor/NativePath.h"

#include <zetcore/string/Utf.h>

namespace zetaudiofilterscan {

std::filesystem::path ToNativePath(const std::wstring& path)
{
    return zetcore::string::UTF16to8(path);
}

std::wstring FromNativePath(const std::filesystem::path& path)
{
    return zetcore::string::UTF8to16(path.native());
}

} // namespace zetaudiofilterscan
