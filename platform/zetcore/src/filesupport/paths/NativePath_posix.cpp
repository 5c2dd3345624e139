#include <zetcore/filesupport/paths/NativePath.h>

#include <zetcore/string/Utf.h>

namespace zetcore::filesupport {

std::filesystem::path ToNativePath(const std::wstring& text)
{
    return string::UTF16to8(text);
}

std::wstring FromNativePath(const std::filesystem::path& path)
{
    return string::UTF8to16(path.native());
}

bool IsSameFileName(std::wstring_view left, std::wstring_view right)
{
    return left == right;
}

bool IsLink(const std::filesystem::directory_entry& entry)
{
    std::error_code ignored;
    return entry.is_symlink(ignored);
}

bool IsRefusal(const std::error_code& error)
{
    return error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory &&
           error != std::errc::too_many_symbolic_link_levels;
}

std::optional<std::filesystem::file_type> KindBehindLongPath(const std::filesystem::path&)
{
    return std::nullopt;
}

std::filesystem::path ResolvedPath(const std::filesystem::path& path, std::error_code& error)
{
    return std::filesystem::canonical(path, error);
}

} // namespace zetcore::filesupport
