#include "vst2/Vst2Text.h"

#include "formats/PluginText.h"
#include "vst2/Vst2Abi.h"

namespace zetaudiopluginhost::vst2 {

namespace {

std::wstring FourDigits(std::int64_t version)
{
    std::wstring text;
    for (const std::int64_t unit : {1000, 100, 10, 1})
        text += (text.empty() ? L"" : L".") + std::to_wstring(version / unit % 10);
    return text;
}

} // namespace

std::wstring VersionText(std::int64_t version)
{
    constexpr std::int64_t smallestDecimal = 100;
    constexpr std::int64_t largestDecimal = 9999;
    constexpr std::int64_t largestPart = 99;
    if (version == 0)
        return {};
    if (version < smallestDecimal || version > 0xFFFFFFFF)
        return std::to_wstring(version);
    if (version <= largestDecimal && version % 256 != 0)
        return FourDigits(version);

    std::wstring text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const std::int64_t part = (version >> shift) & 0xFF;
        if (part > largestPart)
            return std::to_wstring(version);
        if (part == 0 && text.empty() && shift == 24)
            continue;
        if (!text.empty())
            text += L'.';
        text += std::to_wstring(part);
    }
    return text;
}

std::wstring CategoryText(std::intptr_t category)
{
    switch (category) {
    case CategoryEffect:
        return L"Effect";
    case CategorySynth:
        return L"Synth";
    case CategoryAnalysis:
        return L"Analysis";
    case CategoryMastering:
        return L"Mastering";
    case CategorySpacializer:
        return L"Spatializer";
    case CategoryRoomFx:
        return L"Room Effect";
    case CategorySurroundFx:
        return L"Surround Effect";
    case CategoryRestoration:
        return L"Restoration";
    case CategoryOfflineProcess:
        return L"Offline Process";
    case CategoryShell:
        return L"Shell";
    case CategoryGenerator:
        return L"Generator";
    default:
        return {};
    }
}

std::wstring IdText(std::int32_t id)
{
    return std::to_wstring(static_cast<std::uint32_t>(id));
}

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
