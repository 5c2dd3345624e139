#include "scan/PluginText.h"

#include <gtest/gtest.h>

#include "scan/ShellNames.h"

namespace zetaudiopluginhost {
namespace {

using namespace std::string_view_literals;

TEST(PluginText, EndsAtTheFirstZeroAndIsFitForShowing)
{
    EXPECT_EQ(PluginText("Name\0rest"sv), L"Name");
    EXPECT_EQ(PluginText("no terminator"sv), L"no terminator");
    EXPECT_EQ(PluginText("  two\twords \n"sv), L"two words");
    EXPECT_EQ(PluginText("Caf\xC3\xA9 \xE9"sv), L"Caf\u00E9 \uFFFD");
    EXPECT_EQ(PluginText("   "sv), L"");
    EXPECT_EQ(PluginText(""sv), L"");
    EXPECT_EQ(PluginText(std::string_view(std::string(5000, 'n'))).size(), 255u);
}

TEST(PluginText, Utf16IsReadWithPairsAndWithoutHalfOnes)
{
    EXPECT_EQ(PluginText(u"T\u00F6ne \U0001D11E\0rest"sv), L"T\u00F6ne \U0001D11E");
    const char16_t halves[] = {u'a', 0xD834, u'b', 0xDD1E, 0xD834};
    EXPECT_EQ(PluginText(std::u16string_view(halves, 5)), L"a\uFFFDb\uFFFD\uFFFD");
}

TEST(PluginText, AFilesStemIsItsNameWithoutItsLastExtension)
{
    EXPECT_EQ(FileStem(L"/plugins/One.Two.so"), L"One.Two");
    EXPECT_EQ(FileStem(L"/plugins/plain"), L"plain");
    EXPECT_EQ(FileStem(L"/plugins/.so"), L".so");
}

TEST(ShellNames, MarkersReadAlikeAndLetterCaseIsApart)
{
    const std::wstring shell = ShellComparisonName(L"/vst/WaveHouse-VST 12.so");
    EXPECT_EQ(ShellComparisonName(L"/vst3/wavehouse-vst3 12.vst3"), shell);
    EXPECT_EQ(ShellComparisonName(L"/vst/WaveHouse-VST2 12.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 13.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 12 More.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/a/VST30.so"), ShellComparisonName(L"/a/VST20.so"));
}

} // namespace
} // namespace zetaudiopluginhost
