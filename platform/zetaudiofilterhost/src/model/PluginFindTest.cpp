#include <zetaudiofilterhost/PluginFind.h>

#include <cstdint>

#include <gtest/gtest.h>

namespace zetaudiofilterhost {
namespace {

std::string Texts(const std::wstring& name)
{
    std::string texts;
    PluginFind::AppendTexts(name, L"", L"", texts);
    return texts;
}

TEST(PluginFind, FoldsTheLettersAToZOnBothSidesAndNothingElse)
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
        EXPECT_EQ(PluginFind(each.find).Keeps(Texts(each.text)), each.occurs)
            << each.find << L" in " << each.text;
    }
}

std::wstring UnitsBetween(std::uint32_t first, std::uint32_t last)
{
    std::wstring text;
    for (std::uint32_t unit = first; unit <= last; ++unit)
        text.push_back(static_cast<wchar_t>(unit));
    return text;
}

TEST(PluginFind, NoCharacterIsFoundInOneThatIsEncodedInMoreOrFewerBytes)
{
    EXPECT_FALSE(PluginFind(L"\u0627").Keeps(Texts(L"\u89e3")));
    // Encodings take another byte from these on.
    constexpr std::uint32_t two = 0x80, three = 0x800, last = 0xFFFF;
    const std::string longer = Texts(UnitsBetween(three, last) + L"\U00010000\U0001f3b9\U0010ffff");
    const std::string shorter = Texts(UnitsBetween(1, two - 1));
    for (std::uint32_t unit = two; unit < three; ++unit) {
        const PluginFind find(std::wstring(1, static_cast<wchar_t>(unit)));
        EXPECT_FALSE(find.Keeps(longer)) << std::hex << unit;
        EXPECT_FALSE(find.Keeps(shorter)) << std::hex << unit;
        EXPECT_FALSE(find.Keeps(Texts(UnitsBetween(two, unit - 1) + UnitsBetween(unit + 1, three - 1))))
            << std::hex << unit;
        EXPECT_TRUE(find.Keeps(Texts(UnitsBetween(two, three - 1)))) << std::hex << unit;
    }
    const std::string twoEach = Texts(UnitsBetween(two, three - 1));
    for (std::uint32_t unit = three; unit <= last; ++unit)
        EXPECT_FALSE(PluginFind(std::wstring(1, static_cast<wchar_t>(unit))).Keeps(twoEach))
            << std::hex << unit;
}

TEST(PluginFind, UnitsThatAreNoTextEqualThemselvesOnly)
{
    const std::wstring stray{L'a', static_cast<wchar_t>(0xDC80)};
    const std::wstring other{L'a', static_cast<wchar_t>(0xDC81)};
    const std::wstring last{static_cast<wchar_t>(-1)};
    EXPECT_TRUE(PluginFind(stray).Keeps(Texts(L"b" + stray)));
    EXPECT_FALSE(PluginFind(stray).Keeps(Texts(other)));
    EXPECT_TRUE(PluginFind(last).Keeps(Texts(stray + last)));
    EXPECT_FALSE(PluginFind(last).Keeps(Texts(stray)));
}

TEST(PluginFind, LooksIntoNamePathAndVersion)
{
    std::string texts;
    PluginFind::AppendTexts(L"Reverb", L"/folder/file.so", L"3.7", texts);
    for (const wchar_t* text : {L"", L"reverb", L"FOLDER", L"file", L"3.7"})
        EXPECT_TRUE(PluginFind(text).Keeps(texts)) << text;
    EXPECT_FALSE(PluginFind(L"vst").Keeps(texts));
}

TEST(PluginFind, FindsNothingAcrossTwoTexts)
{
    std::string texts;
    PluginFind::AppendTexts(L"Reverb", L"/folder/file.so", L"3.7", texts);
    for (const wchar_t* text : {L"Reverb/folder", L"file.so3.7"})
        EXPECT_FALSE(PluginFind(text).Keeps(texts)) << text;
}

} // namespace
} // namespace zetaudiofilterhost
