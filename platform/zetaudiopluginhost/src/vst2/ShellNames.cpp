#include "vst2/ShellNames.h"

#include "formats/PluginText.h"

namespace zetaudiopluginhost::vst2 {

std::wstring ShellComparisonName(const std::wstring& path)
{
    std::wstring name = FileStem(path);
    for (wchar_t& unit : name) {
        if (unit >= L'A' && unit <= L'Z')
            unit = static_cast<wchar_t>(unit - L'A' + L'a');
    }
    constexpr std::wstring_view marker = L"vst";
    for (std::size_t at = name.find(marker); at != std::wstring::npos; at = name.find(marker, at + 1)) {
        const std::size_t behind = at + marker.size();
        const bool hasNumber = behind < name.size() && (name[behind] == L'2' || name[behind] == L'3');
        const bool numberEnds =
            behind + 1 >= name.size() || name[behind + 1] < L'0' || name[behind + 1] > L'9';
        if (hasNumber && numberEnds)
            name.erase(behind, 1);
    }
    return name;
}

} // namespace zetaudiopluginhost::vst2
