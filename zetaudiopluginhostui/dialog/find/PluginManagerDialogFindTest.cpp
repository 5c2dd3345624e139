// These tests type into the find box of the manager dialog.
#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"
#include "testing/FillCount.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class DialogFind : public DialogFixture
{
  protected:
    void EnterIntoFindBox(const QString& text) const
    {
        FindBox().setFocus();
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&FindBox(), &event);
        HandleEvents();
    }
};

TEST_F(DialogFind, FindTextIsFoundInNamePathAndVersionWhateverTheCaseOfItsLatinLetters)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"One", L"/plugins/VST3/one.so");
    AddPlugin(L"Two", L"/plugins/other/two.so", L"7.5");
    Ban(L"/plugins/vst2/bad.so");
    OpenDialog();
    TypeIntoFindBox("vst");
    EXPECT_THAT(Names(), ElementsAre(L"One", L"bad.so"));
    FindBox().clear();
    TypeIntoFindBox("TWO");
    EXPECT_THAT(Names(), ElementsAre(L"Two"));
    FindBox().clear();
    TypeIntoFindBox("7.5");
    EXPECT_THAT(Names(), ElementsAre(L"Two"));
    FindBox().clear();
    TypeIntoFindBox("-");
    EXPECT_THAT(Names(), ElementsAre(L"bad.so")) << "the version of a banned plug-in";
    TypeIntoFindBox("x");
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(DialogFind, AnAccentedCapitalInTheFindTextMatchesOnlyItself)
{
    AddPlugin(L"\u00c9cho", L"/a/1.so");
    AddPlugin(L"\u00e9cho", L"/a/2.so");
    OpenDialog();
    EnterIntoFindBox(QString::fromStdWString(L"\u00c9CH"));
    EXPECT_THAT(Names(), ElementsAre(L"\u00c9cho"));
}

TEST_F(DialogFind, EachChangeOfTheFindTextFillsTheListOnceAndNoChangeNever)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    FillCount count(WidgetOf(PluginList()));
    TypeIntoFindBox("o");
    EXPECT_EQ(count.Fills(), 1);
    QTest::keyClick(&FindBox(), Qt::Key_Backspace);
    HandleEvents();
    EXPECT_EQ(count.Fills(), 1);
    QTest::keyClick(&FindBox(), Qt::Key_Left);
    HandleEvents();
    EXPECT_EQ(count.Fills(), 0);
    WidgetOf(PluginList()).setFocus();
    HandleEvents();
    EXPECT_EQ(count.Fills(), 0) << "leaving the box commits the text that is there already";
    TypeIntoFindBox("on");
    EXPECT_EQ(count.Fills(), 2);
    WidgetOf(PluginList()).setFocus();
    HandleEvents();
    EXPECT_EQ(count.Fills(), 0);
    TheRegistry().GetPluginInfosChangedSignal()();
    HandleEvents();
    EXPECT_EQ(count.Fills(), 0) << "the registry's signal alone does not fill it";
}

TEST_F(DialogFind, ACapitalInThePlaceOfItsSmallLetterIsAnotherFindText)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    TypeIntoFindBox("o");
    FillCount count(WidgetOf(PluginList()));
    FindBox().selectAll();
    TypeIntoFindBox("O");
    EXPECT_EQ(count.Fills(), 1);
    FindBox().selectAll();
    TypeIntoFindBox("O");
    EXPECT_EQ(count.Fills(), 0);
}

TEST_F(DialogFind, EachFillKeepsWhatMatchesTheTextThatIsInTheBoxThen)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    TypeIntoFindBox("one");
    WidgetOf(PluginList()).setFocus();
    Node<zetui::controls::UI_SearchBox>(ids::kFindTextEdit).SetValue(L"two");
    HandleEvents();
    ASSERT_THAT(Names(), ElementsAre(L"One")) << "nobody has been told of the new text";
    Press(ids::kDisableAllButton);
    EXPECT_THAT(Names(), ElementsAre(L"Two"));
}

TEST_F(DialogFind, LooksIntoThePathAsItIsShown)
{
    const std::wstring path{L'/', L'a', L'/', static_cast<wchar_t>(0xDC80), L'.', L's', L'o'};
    AddPlugin(L"One", path);
    Ban(path + L"2");
    OpenDialog();
    // Systems disagree about the place of such a name in the list.
    EXPECT_THAT(ColumnTexts(kColumnPath), UnorderedElementsAre(L"/a/\ufffd.so", L"/a/\ufffd.so2"));
    EnterIntoFindBox(QString::fromStdWString(L"\ufffd"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L"One", L"\ufffd.so2"));
}

TEST_F(DialogFind, AFindTextThatIsOnlyCommittedNarrowsTheListToo)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    FindBox().setFocus();
    Node<zetui::controls::UI_SearchBox>(ids::kFindTextEdit).SetValue(L"two");
    ASSERT_THAT(Names(), ElementsAre(L"One", L"Two"));
    WidgetOf(PluginList()).setFocus();
    EXPECT_THAT(Names(), ElementsAre(L"Two"));
}

TEST_F(DialogFind, AFillByTheFindTextGoesToTheTopAndOneByEnableAllStays)
{
    AddManyPlugins(100);
    OpenDialog();
    PluginList().ScrollToRow(PluginList().GetRowAt(99).get());
    HandleEvents();
    Press(ids::kDisableAllButton);
    EXPECT_TRUE(PluginList().IsRowVisible(PluginList().GetRowAt(99).get()));
    TypeIntoFindBox("plugin");
    EXPECT_TRUE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
}

TEST_F(DialogFind, TypingAfterACheckboxWasClickedSortsByWhatIsEnabledNow)
{
    AddPlugin(L"One", L"/a/1.so");
    const auto two = AddPlugin(L"Two", L"/a/2.so");
    settings.sortColumn = kColumnEnabled;
    settings.sortAscending = true;
    OpenDialog();
    ASSERT_THAT(Names(), ElementsAre(L"One", L"Two"));
    PressAt(*CheckboxOf(L"Two"), 7, 7);
    ASSERT_FALSE(two->IsEnabled());
    TypeIntoFindBox("so");
    EXPECT_THAT(Names(), ElementsAre(L"Two", L"One"));
}

TEST_F(DialogFind, TypingSortsByWhatWasSwitchedElsewhere)
{
    AddPlugin(L"One", L"/a/1.so");
    const auto two = AddPlugin(L"Two", L"/a/2.so");
    settings.sortColumn = kColumnEnabled;
    settings.sortAscending = true;
    OpenDialog();
    ASSERT_THAT(Names(), ElementsAre(L"One", L"Two"));
    two->SetEnabled(false);
    TypeIntoFindBox("so");
    EXPECT_THAT(Names(), ElementsAre(L"Two", L"One"));
}

TEST_F(DialogFind, TypingLooksIntoWhatTheRecordsSayNowAndSortsByIt)
{
    const auto one = AddPlugin(L"Alpha", L"/a/1.so");
    const auto two = AddPlugin(L"Beta", L"/a/2.so");
    settings.sortColumn = kColumnName;
    settings.sortAscending = true;
    OpenDialog();
    one->SetName(L"Zeta");
    TypeIntoFindBox("e");
    EXPECT_THAT(Names(), ElementsAre(L"Beta", L"Zeta"));
    two->SetVersionString(L"9.9");
    FindBox().selectAll();
    TypeIntoFindBox("9.9");
    EXPECT_THAT(Names(), ElementsAre(L"Beta"));
    zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->SetSynthsEnabled(false);
    two->SetHasAnyNonSynthEffect(false);
    FindBox().selectAll();
    TypeIntoFindBox("a");
    EXPECT_THAT(Names(), ElementsAre(L"Zeta"));
}

TEST_F(DialogFind, TypingFindsInstrumentsOnlyWhileSynthsAreEnabled)
{
    auto& descriptors = *zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance();
    AddPlugin(L"Effect", L"/a/1.so");
    AddPlugin(L"Synth", L"/a/2.so")->SetHasAnyNonSynthEffect(false);
    OpenDialog();
    descriptors.SetSynthsEnabled(false);
    TypeIntoFindBox("s");
    EXPECT_THAT(Names(), ElementsAre(L"Effect"));
    descriptors.SetSynthsEnabled(true);
    TypeIntoFindBox("o");
    EXPECT_THAT(Names(), ElementsAre(L"Effect", L"Synth"));
}

TEST_F(DialogFind, TypingFindsWhatCameAndLosesWhatWentSinceTheListWasFilled)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    Ban(L"/a/3.so");
    OpenDialog();
    AddPlugin(L"Four", L"/a/4.so");
    TypeIntoFindBox("s");
    EXPECT_THAT(Names(), ElementsAre(L"One", L"Two", L"Four", L"3.so"));
    TheRegistry().RemovePluginLocators({Vst(L"/a/1.so")});
    TypeIntoFindBox("o");
    EXPECT_THAT(Names(), ElementsAre(L"Two", L"Four", L"3.so"));
    TheBanned().RemoveBannedPlugin(Vst(L"/a/3.so"));
    Ban(L"/a/5.so");
    TypeIntoFindBox("\b");
    EXPECT_THAT(Names(), ElementsAre(L"Two", L"Four", L"5.so"));
}

TEST_F(DialogFind, AListThatIsNarrowedByABoxWithoutRoomSaysSoAndHasAWayBack)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    AddPlugin(L"Three", L"/a/3.so");
    OpenDialog();
    const auto& foot = Window();
    const auto notice = [&]() -> QString {
        for (const QLabel* const label : foot.findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(QStringLiteral("shown")))
                return label->text();
        return {};
    };
    TypeIntoFindBox("t");
    EXPECT_EQ(notice(), "") << "the box says it";
    Resize(400, 500);
    ASSERT_FALSE(FindBox().isVisible());
    EXPECT_EQ(notice(), "2 of 3 shown");
    AddPlugin(L"Tree", L"/a/4.so");
    Node<zetui::controls::UI_TextButton>(ids::kEnableAllButton).Click();
    EXPECT_EQ(notice(), "3 of 4 shown");
    Resize(1100, 500);
    EXPECT_EQ(notice(), "");
    Resize(400, 500);
    QPushButton* clear = nullptr;
    for (QPushButton* const button : foot.findChildren<QPushButton*>())
        clear = button->text() == "Clear Filter" ? button : clear;
    ASSERT_TRUE(clear && clear->isVisible());
    QTest::mouseClick(clear, Qt::LeftButton);
    HandleEvents();
    EXPECT_EQ(notice(), "");
    EXPECT_EQ(FindBox().text(), "");
    EXPECT_EQ(Names().size(), 4U);
}

} // namespace
} // namespace zetaudiopluginhostui
