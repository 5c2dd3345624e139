// These tests use the manager dialog with the keyboard and follow the focus.
#include <algorithm>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zettesting/Patience.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::ui::UI_Node;

class DialogKeyboard : public DialogFixture
{
  protected:
    bool IsShown(const char* id) const { return Node<UI_Node>(id).UI_IsShown(); }
};

TEST_F(DialogKeyboard, TabInTheListGoesToTheList)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    QWidget& list = WidgetOf(PluginList());
    PluginList().UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    QTest::keyClick(&list, Qt::Key_Down);
    HandleEvents();
    ASSERT_TRUE(PluginList().UI_HasKeyboardFocus(false));
    QTest::keyClick(&list, Qt::Key_Tab);
    HandleEvents();
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(*CheckboxOf(L"One")));
    EXPECT_TRUE(PluginList().UI_HasKeyboardFocus(true));
}

TEST_F(DialogKeyboard, TabElsewhereMovesTheFocusAsUsual)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    QWidget& scan = WidgetOf(Node<UI_Node>(ids::kUpdateButton));
    scan.setFocus();
    QTest::keyClick(&scan, Qt::Key_Tab);
    HandleEvents();
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(Node<UI_Node>(ids::kRescanExisting)));
}

TEST_F(DialogKeyboard, TabGoesThroughTheWholeDialogAsOneReadsAndBack)
{
    AddPlugin(L"One", L"/a/1.so");
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first"});
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        const std::vector<std::string> expected = {ids::kAddDirectoryButton,
                                                   ids::kDefaultDirectoriesButton,
                                                   ids::kDirectoryList,
                                                   ids::kUpdateButton,
                                                   ids::kRescanExisting,
                                                   ids::kEnableAllButton,
                                                   ids::kDisableAllButton,
                                                   ids::kFindTextEdit,
                                                   "TreeHeader",
                                                   ids::kPluginList,
                                                   ids::kOKButton,
                                                   ids::kCancelButton};
        WidgetOf(Node<UI_Node>(ids::kAddDirectoryButton)).setFocus();
        const auto walk = [&](Qt::Key key) {
            std::vector<std::string> walked;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                walked.push_back(QApplication::focusWidget()->objectName().toStdString());
                QTest::keyClick(QApplication::focusWidget(), key,
                                key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            }
            return walked;
        };
        EXPECT_EQ(walk(Qt::Key_Tab), expected);
        auto back = expected;
        std::reverse(back.begin() + 1, back.end());
        EXPECT_EQ(walk(Qt::Key_Backtab), back);
        CloseDialog();
    }
}

TEST_F(DialogKeyboard, TabInTheListGoesThroughTheControlsOfTheSelectedRowAndThenOn)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto tabsFrom = [this](const wchar_t* name) {
        PluginList().UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
        PluginList().SelectRow(RowOf(name).get(), true);
        std::vector<QWidget*> stops;
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            stops.push_back(QApplication::focusWidget());
        }
        return stops;
    };
    QWidget* const ok = &WidgetOf(Node<UI_Node>(ids::kOKButton));
    QWidget* const details = Window().findChild<QPlainTextEdit*>();
    EXPECT_THAT(tabsFrom(L"One"), ::testing::ElementsAre(&WidgetOf(*CheckboxOf(L"One")), details, ok));
    EXPECT_THAT(tabsFrom(L"bad.so"),
                ::testing::ElementsAre(&WidgetOf(*ReloadButtonOf(L"bad.so")), details, ok))
        << "a disabled checkbox is passed over";
}

TEST_F(DialogKeyboard, LettersJumpToNamesAndSpaceTogglesTheSelectedRow)
{
    const auto one = AddPlugin(L"Alpha", L"/a/1.so");
    const auto two = AddPlugin(L"Delay", L"/a/2.so");
    OpenDialog();
    QWidget& list = WidgetOf(PluginList());
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_D);
    EXPECT_THAT(PluginList().GetSelectedRows(), ::testing::ElementsAre(RowOf(L"Delay")));
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_TRUE(one->IsEnabled());
    EXPECT_FALSE(two->IsEnabled());
    EXPECT_FALSE(CheckboxOf(L"Delay")->IsChecked());
}

TEST_F(DialogKeyboard, OnlyTabInTheFocusedListIsHandedOn)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    const zetui::ui::KeyboardEvent tab(9, false, false, false);
    const zetui::ui::KeyboardEvent space(' ', false, false, false);
    FindBox().setFocus();
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(nullptr, tab));
    PluginList().UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    PluginList().SelectRow(PluginList().GetRowAt(0).get(), true);
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(&PluginList(), space));
    EXPECT_TRUE(dialog->UI_DoPreKeyboardEvent(&PluginList(), tab));
    ASSERT_EQ(QApplication::focusWidget(), &WidgetOf(*CheckboxOf(L"One")));
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(CheckboxOf(L"One").get(), tab))
        << "a control of the list has it";
}

TEST_F(DialogKeyboard, WhereTheListHasNoUseForTabTheDialogHas)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    const zetui::ui::KeyboardEvent tab(9, false, false, false);
    const zetui::ui::KeyboardEvent back(9, true, false, false);
    PluginList().UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    PluginList().DeselectAll();
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(&PluginList(), tab))
        << "there is no row whose controls it has";
    PluginList().SelectRow(PluginList().GetRowAt(0).get(), true);
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(&PluginList(), back));
    EXPECT_TRUE(PluginList().UI_HasKeyboardFocus(false));
}

/// Writes down the reasons for which widgets get the focus.
class FocusReasons : public QObject
{
  public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            reasons.emplace_back(watched, static_cast<QFocusEvent*>(event)->reason());
        return false;
    }
    std::vector<std::pair<QObject*, Qt::FocusReason>> reasons;
};

TEST_F(DialogKeyboard, TheModalRunGivesTheFocusAsAProgramDoesAndNotAsTheTabKey)
{
    OpenDialog();
    const auto first = TheDialog().GetFirstFocusNode();
    ASSERT_TRUE(first);
    FindBox().setFocus();
    FocusReasons seen;
    WidgetOf(*first).installEventFilter(&seen);
    QTimer::singleShot(0, &Window(), [this] { QTest::keyClick(&Window(), Qt::Key_Escape); });
    dialog->RunModal();
    ASSERT_FALSE(seen.reasons.empty());
    EXPECT_EQ(seen.reasons.front(),
              std::make_pair(static_cast<QObject*>(&WidgetOf(*first)), Qt::OtherFocusReason));
}

TEST_F(DialogKeyboard, MnemonicsOfTheStringTablePressTheirButtonsAndGoToTheFindBox)
{
    auto& localizer = zetcore::config::Localizer::Get();
    localizer.LoadTableFromText("\"$$$/PluginManager/Dialog/DisableAll\"=\"&Disable All\"\n"
                                "\"$$$/PluginManager/Dialog/RescanExisting\"=\"&Rescan\"\n"
                                "\"$$$/PluginManager/Dialog/Filter\"=\"Fi&lter:\"\n",
                                "test");
    const auto info = AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    // A button shows for a moment that it is pressed before it acts.
    QTest::keyClick(&Window(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(WaitUntil([&] { return !info->IsEnabled(); }));
    const auto& rescan = Node<zetui::controls::UI_Checkbox>(ids::kRescanExisting);
    QTest::keyClick(&Window(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(WaitUntil([&] { return rescan.IsChecked(); }));
    Resize(1200, 500);
    ASSERT_TRUE(IsShown(ids::kFindStaticText));
    QTest::keyClick(&Window(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(FindBox().hasFocus());
    localizer.Reset();
}

TEST_F(DialogKeyboard, ControlFGoesToTheFindBoxWhileItShows)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    QWidget& list = WidgetOf(PluginList());
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(FindBox().hasFocus());
    for (const Qt::KeyboardModifiers others : {Qt::ShiftModifier, Qt::AltModifier}) {
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_F, Qt::ControlModifier | others);
        EXPECT_FALSE(FindBox().hasFocus()) << "another shortcut";
    }
    QWidget another;
    another.setFocusPolicy(Qt::StrongFocus);
    another.show();
    another.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&another, zettesting::patienceInMilliseconds));
    another.setFocus();
    QTest::keyClick(&another, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(another.hasFocus()) << "another window's shortcut";
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    EXPECT_FALSE(FindBox().hasFocus());
    Resize(400, 400);
    ASSERT_FALSE(IsShown(ids::kFindTextEdit));
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(FindBox().hasFocus());
}

TEST_F(DialogKeyboard, TheModalRunStartsWithTheFocusOnTheFirstNode)
{
    MakeDialog();
    dialog->SetFirstFocusNode(&Node<UI_Node>(ids::kRescanExisting));
    FindBox().setFocus();
    QWidget* focused = nullptr;
    QTimer::singleShot(0, &Window(), [&] {
        EXPECT_TRUE(WaitUntil([] { return QApplication::focusWidget() != nullptr; }));
        focused = QApplication::focusWidget();
        QTest::keyClick(&Window(), Qt::Key_Escape);
    });
    EXPECT_EQ(dialog->RunModal(), zetui::dialogs::UI_DialogViewContainer::kCancel);
    EXPECT_EQ(focused, &WidgetOf(Node<UI_Node>(ids::kRescanExisting)));
}

TEST_F(DialogKeyboard, TheButtonsCloseWithTheirResults)
{
    using zetui::dialogs::UI_DialogViewContainer;
    const auto resultOf = [this](const std::function<void()>& act) {
        QTimer::singleShot(0, &Window(), [this, act] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
            act();
        });
        return dialog->RunModal();
    };
    MakeDialog();
    EXPECT_EQ(resultOf([this] { Press(ids::kOKButton); }), UI_DialogViewContainer::kOK);
    EXPECT_EQ(resultOf([this] { Press(ids::kCancelButton); }), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(resultOf([this] { Window().close(); }), UI_DialogViewContainer::kCancel);
}

} // namespace
} // namespace zetaudiopluginhostui
