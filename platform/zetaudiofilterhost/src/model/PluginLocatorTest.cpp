#include <zetaudiofilterhost/PluginLocator.h>

#include <set>

#include <gtest/gtest.h>

#include "model/LocatorText.h"
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

struct TextCase
{
    PluginLocator locator;
    std::wstring text;
};

TEST(PluginLocator, HasAReadableTextThatComesBackExactly)
{
    const std::wstring stray{L'a', static_cast<wchar_t>(0xdcff), L'b'};
    const TextCase cases[] = {
        {{TechnologyType::VST, L"/usr/lib/vst/amsynth.so"}, L"VST|/usr/lib/vst/amsynth.so|"},
        {{TechnologyType::VST3, L"C:\\Plug-Ins\\My Verb.vst3"}, L"VST3|C:\\Plug-Ins\\My Verb.vst3|"},
        {{TechnologyType::AU, L"/x", L"Sub One"}, L"AU|/x|Sub One"},
        {{TechnologyType::VST, L"/a|b/100%.so", L"|%"}, L"VST|/a%7Cb/100%25.so|%7C%25"},
        {{TechnologyType::VST, L"/new\nline\t.so", L"\r"}, L"VST|/new%0Aline%09.so|%0D"},
        {{TechnologyType::VST, L"/\x7f\x85.so"}, L"VST|/%7F%85.so|"},
        {{TechnologyType::VST, L"/'\"<>&.so"}, L"VST|/'\"<>&.so|"},
        {{TechnologyType::VST, L"/\u00e9\u65e5\u672c\U0001F3B9.so"},
         L"VST|/\u00e9\u65e5\u672c\U0001F3B9.so|"},
        {{TechnologyType::VST, stray}, L"VST|a%uDCFFb|"},
        {{TechnologyType::VST, L"/\u2028\u2029"}, L"VST|/%u2028%u2029|"},
        {{TechnologyType::VST, L"/\uffff\ufffe\ufffd"}, L"VST|/%uFFFF%uFFFE\ufffd|"},
        {{TechnologyType::VST, L" /spaces "}, L"VST| /spaces |"},
        {{TechnologyType::VST, std::wstring(L"/\0x", 3)}, L"VST|/%00x|"},
    };
    for (const TextCase& test : cases) {
        SCOPED_TRACE(zetcore::string::UTF16to8(test.text));
        EXPECT_EQ(test.locator.ToString(), test.text);
        EXPECT_EQ(PluginLocator::FromString(test.text), test.locator);
    }
}

TEST(PluginLocator, EverySingleUnitComesBack)
{
    for (std::uint32_t unit = 0; unit <= 0xffff; ++unit) {
        const PluginLocator locator(TechnologyType::VST, {L'/', static_cast<wchar_t>(unit)},
                                    {static_cast<wchar_t>(unit), L'x'});
        const std::wstring text = locator.ToString();
        ASSERT_EQ(PluginLocator::FromString(text), locator) << std::hex << unit;
        for (std::size_t index = 0; index < text.size(); ++index)
            ASSERT_FALSE(zetcore::string::IsStrayUnit(text, index)) << std::hex << unit;
        ASSERT_EQ(text.find_first_of(L"\n\r"), text.npos) << std::hex << unit;
    }
}

TEST(PluginLocator, EveryByteOfAFileNameComesBack)
{
    std::string bytes = "/";
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const PluginLocator locator(TechnologyType::VST, zetcore::string::UTF8to16(bytes));
    const std::string text = zetcore::string::UTF16to8(locator.ToString());
    const PluginLocator back = PluginLocator::FromString(zetcore::string::UTF8to16(text));
    EXPECT_EQ(back, locator);
    EXPECT_EQ(back.GetPath(), zetcore::string::UTF8to16(bytes));
}

TEST(PluginLocator, EscapesInEitherCaseAndOfAnyCharacterAreRead)
{
    EXPECT_EQ(PluginLocator::FromString(L"VST|/%7c%udcff%41|").GetPath(),
              (std::wstring{L'/', L'|', static_cast<wchar_t>(0xdcff), L'A'}));
}

TEST(PluginLocator, AMalformedTextGivesAnEmptyLocator)
{
    const std::wstring stray{static_cast<wchar_t>(0xdcff)};
    const std::wstring cases[] = {
        L"",
        L"VST",
        L"VST|/a.so",
        L"VST|/a.so|b|c",
        L"VST||",
        L"VST||sub",
        L"vst|/a.so|",
        L" VST|/a.so|",
        L"|/a.so|",
        L"VST4|/a.so|",
        L"VST|/a%|",
        L"VST|/a%2|",
        L"VST|/a%2G|",
        L"VST|/a%u12|",
        L"VST|/a%uGGGG|",
        L"VST|/a%U0000|",
        L"VST|/a|%",
        L"VST|/a\n|",
        L"VST|/a.so|\n",
        L"VST|/a.so|\t",
        L"VST|/a" + stray + L"|",
        L"\ufeffVST|/a.so|",
        L"/usr/lib/vst/amsynth.so",
        L"|||",
        L"VST|/a\u2028|",
    };
    for (const std::wstring& text : cases) {
        EXPECT_TRUE(PluginLocator::FromString(text).IsEmpty()) << zetcore::string::UTF16to8(text);
        EXPECT_EQ(PluginLocator::FromString(text), PluginLocator()) << zetcore::string::UTF16to8(text);
    }
}

TEST(PluginLocator, WithoutPathOrTechnologyItHasNoText)
{
    EXPECT_EQ(PluginLocator().ToString(), L"");
    EXPECT_EQ(PluginLocator(TechnologyType::VST, L"").ToString(), L"");
    EXPECT_EQ(PluginLocator(TechnologyType::Unknown, L"/a.so").ToString(), L"");
    EXPECT_TRUE(PluginLocator().IsEmpty());
}

TEST(PluginLocator, IsOrderedByPathThenTechnologyThenSubcomponent)
{
    const std::set<PluginLocator> ordered{
        {TechnologyType::VST3, L"/b"},      {TechnologyType::VST, L"/b", L"2"}, {TechnologyType::VST, L"/b"},
        {TechnologyType::VST, L"/b", L"1"}, {TechnologyType::AU, L"/a"},
    };
    std::vector<std::wstring> texts;
    for (const PluginLocator& locator : ordered)
        texts.push_back(locator.ToString());
    EXPECT_EQ(texts,
              (std::vector<std::wstring>{L"AU|/a|", L"VST|/b|", L"VST|/b|1", L"VST|/b|2", L"VST3|/b|"}));
}

TEST(PluginLocator, TheModuleLocatorLeavesTheSubcomponentOut)
{
    const PluginLocator locator(TechnologyType::VST, L"/b", L"2");
    EXPECT_EQ(locator.ModuleLocator(), PluginLocator(TechnologyType::VST, L"/b"));
}

TEST(TechnologyName, KnowsEveryTechnology)
{
    EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(2)), L"VST");
    EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(3)), L"VST3");
    EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(4)), L"AU");
    EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(5)), L"CLAP");
    for (const int code : {-1, 0, 1, 6})
        EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(code)), L"");
}

TEST(LocatorPart, IsPlainExactlyWhenNothingIsEscaped)
{
    for (const std::wstring part : {L"", L"plain", L"/a b/\u00e9.so", L"\U0001F3B9"}) {
        EXPECT_TRUE(IsPlainLocatorPart(part));
        EXPECT_EQ(EscapeLocatorPart(part), part);
    }
    for (const std::wstring part : {L"%", L"a|b", L"\u00e9\n", L"\x80"}) {
        EXPECT_FALSE(IsPlainLocatorPart(part));
        EXPECT_NE(EscapeLocatorPart(part), part);
    }
}

} // namespace

} // namespace zetaudiofilterhost
