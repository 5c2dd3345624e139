#include <zetcore/filesupport/paths/LongPath.h>

#include <vector>

namespace zetcore::filesupport {

namespace {

constexpr std::wstring_view longStart = L"\\\\?\\";
constexpr std::wstring_view longShareStart = L"\\\\?\\UNC\\";
/// The limit for folders is 248, and temporary files and files kept aside have longer names than those asked
/// for.
constexpr std::size_t longEnough = 200;

bool IsSeparator(wchar_t character)
{
    return character == L'\\' || character == L'/';
}

bool StartsWithDrive(std::wstring_view path)
{
    const auto letter = path.empty() ? L' ' : static_cast<wchar_t>(path[0] | 0x20);
    return path.size() > 2 && letter >= L'a' && letter <= L'z' && path[1] == L':' && IsSeparator(path[2]);
}

/// True for "\\server\share", and false for "\\?\" and "\\.\".
bool StartsWithServer(std::wstring_view path)
{
    return path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2]) &&
           path[2] != L'?' && path[2] != L'.';
}

std::vector<std::wstring_view> PartsOf(std::wstring_view path, std::size_t partsOfRoot)
{
    std::vector<std::wstring_view> parts;
    for (std::size_t start = 0; start < path.size();) {
        std::size_t end = start;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        const std::wstring_view part = path.substr(start, end - start);
        if (part == L"..") {
            if (parts.size() > partsOfRoot)
                parts.pop_back();
        } else if (!part.empty() && part != L".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    return parts;
}

} // namespace

std::wstring LongForm(std::wstring_view path)
{
    const bool onServer = StartsWithServer(path);
    if (path.size() < longEnough || (!onServer && !StartsWithDrive(path)))
        return std::wstring(path);
    std::wstring text(onServer ? longShareStart : longStart);
    for (const std::wstring_view part : PartsOf(path, onServer ? 2 : 1))
        text.append(part).push_back(L'\\');
    if (!IsSeparator(path.back()))
        text.pop_back();
    return text;
}

std::wstring PlainForm(std::wstring_view path)
{
    if (path.starts_with(longShareStart))
        return L"\\\\" + std::wstring(path.substr(longShareStart.size()));
    if (path.starts_with(longStart) && StartsWithDrive(path.substr(longStart.size())))
        return std::wstring(path.substr(longStart.size()));
    return std::wstring(path);
}

} // namespace zetcore::filesupport
