#include "report/PrivateWords.h"

#include <gtest/gtest.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {
namespace {

struct WordsCase
{
    const char* name;
    std::wstring text, replaced;

    friend void PrintTo(const WordsCase& row, std::ostream* stream) { *stream << row.name; }
};

class PrivateWordsRow : public testing::TestWithParam<WordsCase>
{};

TEST_P(PrivateWordsRow, IsReplaced)
{
    const PrivateWords words(
        {L"/home/anna", L"/data/people/anna/", L"C:\\Users\\Anna Lee", L"/", L"", L"/home/\u00c5sa"},
        {L"anna", L"Anna Lee", L"bo", L"\u00c5sa", L""});
    EXPECT_EQ(zetcore::string::UTF16to8(words.Replace(GetParam().text)),
              zetcore::string::UTF16to8(GetParam().replaced));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PrivateWordsRow,
    testing::Values(WordsCase{"NothingPrivate", L"/usr/lib/vst/amsynth.so", L"/usr/lib/vst/amsynth.so"},
                    WordsCase{"Empty", L"", L""}, WordsCase{"Home", L"/home/anna", L"<home>"},
                    WordsCase{"InsideHome", L"VST|/home/anna/.vst/a.so|", L"VST|<home>/.vst/a.so|"},
                    WordsCase{"Twice", L"/home/anna:/home/anna/x", L"<home>:<home>/x"},
                    WordsCase{"AnotherPathOfHome", L"open /data/people/anna/a.so", L"open <home>/a.so"},
                    WordsCase{"InTheMiddleOfAPath", L"/mnt/home/anna/a", L"/mnt<home>/a"},
                    WordsCase{"OtherHomeThatBeginsAlike", L"/home/annabel/a", L"/home/<user>bel/a"},
                    WordsCase{"OtherLetterCase", L"/HOME/Anna/a ANNA", L"<home>/a <user>"},
                    WordsCase{"OtherLetterCaseBeyondAscii", L"/home/\u00e5SA/x", L"<home>/x"},
                    WordsCase{"OtherSeparators", L"file:///C:/Users/Anna Lee/a.vst3",
                              L"file:///<home>/a.vst3"},
                    WordsCase{"DoubledSeparators", L"\"C:\\\\Users\\\\Anna Lee\\\\a\"", L"\"<home>\\\\a\""},
                    WordsCase{"PercentEncodedSpace", L"file:///c:/users/anna%20lee/a", L"file:///<home>/a"},
                    WordsCase{"WhollyPercentEncoded", L"?at=%2Fhome%2fanna%2Fa", L"?at=<home>%2Fa"},
                    WordsCase{"PercentEncodedBytes", L"/home/%C3%85sa/a", L"<home>/a"},
                    WordsCase{"EncodedAsInALocator", L"/home/%u0061nna/a", L"<home>/a"},
                    WordsCase{"PercentSignsThatEncodeNothing", L"100% %zz %", L"100% %zz %"},
                    WordsCase{"NameAlone", L"anna@host said so", L"<user>@host said so"},
                    WordsCase{"NameInsideAWord", L"annas-plugins", L"<user>s-plugins"},
                    WordsCase{"FullNameBeforeItsPart", L"by Anna Lee", L"by <user>"},
                    WordsCase{"ShortNameAlone", L"/srv/bo/x bo_2 -bo", L"/srv/<user>/x <user>_2 -<user>"},
                    WordsCase{"ShortNameInsideAWord", L"/robot/bob/combo/bo9", L"/robot/bob/combo/bo9"},
                    WordsCase{"ShortNameBehindAnEncodedCharacter", L"%2Fbo%2F", L"%2F<user>%2F"},
                    WordsCase{"TheEndOfTheTextCutsAWord", L"/home/ann", L"/home/ann"}),
    [](const testing::TestParamInfo<WordsCase>& row) { return std::string(row.param.name); });

TEST(PrivateWords, UnitsThatAreNoUnicodeStayAsTheyAre)
{
    const PrivateWords words({zetcore::string::UTF8to16("/home/a\xFFz")}, {});
    const std::wstring stray = zetcore::string::UTF8to16("\xFE ");
    EXPECT_EQ(words.Replace(stray + zetcore::string::UTF8to16("/home/a\xFFz/b")), stray + L"<home>/b");
}

TEST(PrivateWords, WithoutWordsNothingIsReplaced)
{
    EXPECT_EQ(PrivateWords({L"/", L"", L"///"}, {L""}).Replace(L"/home/anna"), L"/home/anna");
}

} // namespace
} // namespace zetaudiopluginmanager
