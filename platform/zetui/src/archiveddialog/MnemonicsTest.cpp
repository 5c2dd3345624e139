#include "archiveddialog/Mnemonics.h"

#include <gmock/gmock.h>

namespace zetui::ui {
namespace {

std::vector<std::wstring> Marked(const std::vector<MnemonicText>& texts)
{
    std::vector<std::wstring> marked;
    const auto chosen = ChooseMnemonics(texts);
    for (std::size_t i = 0; i < texts.size(); ++i)
        marked.push_back(chosen[i] ? MarkMnemonic(texts[i].text, *chosen[i]) : texts[i].text);
    return marked;
}

using ::testing::ElementsAre;

TEST(Mnemonics, FirstLettersOfTextsComeBeforeThoseOfWordsAndThoseBeforeOthers)
{
    EXPECT_THAT(Marked({{L"Scan", {}}, {L"Save All", {}}, {L"Sets", {}}}),
                ElementsAre(L"&Scan", L"Save &All", L"Se&ts"));
}

TEST(Mnemonics, LettersBelowWhichALineIsHardToSeeComeLast)
{
    EXPECT_THAT(Marked({{L"Agenda", {}}, {L"Agen", {}}}), ElementsAre(L"&Agenda", L"Age&n"));
}

TEST(Mnemonics, ANarrowLetterIsNotTakenBecauseAWordBeginsWithIt)
{
    EXPECT_THAT(Marked({{L"Analyser", {}}, {L"Analyser les plug-ins", {}}}),
                ElementsAre(L"&Analyser", L"Analyser les &plug-ins"));
    EXPECT_THAT(Marked({{L"A", {}}, {L"P", {}}, {L"As les pie", {}}}),
                ElementsAre(L"&A", L"&P", L"A&s les pie"));
    EXPECT_THAT(Marked({{L"A", {}}, {L"Aj il", {}}}), ElementsAre(L"&A", L"A&j il")) << "there is no other";
}

TEST(Mnemonics, ConsonantsComeBeforeVowels)
{
    EXPECT_THAT(Marked({{L"D", {}}, {L"Douce", {}}}), ElementsAre(L"&D", L"Dou&ce"));
    EXPECT_THAT(Marked({{L"D", {}}, {L"Die", {}}}), ElementsAre(L"&D", L"Di&e"));
}

TEST(Mnemonics, NoLetterIsTakenTwiceWhateverItsCase)
{
    EXPECT_THAT(Marked({{L"Add", {}}, {L"add", {}}, {L"Ad", {}}}), ElementsAre(L"&Add", L"a&dd", L"Ad"));
}

TEST(Mnemonics, ATextGivesWayToOneThatHasNoOtherLetter)
{
    EXPECT_THAT(Marked({{L"Ab", {}}, {L"A", {}}}), ElementsAre(L"A&b", L"&A"));
    EXPECT_THAT(Marked({{L"Ab", {}}, {L"Bc", {}}, {L"A", {}}}), ElementsAre(L"A&b", L"B&c", L"&A"));
}

TEST(Mnemonics, ATextThatMarksItsOwnLetterKeepsIt)
{
    EXPECT_THAT(Marked({{L"Open", {}}, {L"Cl&ose", {}}}), ElementsAre(L"Ope&n", L"Cl&ose"));
    EXPECT_THAT(Marked({{L"This && that", {}}, {L"That", {}}}), ElementsAre(L"This && that", L"&That"));
}

TEST(Mnemonics, LettersThatKeyboardsLackAreNotTaken)
{
    EXPECT_THAT(Marked({{L"\u00c9t\u00e9", {}}}), ElementsAre(L"\u00c9&t\u00e9"));
}

TEST(Mnemonics, ATextWithoutLettersGetsOneOfTheOriginalBehindIt)
{
    EXPECT_THAT(Marked({{L"\u8ffd\u52a0...", L"Add..."}, {L"\u524a\u9664", L"Add"}}),
                ElementsAre(L"\u8ffd\u52a0(&A)...", L"\u524a\u9664(&D)"));
    EXPECT_THAT(Marked({{L"\u7b5b\u9009\uff1a", L"Filter:"}}), ElementsAre(L"\u7b5b\u9009(&F)\uff1a"));
    EXPECT_THAT(Marked({{L"\u524a", {}}}), ElementsAre(L"\u524a(&A)")) << "an original that is not known";
}

TEST(Mnemonics, AnEmptyTextGoesWithout)
{
    EXPECT_THAT(ChooseMnemonics({{L"", L"Add"}}), ElementsAre(std::nullopt));
}

} // namespace
} // namespace zetui::ui
