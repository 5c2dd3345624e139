#include "dialog/FindMatch.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace zetaudiopluginhostui {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

TEST(FindMatch, FoldsTheLettersAToZOnBothSidesAndNothingElse)
{
    struct Case
    {
        const wchar_t* find;
        const wchar_t* text;
        bool occurs;
    };
    for (const Case& each : {Case{L"", L"", true},
                             {L"", L"anything", true},
                             {L"a", L"", false},
                             {L"vst", L"/usr/lib/VST3/a", true},
                             {L"VST", L"/usr/lib/vst3/a", true},
                             {L"vSt3", L"VsT3", true},
                             {L"vst3 ", L"VST3", false},
                             {L"reverb", L"Hall Reverb", true},
                             {L"aab", L"aaab", true},
                             {L"longer than the text", L"text", false},
                             {L"\u00c9", L"\u00c9cho", true},
                             {L"\u00c9", L"\u00e9cho", false},
                             {L"\u00e9", L"\u00c9cho", false},
                             {L"\u00e9CHO", L"\u00e9cho", true},
                             {L"\u0416", L"\u0436", false},
                             {L"[", L"{", false},
                             {L"@", L"`", false},
                             {L"1.0", L"1.0.2", true},
                             {L"\u65e5\u672c", L"\u4eca\u65e5\u672c\u8a9e", true},
                             {L"\u672c\u65e5", L"\u65e5\u672c", false},
                             {L"\U0001f3b9", L"a\U0001f3b9b", true},
                             {L"\U0001f3b9", L"\U0001f3b8", false}}) {
        EXPECT_EQ(FindMatch(each.find).OccursIn(each.text), each.occurs) << each.find << L" in " << each.text;
    }
}

std::wstring UnitsBetween(std::uint32_t first, std::uint32_t last)
{
    std::wstring text;
    for (std::uint32_t unit = first; unit <= last; ++unit)
        text.push_back(static_cast<wchar_t>(unit));
    return text;
}

std::string Texts(const std::wstring& name)
{
    const auto info =
        std::make_shared<zetaudiofilterhost::PluginModuleInfo>(PluginLocator(TechnologyType::VST, L"/a"));
    info->SetName(name);
    std::string texts;
    FindMatch::AppendTexts({info->GetLocator(), info}, texts);
    return texts;
}

TEST(FindMatch, NoCharacterIsFoundInOneThatIsEncodedInMoreOrFewerBytes)
{
    EXPECT_FALSE(FindMatch(L"\u0627").OccursIn(L"\u89e3"));
    // Encodings take another byte from these on.
    constexpr std::uint32_t two = 0x80, three = 0x800, last = 0xFFFF;
    const std::string longer = Texts(UnitsBetween(three, last) + L"\U00010000\U0001f3b9\U0010ffff");
    const std::string shorter = Texts(UnitsBetween(1, two - 1));
    for (std::uint32_t unit = two; unit < three; ++unit) {
        const FindMatch find(std::wstring(1, static_cast<wchar_t>(unit)));
        EXPECT_FALSE(find.KeepsTexts(longer)) << std::hex << unit;
        EXPECT_FALSE(find.KeepsTexts(shorter)) << std::hex << unit;
        EXPECT_FALSE(find.KeepsTexts(Texts(UnitsBetween(two, unit - 1) + UnitsBetween(unit + 1, three - 1))))
            << std::hex << unit;
        EXPECT_TRUE(find.KeepsTexts(Texts(UnitsBetween(two, three - 1)))) << std::hex << unit;
    }
    const std::string twoEach = Texts(UnitsBetween(two, three - 1));
    for (std::uint32_t unit = three; unit <= last; ++unit)
        EXPECT_FALSE(FindMatch(std::wstring(1, static_cast<wchar_t>(unit))).KeepsTexts(twoEach))
            << std::hex << unit;
}

TEST(FindMatch, UnitsThatAreNoTextEqualThemselvesOnly)
{
    const std::wstring stray{L'a', static_cast<wchar_t>(0xDC80)};
    const std::wstring other{L'a', static_cast<wchar_t>(0xDC81)};
    const std::wstring last{static_cast<wchar_t>(-1)};
    EXPECT_TRUE(FindMatch(stray).OccursIn(L"b" + stray));
    EXPECT_FALSE(FindMatch(stray).OccursIn(other));
    EXPECT_TRUE(FindMatch(last).OccursIn(stray + last));
    EXPECT_FALSE(FindMatch(last).OccursIn(stray));
}

TEST(FindMatch, FindsNothingAcrossTwoTexts)
{
    const PluginLocator locator(TechnologyType::VST, L"/folder/file.so");
    const auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(locator);
    info->SetName(L"Reverb");
    EXPECT_FALSE(FindMatch(L"Reverb/folder").Keeps({locator, info}));
}

TEST(FindMatch, LooksIntoNamePathAndVersionButNotIntoTypeAndStatus)
{
    const PluginLocator locator(TechnologyType::VST, L"/folder/file.so");
    const auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(locator);
    info->SetName(L"Reverb");
    info->SetVersionString(L"3.7");
    const PluginListEntry working{locator, info};
    const PluginListEntry banned{locator, nullptr};
    struct Case
    {
        const wchar_t* find;
        bool keepsWorking, keepsBanned;
    };
    for (const Case& each : {Case{L"", true, true},
                             {L"reverb", true, false},
                             {L"FOLDER", true, true},
                             {L"file", true, true},
                             {L"3.7", true, false},
                             {L"-", false, true},
                             {L"vst", false, false},
                             {L"working", false, false}}) {
        EXPECT_EQ(FindMatch(each.find).Keeps(working), each.keepsWorking) << each.find;
        EXPECT_EQ(FindMatch(each.find).Keeps(banned), each.keepsBanned) << each.find;
    }
}

} // namespace
} // namespace zetaudiopluginhostui
