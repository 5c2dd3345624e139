#include "screenshots/SceneActions.h"

#include <algorithm>

#include <QApplication>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "screenshots/SceneWindows.h"

namespace screenshots {

namespace {

QTableView* List()
{
    return qobject_cast<QTableView*>(Control("PluginList"));
}

/// A point in the row of the first banned plug-in in sight, beside its controls; null while no row is banned.
std::optional<QPoint> PointInBannedRow()
{
    const auto* const button = List()->findChild<QPushButton*>();
    if (!button)
        return std::nullopt;
    return QPoint(150, button->mapTo(List()->viewport(), button->rect().center()).y());
}

bool SelectBanned()
{
    const std::optional<QPoint> point = PointInBannedRow();
    if (point)
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, *point);
    return point.has_value();
}

bool OpenMenu()
{
    const std::optional<QPoint> point = PointInBannedRow();
    if (!point)
        return false;
    QWidget* const view = List()->viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, *point, view->mapToGlobal(*point));
    QApplication::sendEvent(view, &event);
    return true;
}

void AddScan(StepRunner& runner)
{
    runner.Then("all plug-ins", [] { return Click("RescanExisting"); });
    runner.Then("the scan command", [] { return Click("UpdateButton"); });
    runner.Then("the scan's progress", [] {
        const auto* const bar = IsProgress() ? Modal()->findChild<QProgressBar*>() : nullptr;
        return bar && bar->maximum() > 0 && bar->value() * 3 >= bar->maximum();
    });
}

/// The window says how long the sample has run, and when it will be stopped.
void AddHang(StepRunner& runner)
{
    runner.Then("the scan command", [] { return Click("UpdateButton"); });
    runner.Then("the plug-in that hangs", [] {
        if (!IsProgress())
            return false;
        const QList<QLabel*> texts = Modal()->findChildren<QLabel*>();
        return std::any_of(texts.begin(), texts.end(), [](const QLabel* text) {
            return text->text().contains(QStringLiteral("will be stopped after"));
        });
    });
}

void AddFolder(StepRunner& runner, const SceneFolders& folders)
{
    runner.Then("the command for one more folder", [] { return Click("AddDirectoryButton"); });
    runner.Then("the folder chooser", [&folders] {
        auto* const chooser = qobject_cast<QFileDialog*>(Modal());
        if (!chooser)
            return false;
        chooser->setDirectory(QString::fromStdU16String(folders.MoreFolder().u16string()));
        QMetaObject::invokeMethod(chooser, "accept");
        return true;
    });
    runner.Then("the manager with the folder", [] {
        if (!IsManager())
            return false;
        // No window manager gives the keyboard back.
        if (!Modal()->isActiveWindow())
            Modal()->activateWindow();
        return Modal()->isActiveWindow();
    });
}

void AddFind(StepRunner& runner, const char* text)
{
    runner.Then("the find text", [text] {
        QWidget* const box = Control("FindTextEdit");
        QTest::mouseClick(box, Qt::LeftButton, {}, box->rect().center());
        QTest::keyClicks(box, QString::fromLatin1(text));
        return true;
    });
}

bool MoveToCell()
{
    List()->setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right})
        QTest::keyClick(QApplication::focusWidget(), key);
    return true;
}

bool MoveToTitle()
{
    List()->horizontalHeader()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    return true;
}

/// The details have no name of their own.
bool MoveFocus(const std::string& control)
{
    QWidget* const widget =
        control == "Details" ? Modal()->findChild<QPlainTextEdit*>() : Control(control.c_str());
    if (widget)
        widget->setFocus(Qt::TabFocusReason);
    return widget != nullptr;
}

bool PickButton()
{
    QWidget* const button = List()->findChild<QPushButton*>();
    if (button)
        button->setFocus(Qt::MouseFocusReason);
    return button != nullptr;
}

} // namespace

void AddAction(StepRunner& runner, const Scene& scene, const SceneFolders& folders)
{
    switch (scene.action) {
    case Action::ScanAndCancel:
        return AddScan(runner);
    case Action::ScanWithHang:
        return AddHang(runner);
    case Action::AskForDefaultFolders:
        runner.Then("the command for default folders", [] { return Click("DefaultDirectoriesButton"); });
        return runner.Then("the question", IsAlert);
    case Action::FindNothing:
        return AddFind(runner, "no plug-in has this");
    case Action::FindSome:
        return AddFind(runner, "comp");
    case Action::SelectBanned:
        return runner.Then("the row of a banned plug-in", SelectBanned);
    case Action::OpenMenu:
        runner.Then("the row of a banned plug-in", SelectBanned);
        runner.Then("the row's menu", OpenMenu);
        return runner.Then("the open menu", [] { return QApplication::activePopupWidget() != nullptr; });
    case Action::ShowLog:
        runner.Then("the row of a banned plug-in", SelectBanned);
        runner.Then("the row's menu", OpenMenu);
        runner.Then("the menu's command for the log", [] {
            QWidget* const menu = QApplication::activePopupWidget();
            if (menu)
                QTest::keyClick(menu, Qt::Key_L);
            return menu != nullptr;
        });
        return runner.Then("the log", IsAlert);
    case Action::ShowLetters:
        return runner.Then("the Alt key", [] {
            QTest::keyPress(Modal(), Qt::Key_Alt);
            return true;
        });
    case Action::AddFolder:
        return AddFolder(runner, folders);
    case Action::MoveToCell:
        return runner.Then("the cell", MoveToCell);
    case Action::MoveToTitle:
        return runner.Then("the title", MoveToTitle);
    case Action::PickButton:
        return runner.Then("the button in a row", PickButton);
    case Action::OfflineFolder:
        return runner.Then("the last folder", [] {
            auto* const list = qobject_cast<QTableView*>(Control("DirectoryList"));
            list->scrollToBottom();
            return true;
        });
    case Action::MoveFocus:
        runner.Then("the row of a banned plug-in", SelectBanned);
        return runner.Then("the control " + scene.control, [&scene] { return MoveFocus(scene.control); });
    case Action::Look:
    case Action::NoteOfOne:
    case Action::NoteOfMany:
    case Action::NoteWithoutScanner:
    case Action::StartWithoutPreferences:
    case Action::StartAfterCrash:
    case Action::Drive:
        return;
    }
}

} // namespace screenshots
