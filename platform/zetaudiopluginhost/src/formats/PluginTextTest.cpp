#include "formats/PluginText.h"

#include <gtest/gtest.h>

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

/// Some factories have UTF-8 and copy each byte into a wider unit.
std::u16string WidenedWithSign(std::string_view bytes)
{
    std::u16string text;
    for (const char byte : bytes)
        text += static_cast<char16_t>(static_cast<signed char>(byte));
    return text;
}

TEST(PluginText, Utf8ThatWasWidenedByteByByteIsReadAsWhatItWas)
{
    EXPECT_EQ(WidenedWithSign("\xC3\xBC"), (std::u16string{0xFFC3, 0xFFBC}));
    EXPECT_EQ(PluginText(WidenedWithSign("\xC3\xBCn\xC3\xAF")), L"\u00FCn\u00EF");
    EXPECT_EQ(PluginText(WidenedWithSign("Caf\xC3\xA9 \xE2\x98\x82 \xF0\x9D\x84\x9E")),
              PluginText("Caf\xC3\xA9 \xE2\x98\x82 \xF0\x9D\x84\x9E"sv));
    EXPECT_EQ(PluginText(std::u16string(WidenedWithSign("\xC3\xBC")) + u'\0' + u"rest"), L"\u00FC");
    // Plain text and text in real characters stay as they are.
    EXPECT_EQ(PluginText(u"Plain 2"sv), L"Plain 2");
    EXPECT_EQ(PluginText(u"\u00FCn\u00EF"sv), L"\u00FCn\u00EF");
    EXPECT_EQ(PluginText(u"\u00FC\uFFC3\uFFBC"sv), L"\u00FC\uFFC3\uFFBC");
    EXPECT_EQ(PluginText(u"\uFF7F\uFFC3\uFFBC"sv), L"\uFF7F\uFFC3\uFFBC");
    // Half-width letters, whose low bytes are no UTF-8.
    EXPECT_EQ(PluginText(u"\uFF8A\uFF9D\uFF84\uFF9E"sv), L"\uFF8A\uFF9D\uFF84\uFF9E");
    EXPECT_EQ(PluginText(WidenedWithSign("\xC3\xBC\xC3")), L"\uFFC3\uFFBC\uFFC3");
    // The form of a half pair in three bytes is no UTF-8 either.
    EXPECT_EQ(PluginText(WidenedWithSign("\xED\xA0\x80")), L"\uFFED\uFFA0\uFF80");
}

TEST(PluginText, AFilesStemIsItsNameWithoutItsLastExtension)
{
    EXPECT_EQ(FileStem(L"/plugins/One.Two.so"), L"One.Two");
    EXPECT_EQ(FileStem(L"/plugins/plain"), L"plain");
    EXPECT_EQ(FileStem(L"/plugins/.so"), L".so");
}

} // namespace
} // namespace zetaudiopluginhost
