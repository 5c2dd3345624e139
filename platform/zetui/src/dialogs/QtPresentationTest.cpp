#include "dialogs/QtPresentation.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <zetcore/config/Localizer.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/OS_FolderChooserDialog.h>
#include <zetui/dialogs/messagebox.h>

#include "dialogs/TextWindow.h"
#include "pixmill/QtConversions.h"
#include "testing/WindowsFixture.h"

namespace zetui::dialogs {
namespace {

using namespace messagebox;

class ModalDialogs : public WindowsFixture
{
  protected:
    ~ModalDialogs() override { EXPECT_TRUE(userCame) << "no dialog was open"; }

    /// As soon as a dialog of this class is open, the user does this.
    template<typename Dialog>
    void User(std::function<void(Dialog&)> act)
    {
        userCame = false;
        QObject::connect(&eyes, &QTimer::timeout, [this, act = std::move(act)] {
            auto* const dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isActiveWindow() || userCame)
                return;
            userCame = true;
            eyes.disconnect();
            act(*dialog);
        });
        eyes.start(5);
    }

    static int Ask(int buttons, int defaultButton, int icon = kIconCaution)
    {
        return Messagebox(nullptr, L"Host", L"Continue?", {}, buttons, defaultButton, icon);
    }

    static QAbstractButton* Button(QMessageBox& box, const char* text)
    {
        for (QAbstractButton* const button : box.buttons())
            if (button->text().remove(u'&') == QLatin1String(text))
                return button;
        return nullptr;
    }

    bool userCame = true;

  private:
    QTimer eyes;
};

TEST_F(ModalDialogs, AClickAnswersWithItsButton)
{
    struct Case
    {
        int buttons;
        const char* click;
        int answer;
    };
    for (const Case& one :
         {Case{kYesNo, "Yes", 16}, Case{kYesNo, "No", 64}, Case{kOK | kCancel, "OK", 1},
          Case{kOK | kCancel, "Cancel", 2}, Case{kOK, "OK", 1}, Case{kYes | kNo | kCancel, "Cancel", 2}}) {
        User<QMessageBox>([&](QMessageBox& box) {
            QAbstractButton* const button = Button(box, one.click);
            ASSERT_NE(button, nullptr);
            QTest::mouseClick(button, Qt::LeftButton);
        });
        EXPECT_EQ(Ask(one.buttons, kNo), one.answer) << one.click;
    }
}

TEST_F(ModalDialogs, AReturnOrEscapeThatIsKeptDownAnswersNothing)
{
    User<QMessageBox>([](QMessageBox& box) {
        for (const int key : {static_cast<int>(Qt::Key_Return), static_cast<int>(Qt::Key_Escape)}) {
            QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(box.focusWidget() ? box.focusWidget() : &box, &held);
            EXPECT_TRUE(box.isVisible());
        }
        QTest::keyClick(box.defaultButton(), Qt::Key_Return);
    });
    EXPECT_EQ(Ask(kYesNo, kYes), kYes);
}

TEST_F(ModalDialogs, ALongTextCanBeSelectedAndCopiedAndIsClosedByKeysAndButton)
{
    const std::function<void(TextWindow&)> ways[] = {
        [](TextWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); },
        [](TextWindow& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Return); },
        [](TextWindow& window) { QTest::mouseClick(window.findChild<QPushButton*>(), Qt::LeftButton); },
    };
    for (const auto& way : ways) {
        User<TextWindow>([&](TextWindow& window) {
            EXPECT_EQ(window.windowTitle(), QStringLiteral("The log"));
            QPlainTextEdit& text = window.Text();
            EXPECT_EQ(text.toPlainText(), QStringLiteral("first\nsecond"));
            EXPECT_TRUE(text.isReadOnly());
            EXPECT_EQ(window.focusWidget(), &text);
            QTest::keyClicks(&text, QStringLiteral("typed"));
            QTest::keyClick(&text, Qt::Key_Delete);
            EXPECT_EQ(text.toPlainText(), QStringLiteral("first\nsecond"));
            QTest::keyClick(&text, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
            EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("first\nsecond"));
            way(window);
        });
        messagebox::ShowText(L"The log", L"first\nsecond", {});
    }
}

TEST_F(ModalDialogs, ReturnTakesTheDefaultButton)
{
    for (const int button : {kYes, kNo, kCancel}) {
        User<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
        EXPECT_EQ(Ask(kYes | kNo | kCancel, button), button);
    }
}

TEST_F(ModalDialogs, EscapeAndClosingAnswerCancelOrNoOrTheDefault)
{
    struct Case
    {
        int buttons, defaultButton, answer;
    };
    const std::function<void(QMessageBox&)> ways[] = {
        [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); },
        [](QMessageBox& box) { box.close(); },
        [](QMessageBox& box) { box.hide(); },
    };
    for (const Case& one :
         {Case{kYesNo, kYes, kNo}, Case{kYesNo | kCancel, kYes, kCancel}, Case{kOK | kCancel, kOK, kCancel},
          Case{kOK, kOK, kOK}, Case{kYes, kYes, kYes}, Case{kOK | kYes, kYes, kYes}})
        for (const auto& way : ways) {
            User<QMessageBox>(way);
            EXPECT_EQ(Ask(one.buttons, one.defaultButton), one.answer) << one.buttons;
        }
}

TEST_F(ModalDialogs, MnemonicsPressTheirButtons)
{
    User<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Y, Qt::AltModifier); });
    EXPECT_EQ(Ask(kYesNo, kNo), kYes);
}

TEST_F(ModalDialogs, AlertsHaveTitlePlainTextAndIcon)
{
    const std::wstring markup = L"<b>Bold?</b>\nA & B";
    User<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Host"));
        EXPECT_EQ(box.text(), QStringLiteral("<b>Bold?</b>\nA & B"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        EXPECT_EQ(box.buttons().size(), 1);
        EXPECT_TRUE(box.isModal());
        box.close();
    });
    ShowNote(nullptr, L"Host", markup, {});

    User<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        box.close();
    });
    ShowCaution(nullptr, L"Host", markup, {});

    for (const auto& [icon, shown] :
         {std::pair(kIconNone, QMessageBox::NoIcon), std::pair(kIconStop, QMessageBox::Critical)}) {
        User<QMessageBox>([expected = shown](QMessageBox& box) {
            EXPECT_EQ(box.icon(), expected);
            box.close();
        });
        EXPECT_EQ(Ask(kOK, kOK, icon), kOK);
    }
}

TEST_F(ModalDialogs, NoTextOfAnAlertIsCut)
{
    const std::wstring message = L"/usr/lib/vst/broken.so\n\nThis plug-in stopped, and the scanner ended.";
    for (const skins::Skin skin : skins::AllSkins()) {
        skins::SetSkin(skin);
        User<QMessageBox>([](QMessageBox& box) {
            auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            ASSERT_NE(label, nullptr);
            const int needed =
                label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
            EXPECT_GE(label->height(), needed);
            EXPECT_GE(label->width(), label->minimumSizeHint().width());
            EXPECT_TRUE(box.rect().contains(label->geometry()));
            box.close();
        });
        ShowNote(nullptr, L"Host", message, {});
    }
}

TEST_F(ModalDialogs, WhatIsPostedRunsWhileADialogIsOpen)
{
    bool ran = false;
    User<QMessageBox>([&](QMessageBox& box) {
        zetcore::threads::AsyncCallFromMainThread(
            [&] {
                ran = true;
                box.close();
            },
            0);
    });
    Ask(kYesNo, kNo);
    EXPECT_TRUE(ran);
}

TEST_F(ModalDialogs, WhatIsPostedRunsAlsoInAHostWithAnEventLoopOfItsOwn)
{
    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    bool ran = false;
    User<QMessageBox>([&](QMessageBox& box) {
        zetcore::threads::AsyncCallFromMainThread(
            [&] {
                ran = true;
                box.close();
            },
            0);
    });
    Ask(kYesNo, kNo);
    EXPECT_TRUE(ran);
    zetcore::threads::RegisterMainThread(nullptr);
}

TEST_F(ModalDialogs, BelongToTheWindowThatTheyWereOpenedFor)
{
    QWidget host;
    host.show();
    User<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &host);
        EXPECT_EQ(box.windowModality(), Qt::WindowModal);
        box.close();
    });
    ShowNote(nullptr, L"Host", L"Note", ui::WindowVariant(reinterpret_cast<HWND>(host.winId())));
}

TEST_F(ModalDialogs, OpenAlsoForAWindowThatIsNotOurs)
{
    User<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
        box.close();
    });
    ShowNote(nullptr, L"Host", L"Note", ui::WindowVariant(reinterpret_cast<HWND>(0x7654321)));
}

TEST_F(ModalDialogs, SurviveTheEndOfTheirParent)
{
    auto host = std::make_unique<QWidget>();
    host->show();
    const ui::WindowVariant parent(reinterpret_cast<HWND>(host->winId()));
    User<QMessageBox>([&](QMessageBox&) { host.reset(); });
    EXPECT_EQ(Messagebox(nullptr, L"Host", L"Continue?", parent, kYesNo, kYes, kIconCaution), kNo);
}

TEST_F(ModalDialogs, TheFolderChooserGivesTheChosenFolder)
{
    const std::filesystem::path chosen = folder.Path() / "Pl\xC3\xBCgins & more";
    std::filesystem::create_directories(chosen);
    const std::wstring expected = zettesting::ToWide(chosen);
    OS_FolderChooserDialog chooser{ui::WindowVariant()};
    chooser.SetWindowTitle(L"Choose a Plug-In Folder:");
    User<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose a Plug-In Folder:"));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        auto* const path = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(path, nullptr);
        path->setText(pixmill::ToQString(expected));
        auto* const buttons = dialog.findChild<QDialogButtonBox*>();
        ASSERT_NE(buttons, nullptr);
        QTest::mouseClick(buttons->button(QDialogButtonBox::Open), Qt::LeftButton);
    });
    EXPECT_TRUE(chooser.RunModal());
    EXPECT_EQ(chooser.GetPath(), expected);
}

TEST_F(ModalDialogs, TheFolderChooserSpeaksTheLanguageOfTheTable)
{
    using zetcore::config::Localizer;
    const std::shared_ptr<void> defaultTexts(nullptr, [](void*) { Localizer::Get().Reset(); });
    Localizer::Get().LoadTableFromText("\"$$$/zetui/FolderChooser/ChooseFolder\"=\"W\xC3\xA4hlen\"\n"
                                       "\"$$$/zetui/FolderChooser/LookIn\"=\"Suchen in:\"\n"
                                       "\"$$$/zetui/FolderChooser/Folder\"=\"Ordner:\"\n"
                                       "\"$$$/zetui/Dialog/Cancel\"=\"Abbrechen\"\n",
                                       "test");
    OS_FolderChooserDialog chooser{ui::WindowVariant()};
    User<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.labelText(QFileDialog::LookIn), QStringLiteral("Suchen in:"));
        EXPECT_EQ(dialog.labelText(QFileDialog::FileName), QStringLiteral("Ordner:"));
        auto* const buttons = dialog.findChild<QDialogButtonBox*>();
        ASSERT_NE(buttons, nullptr);
        EXPECT_EQ(buttons->button(QDialogButtonBox::Open)->text(), QString::fromUtf8("W\xC3\xA4hlen"))
            << "not a letter more: some choosers show an ampersand as it stands";
        EXPECT_EQ(buttons->button(QDialogButtonBox::Cancel)->text(), QStringLiteral("Abbrechen"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(chooser.RunModal());
}

TEST_F(ModalDialogs, TheFolderChooserHasRoomForItsTextsAndAsksForNoTypeOfFile)
{
    OS_FolderChooserDialog chooser{ui::WindowVariant()};
    User<QFileDialog>([](QFileDialog& dialog) {
        for (const char* const name : {"fileTypeLabel", "fileTypeCombo"})
            EXPECT_FALSE(dialog.findChild<QWidget*>(QString::fromLatin1(name))->isVisible()) << name;
        const auto& files = *dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        const QHeaderView& titles = *files.header();
        EXPECT_GE(titles.length(), titles.viewport()->width()) << "the last one takes the rest";
        EXPECT_TRUE(titles.defaultAlignment().testFlag(Qt::AlignVCenter));
        const auto& places = *dialog.findChild<QListView*>(QStringLiteral("sidebar"));
        for (int row = 0; row < places.model()->rowCount(); ++row) {
            const QModelIndex place = places.model()->index(row, 0);
            EXPECT_LE(places.sizeHintForIndex(place).width(), places.viewport()->width())
                << place.data().toString().toStdString();
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(chooser.RunModal());
}

TEST_F(ModalDialogs, CancellingTheFolderChooserChoosesNothing)
{
    OS_FolderChooserDialog chooser{ui::WindowVariant()};
    User<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(chooser.RunModal());
    EXPECT_EQ(chooser.GetPath(), L"");
}

} // namespace
} // namespace zetui::dialogs
