#include <zetcore/string/Utf.h>

#include <clocale>

#include <gtest/gtest.h>

namespace zetcore::string {
namespace {

TEST(Utf, TextGoesBothWays)
{
    EXPECT_EQ(UTF8to16("Gr\xC3\xBC\xC3\x9F"
                       "e \xF0\x9F\x8E\xB9"),
              L"Grüße 🎹");
    EXPECT_EQ(UTF16to8(L"Grüße 🎹"), "Gr\xC3\xBC\xC3\x9F"
                                    "e \xF0\x9F\x8E\xB9");
    EXPECT_EQ(UTF8to16(""), L"");
    EXPECT_EQ(UTF16to8(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf, AsciiIsTakenByteByByte)
{
    EXPECT_EQ(AsciiToUTF16("plug-in \xE9"), L"plug-in é");
}

TEST(Utf, CodePointsAreTakenAndAppended)
{
    const std::wstring text = L"a🎹";
    std::wstring copy;
    for (std::size_t index = 0; index < text.size();) {
        EXPECT_FALSE(IsStrayUnit(text, index));
        AppendCodePoint(copy, NextCodePoint(text, index));
    }
    EXPECT_EQ(copy, text);
    EXPECT_TRUE(IsStrayUnit(std::wstring{static_cast<wchar_t>(0xDC80)}, 0));
}

TEST(Utf, ShownTextHasNoLineBreaks)
{
    EXPECT_EQ(ForDisplay(L"two\r\nlines"), L"two  lines");
}

TEST(Utf, LetterCaseIsSetApartForAllScripts)
{
    const std::pair<const wchar_t*, const wchar_t*> equal[] = {
        {L"", L""},       {L"Reverb.DLL", L"reverb.dll"},
        {L"ÄÖÜ", L"äöü"}, {L"ДЕЛЬТА", L"дельта"},
        {L"ΣΑΣ", L"σασ"}, {L"ЁЖ", L"ёж"},
    };
    for (const auto& [left, right] : equal)
        EXPECT_TRUE(EqualIgnoringCase(left, right)) << UTF16to8(left);
    const std::pair<const wchar_t*, const wchar_t*> different[] = {
        {L"a", L"b"}, {L"a", L""}, {L"a", L"aa"}, {L"ä", L"a"}, {L"ı", L"I"}, {L"İ", L"i"}, {L"ß", L"s"},
    };
    for (const auto& [left, right] : different)
        EXPECT_FALSE(EqualIgnoringCase(left, right)) << UTF16to8(left);
}

TEST(Utf, LetterCaseDoesNotDependOnTheProgramsLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    EXPECT_TRUE(EqualIgnoringCase(L"É", L"é"));
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Utf, StrayUnitsEqualOnlyThemselves)
{
    const std::wstring one{static_cast<wchar_t>(0xDC80)};
    const std::wstring other{static_cast<wchar_t>(0xDC81)};
    EXPECT_TRUE(EqualIgnoringCase(one, one));
    EXPECT_FALSE(EqualIgnoringCase(one, other));
}

} // namespace
} // namespace zetcore::string
