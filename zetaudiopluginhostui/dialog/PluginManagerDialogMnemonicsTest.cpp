// The letters that press the manager dialog's controls together with Alt, in every language.
#include <map>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTest>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetcore::config::Localizer;
using zetui::controls::UI_Checkbox;
using zetui::controls::UI_StaticText;
using zetui::controls::UI_TextButton;
using zetui::ui::UI_Node;

class DialogMnemonics : public DialogFixture
{
  protected:
    ~DialogMnemonics() override
    {
        CloseDialog();
        Localizer::Get().Reset();
    }
    static void Load(const std::string& language)
    {
        Localizer::Get().Reset();
        Localizer::Get().LoadTable(zetcore::filesupport::File(
            zettesting::ToWide(std::filesystem::path(ZET_STRING_TABLES) / (language + ".txt"))));
    }
    QString ShownText(const char* id) const
    {
        const QWidget& widget = WidgetOf(Node<UI_Node>(id));
        if (const auto* const button = dynamic_cast<const QAbstractButton*>(&widget))
            return button->text();
        return dynamic_cast<const QLabel&>(widget).text();
    }
    QKeySequence MnemonicOf(const char* id) const { return QKeySequence::mnemonic(ShownText(id)); }
    static QString NameOf(const QWidget& widget)
    {
        return QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget))->text(QAccessible::Name);
    }
};

class DialogMnemonicsIn : public DialogMnemonics, public ::testing::WithParamInterface<const char*>
{};

TEST_P(DialogMnemonicsIn, EachTextHasOneAndNoTwoHaveTheSame)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    Load(GetParam());
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        std::map<QString, std::string> holders;
        for (const char* id :
             {ids::kAddDirectoryButton, ids::kRemoveDirectoryButton, ids::kDefaultDirectoriesButton,
              ids::kUpdateButton, ids::kRescanExisting, ids::kEnableAllButton, ids::kDisableAllButton,
              ids::kSeparateProcess, ids::kFindStaticText}) {
            if (ShownText(id).isEmpty())
                continue; // An icon stands there.
            const QString letter = MnemonicOf(id).toString();
            EXPECT_FALSE(letter.isEmpty()) << id << " " << ShownText(id).toStdString();
            EXPECT_EQ(holders.count(letter), 0u)
                << id << " and " << holders[letter] << ": " << letter.toStdString();
            holders[letter] = id;
        }
        EXPECT_GE(holders.size(), 6u);
        EXPECT_TRUE(MnemonicOf(ids::kOKButton).isEmpty()) << "Return is its key";
        EXPECT_TRUE(MnemonicOf(ids::kCancelButton).isEmpty()) << "Escape is its key";
        CloseDialog();
    }
}

TEST_P(DialogMnemonicsIn, TheTextsAndTheNamesStayAsTheyAre)
{
    Load(GetParam());
    OpenDialog();
    const auto text = [](const char* key) { return Localizer::Get().LocalizeWide(key); };
    const std::wstring scan = text("$$$/PluginManager/Dialog/Scan=Scan for Plug-Ins");
    EXPECT_EQ(Node<UI_TextButton>(ids::kUpdateButton).GetText(), scan);
    EXPECT_EQ(NameOf(WidgetOf(Node<UI_Node>(ids::kUpdateButton))).toStdWString(), scan);
    const std::wstring rescan = text("$$$/PluginManager/Dialog/RescanExisting=Rescan existing plug-ins");
    EXPECT_EQ(Node<UI_Checkbox>(ids::kRescanExisting).GetText(), rescan);
    EXPECT_EQ(NameOf(WidgetOf(Node<UI_Node>(ids::kRescanExisting))).toStdWString(), rescan);
    EXPECT_EQ(Node<UI_StaticText>(ids::kFindStaticText).GetText(),
              text("$$$/PluginManager/Dialog/Filter=Filter:"));
    EXPECT_EQ(NameOf(FindBox()).toStdWString(), text("$$$/AudioPluginManager/FindPrompt=Filter plug-ins"));
}

INSTANTIATE_TEST_SUITE_P(Languages, DialogMnemonicsIn,
                         ::testing::Values("en", "de", "fr", "es", "ja", "zh-Hans"),
                         [](const auto& language) {
                             std::string name = language.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST_F(DialogMnemonics, PressTheirControls)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    Resize(1300, 500);
    const auto press = [this](const char* id) {
        const QKeySequence key = MnemonicOf(id);
        ASSERT_FALSE(key.isEmpty()) << id;
        QTest::keyClick(QApplication::focusWidget(), key[0].key(), key[0].keyboardModifiers());
    };
    // A button shows for a moment that it is pressed before it acts.
    press(ids::kDisableAllButton);
    EXPECT_TRUE(WaitUntil([&] { return !info->IsEnabled(); }));
    press(ids::kEnableAllButton);
    EXPECT_TRUE(WaitUntil([&] { return info->IsEnabled(); }));
    press(ids::kRescanExisting);
    EXPECT_TRUE(WaitUntil([&] { return Node<UI_Checkbox>(ids::kRescanExisting).IsChecked(); }));
    ASSERT_TRUE(Node<UI_Node>(ids::kFindStaticText).UI_IsShown());
    press(ids::kFindStaticText);
    EXPECT_TRUE(FindBox().hasFocus());
}

TEST_F(DialogMnemonics, ALineIsDrawnBelowThemWhileAltIsDown)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        Resize(1300, 500);
        WidgetOf(PluginList()).setFocus();
        for (const char* id : {ids::kUpdateButton, ids::kRescanExisting, ids::kFindStaticText}) {
            QWidget& widget = WidgetOf(Node<UI_Node>(id));
            const QImage before = widget.grab().toImage();
            // On Windows the user may have chosen to see them at all times.
            const bool always =
                widget.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &widget) != 0;
            QTest::keyPress(QApplication::focusWidget(), Qt::Key_Alt);
            const QImage held = widget.grab().toImage();
            QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Alt);
            EXPECT_EQ(held == before, always) << id;
            EXPECT_EQ(widget.grab().toImage(), before) << id;
        }
        CloseDialog();
    }
}

TEST_F(DialogMnemonics, ATextThatIsSetLaterHasNoOldLetterAndNoOldName)
{
    OpenDialog();
    auto& button = Node<UI_TextButton>(ids::kUpdateButton);
    button.SetText(L"Another");
    EXPECT_EQ(button.GetText(), L"Another");
    EXPECT_EQ(ShownText(ids::kUpdateButton), QStringLiteral("Another"));
    EXPECT_EQ(NameOf(WidgetOf(button)), QStringLiteral("Another"));
}

} // namespace
} // namespace zetaudiopluginhostui
