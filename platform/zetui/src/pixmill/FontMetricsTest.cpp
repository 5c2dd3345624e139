#include <zetui/pixmill/Pixmill.h>

#include <limits>
#include <string>
#include <vector>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <gtest/gtest.h>
#include <zetui/skins/Skins.h>

#include "pixmill/QtConversions.h"
#include "testing/WindowsFixture.h"

namespace zetui::pixmill {
namespace {

const Font font{"", 12};
constexpr wchar_t ellipsis = L'\u2026';

class Text : public WindowsFixture
{
  protected:
    static float Width(const std::wstring& text) { return GetTextWidth(font, text); }
    static std::wstring Cut(const std::wstring& text, TextTruncation truncation, const std::wstring& room)
    {
        // Half a pixel is for fractions.
        return TruncateString(font, text, truncation, Width(room) + 0.5f);
    }
};

TEST_F(Text, WidthsGrowWithTextAndSize)
{
    EXPECT_EQ(Width(L""), 0);
    EXPECT_GT(Width(L"i"), 0);
    EXPECT_GT(Width(L"ii"), Width(L"i"));
    EXPECT_GT(Width(L"W"), Width(L"i"));
    // If fonts are hinted, each letter's width is one of whole pixels.
    const std::wstring reload = L"Reload";
    EXPECT_NEAR(GetTextWidth({"", 24}, reload), 2 * Width(reload), 6);
    EXPECT_EQ(GetTextWidth({ValidateFontName(""), 12}, L"Reload"), Width(L"Reload"));
}

TEST_F(Text, WidthsAreThoseOfTheTextAsItIsDrawn)
{
    for (const std::string& family :
         {std::string(), std::string("DejaVu Serif"), std::string("DejaVu Sans Mono")})
        for (const float size : {11.0f, 12.0f, 13.0f, 24.0f}) {
            const Font one{ValidateFontName(family), size};
            const QFontMetricsF metrics(ToQt(one));
            for (const wchar_t* const text : {L"Reload", L"AVATAR To. LTy", L"office fluff affix",
                                              L"/usr/lib/vst/DragonflyPlateReverb-vst.so",
                                              L"C:\\Program Files\\VstPlugins\\Delay (x64) v2.10.dll",
                                              L"\u00DCberhall \u65E5\u672C", L"a\tb", L" ", L"~!"})
                EXPECT_NEAR(static_cast<double>(GetTextWidth(one, text)),
                            metrics.horizontalAdvance(DisplayText(text)), 0.75)
                    << family << " " << size;
        }
}

TEST_F(Text, ThatFitsStaysAsItIs)
{
    const std::wstring odd = std::wstring(L"a\tb") + wchar_t{0xDC80};
    for (const TextTruncation style :
         {TextTruncation::Never, TextTruncation::Beginning, TextTruncation::End, TextTruncation::Middle}) {
        EXPECT_EQ(TruncateString(font, L"Reverb", style, Width(L"Reverb")), L"Reverb");
        EXPECT_EQ(TruncateString(font, L"", style, -1), L"");
        EXPECT_EQ(TruncateString(font, odd, style, 1000), odd);
    }
}

TEST_F(Text, IsCutWhereTheStyleSays)
{
    struct Case
    {
        TextTruncation style;
        std::wstring text, expected;
    };
    for (const Case& one : {Case{TextTruncation::End, L"abcdefghij", L"abcde\u2026"},
                            Case{TextTruncation::Beginning, L"abcdefghij", L"\u2026fghij"},
                            Case{TextTruncation::Middle, L"abcdefghij", L"abc\u2026ij"},
                            Case{TextTruncation::Never, L"abcdefghij", L"abcdefghij"},
                            Case{TextTruncation::End, L"/abcdefghij", L"/ab\u2026ij"},
                            Case{TextTruncation::End, L"C:\\abcdefgij", L"C:\\\u2026ij"},
                            Case{TextTruncation::End, L"\\\\abcdefgij", L"\\\\a\u2026ij"},
                            Case{TextTruncation::End, L"a/bcdefghij", L"a/bcd\u2026"},
                            Case{static_cast<TextTruncation>(99), L"abcdefghij", L"abcde\u2026"}})
        EXPECT_EQ(Cut(one.text, one.style, one.expected), one.expected);
}

TEST_F(Text, TheStylesHaveTheNumbersThatCallersPass)
{
    EXPECT_EQ(static_cast<TextTruncation>(2), TextTruncation::End);
    EXPECT_EQ(static_cast<TextTruncation>(3), TextTruncation::Middle);
}

TEST_F(Text, IsNeverWiderThanTheRoomAndUsesIt)
{
    const std::wstring path = L"/usr/lib/vst/W\u00FCnderbar i\u0302ll/\u65E5\u672C\u8A9E/Reverb.so";
    for (const TextTruncation style :
         {TextTruncation::Beginning, TextTruncation::End, TextTruncation::Middle}) {
        for (float room = 0; room < Width(path); room += 3) {
            const std::wstring cut = TruncateString(font, path, style, room);
            EXPECT_LE(Width(cut), room);
            if (room > Width(L"\u2026") + 40) {
                EXPECT_NE(cut.find(ellipsis), std::wstring::npos);
                EXPECT_GT(Width(cut), room - 40) << "room is wasted";
            }
        }
    }
}

TEST_F(Text, WithoutRoomForTheEllipsisThereIsNothing)
{
    for (const float room : {Width(L"\u2026") - 0.5f, 0.0f, -10.0f, std::numeric_limits<float>::quiet_NaN()})
        EXPECT_EQ(TruncateString(font, L"abc", TextTruncation::End, room), L"");
    EXPECT_EQ(TruncateString(font, L"abcdef", TextTruncation::End, Width(L"\u2026")), L"\u2026");
}

TEST_F(Text, IsNeverCutInsideACharacter)
{
    // A letter with two marks, a character beyond the first 65,536, a family of four joined ones, a flag.
    const std::vector<std::wstring> characters{L"a\u0323\u0302", L"\U0001F3B5",
                                               L"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466",
                                               L"\U0001F1E9\U0001F1EA", L"\U00020BB7"};
    for (const std::wstring& character : characters) {
        const std::wstring text = character + character + character + character;
        for (float room = Width(L"\u2026"); room < Width(text); room += 1) {
            std::wstring end = TruncateString(font, text, TextTruncation::End, room);
            ASSERT_FALSE(end.empty());
            ASSERT_EQ(end.back(), ellipsis);
            end.pop_back();
            EXPECT_EQ(end.size() % character.size(), 0u);
            EXPECT_EQ(text.substr(0, end.size()), end);

            const std::wstring middle = TruncateString(font, text, TextTruncation::Middle, room);
            EXPECT_EQ(middle.find(ellipsis) % character.size(), 0u);
            EXPECT_EQ((middle.size() - 1) % character.size(), 0u);
        }
    }
}

TEST_F(Text, StrayUnitsAreReplacedOnlyWhereTheTextIsCut)
{
    const std::wstring stray = std::wstring(1, wchar_t{0xDC80}) + L"bcdefghijklmnop";
    const std::wstring cut = Cut(stray, TextTruncation::End, L"\uFFFDbcd\u2026");
    EXPECT_EQ(cut, L"\uFFFDbcd\u2026");
}

TEST_F(Text, AFontThatTheSystemHasNotIsReplacedByTheToolkitsOwn)
{
    EXPECT_EQ(ValidateFontName("No such font family"), ui::GetFontName(0));
    EXPECT_EQ(ValidateFontName(""), ui::GetFontName(0));
    ASSERT_FALSE(QFontDatabase::families().isEmpty());
    const std::string some = QFontDatabase::families().constFirst().toStdString();
    EXPECT_EQ(ValidateFontName(some), some);
}

TEST(TextWithoutApplication, IsLeftAlone)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(GetTextWidth(font, L"abc"), 0);
    EXPECT_EQ(TruncateString(font, L"abc", TextTruncation::End, 1), L"abc");
    EXPECT_EQ(ValidateFontName("Any"), "Any");
    EXPECT_EQ(GetFontBaseline(font, 20), 20);
}

} // namespace
} // namespace zetui::pixmill
