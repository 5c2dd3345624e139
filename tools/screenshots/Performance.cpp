#include "screenshots/Performance.h"

#include <functional>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <zetcore/string/Utf.h>
#include <zetui/skins/Skins.h>

#include "commands/CommandLine.h"
#include "screenshots/Actor.h"
#include "screenshots/Grab.h"

namespace screenshots {

namespace {

namespace fs = std::filesystem;

QWidget* Modal()
{
    QWidget* const window = QApplication::activeModalWidget();
    return window && window->isVisible() ? window : nullptr;
}

/// A control by its name in the layout archive; null while there is none.
QWidget* Control(const char* id)
{
    QWidget* const window = Modal();
    return window ? window->findChild<QWidget*>(QString::fromLatin1(id)) : nullptr;
}

bool IsManager()
{
    return Control("OKButton") != nullptr;
}

bool IsProgress()
{
    return Modal() && Modal()->findChild<QProgressBar*>();
}

bool IsAlert()
{
    return Modal() && !IsManager() && !IsProgress();
}

bool Click(const char* id)
{
    QWidget* const control = Control(id);
    if (!control || !control->isEnabled())
        return false;
    QTest::mouseClick(control, Qt::LeftButton, {}, control->rect().center());
    return true;
}

bool PressEscape()
{
    QTest::keyClick(Modal(), Qt::Key_Escape);
    return true;
}

/// Says no to what is asked, until the manager is there.
bool LeaveAlerts()
{
    if (IsAlert())
        PressEscape();
    return IsManager();
}

bool EndsWithNote(Action action)
{
    return action == Action::NoteOfOne || action == Action::NoteOfMany ||
           action == Action::NoteWithoutScanner;
}

class Performance
{
  public:
    Performance(const Scene& sceneToPlay, const Stage& sceneStage, fs::path picturesFolder)
        : scene(sceneToPlay), stage(sceneStage), pictures(std::move(picturesFolder))
    {}

    void Prepare(Actor& actor) const;

  private:
    std::function<bool()> Picture(const std::string& name) const;
    void PrepareDrive(Actor& actor) const;
    void PrepareNote(Actor& actor) const;
    static void Add(Actor& actor, const std::string& name, bool (*condition)(), std::function<bool()> act);

    const Scene& scene;
    const Stage& stage;
    fs::path pictures;
};

std::function<bool()> Performance::Picture(const std::string& name) const
{
    return [file = pictures / (name + ".png")] {
        QWidget* const window = Modal();
        if (!window)
            return false;
        // What is posted only: a timer would begin the next step, which may close the window.
        QApplication::sendPostedEvents();
        Grab(*window, file);
        std::cout << file.string() << std::endl;
        return true;
    };
}

/// Waits for the condition, then acts until that succeeds.
void Performance::Add(Actor& actor, const std::string& name, bool (*condition)(), std::function<bool()> act)
{
    actor.Then(name + ": window", condition);
    // Once more around the loop: a window takes its final place and colours after it has been shown.
    actor.Then(name, std::move(act));
}

void Performance::PrepareDrive(Actor& actor) const
{
    Add(actor, "the scan command", IsManager, [] { return Click("UpdateButton"); });
    actor.Then("the scan's progress",
               [] { return IsProgress() && Modal()->findChild<QProgressBar*>()->value() > 0; });
    actor.Then("the picture of the scan", Picture("drive-1-scanning"));
    // Some of the samples do not work.
    Add(actor, "the note after the scan", IsAlert, Picture("drive-2-note"));
    actor.Then("the manager after the note", LeaveAlerts);
    Add(actor, "the list after the scan", IsManager, [] {
        const auto* const list = qobject_cast<QAbstractItemView*>(Control("PluginList"));
        return list && list->model()->rowCount() > 0;
    });
    actor.Then("the picture of the list", Picture("drive-3-scanned"));
    actor.Then("the find box", [] {
        QWidget* const box = Control("FindTextEdit");
        QTest::mouseClick(box, Qt::LeftButton, {}, box->rect().center());
        QTest::keyClicks(box, QStringLiteral("vst2_"));
        return true;
    });
    actor.Then("the checkbox of the first plug-in found", [] {
        for (QCheckBox* const box : Control("PluginList")->findChildren<QCheckBox*>()) {
            if (!box->isVisible() || !box->isEnabled() || !box->isChecked())
                continue;
            // The widget fills its cell; only the box itself takes a click.
            QStyleOptionButton option;
            option.initFrom(box);
            const QRect part = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
            QTest::mouseClick(box, Qt::LeftButton, {}, part.center());
            return true;
        }
        return false;
    });
    actor.Then("the picture of the plug-ins found", Picture("drive-4-switched-off"));
    actor.Then("OK", [] { return Click("OKButton"); });
}

void Performance::PrepareNote(Actor& actor) const
{
    if (scene.action == Action::NoteWithoutScanner)
        actor.Then("all plug-ins, and no scanner", [this] {
            stage.TakeScannerAway();
            return Click("RescanExisting");
        });
    actor.Then("the scan command", [] { return Click("UpdateButton"); });
    Add(actor, "the note", IsAlert, Picture(scene.name));
    actor.Then("the manager after the note", LeaveAlerts);
    actor.Then("Escape from the manager", PressEscape);
}

void Performance::Prepare(Actor& actor) const
{
    if (scene.action == Action::StartAfterCrash || scene.action == Action::StartWithoutPreferences) {
        Add(actor, "the alert", IsAlert, Picture(scene.name));
        // Any further ones of the start, until the manager is there.
        actor.Then("the manager after the alerts", LeaveAlerts);
        actor.Then("Escape", PressEscape);
        return;
    }
    if (scene.action == Action::Drive) {
        PrepareDrive(actor);
        return;
    }
    Add(actor, "the manager", IsManager, [this] {
        if (scene.size)
            Modal()->resize(*scene.size);
        return true;
    });
    if (EndsWithNote(scene.action)) {
        PrepareNote(actor);
        return;
    }
    if (scene.action == Action::ScanAndCancel) {
        actor.Then("all plug-ins", [] { return Click("RescanExisting"); });
        actor.Then("the scan command", [] { return Click("UpdateButton"); });
        actor.Then("the scan's progress", [] {
            const auto* const bar = IsProgress() ? Modal()->findChild<QProgressBar*>() : nullptr;
            return bar && bar->maximum() > 0 && bar->value() * 3 >= bar->maximum();
        });
    } else if (scene.action == Action::AskForDefaultFolders) {
        actor.Then("the command for default folders", [] { return Click("DefaultDirectoriesButton"); });
        actor.Then("the question", IsAlert);
    } else if (scene.action == Action::FindNothing) {
        actor.Then("the find text", [] {
            QTest::keyClicks(Control("FindTextEdit"), QStringLiteral("no plug-in has this"));
            return true;
        });
    } else if (scene.action == Action::MoveToCell) {
        actor.Then("the cell", [] {
            QWidget* const list = Control("PluginList");
            list->setFocus(Qt::TabFocusReason);
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right})
                QTest::keyClick(QApplication::focusWidget(), key);
            return true;
        });
    } else if (scene.action == Action::PickButton) {
        actor.Then("the button in a row", [] {
            QWidget* const button = Control("PluginList")->findChild<QPushButton*>();
            if (button)
                button->setFocus(Qt::MouseFocusReason);
            return button != nullptr;
        });
    }
    actor.Then("the picture", Picture(scene.name));
    if (scene.action == Action::ScanAndCancel || scene.action == Action::AskForDefaultFolders) {
        actor.Then("Escape", PressEscape);
        actor.Then("the manager again", LeaveAlerts);
    }
    actor.Then("Escape from the manager", PressEscape);
}

bool HasLetters(const std::string& language)
{
    if (language == "ja")
        return !QFontDatabase::families(QFontDatabase::Japanese).isEmpty();
    return language != "zh-Hans" || !QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty();
}

std::string Utf8(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace

void Play(const Scene& scene, const Stage& stage, const fs::path& pictures)
{
    if (!HasLetters(scene.language)) {
        std::cerr << "screenshots: no picture " << scene.name << ", because no font has its letters\n";
        return;
    }
    const fs::path preferences = scene.action == Action::StartWithoutPreferences
                                     ? stage.UnusablePreferences()
                                     : stage.CopyOfPreferences(scene.content == Content::Plugins);
    if (scene.action == Action::StartAfterCrash)
        stage.LeaveMarkerOfCrash(preferences);
    if (scene.action == Action::NoteOfMany)
        stage.AddMuchNews(preferences);
    else if (EndsWithNote(scene.action))
        stage.AddNews(preferences);
    zetui::skins::SetScheme(scene.dark ? zetui::skins::Scheme::Dark : zetui::skins::Scheme::Light);

    Actor actor;
    const Performance performance(scene, stage, pictures);
    performance.Prepare(actor);
    // What could not be saved is said once more when the manager has closed.
    actor.Afterwards([] {
        if (Modal())
            PressEscape();
    });
    actor.Begin();
    const std::vector<std::string> arguments = {"--prefs", Utf8(preferences), "--skin", scene.skin,
                                                "--lang",  scene.language,    "manage"};
    const int status = zetaudiopluginmanager::RunCommandLine(arguments, std::cerr);
    if (!actor.IsDone())
        throw std::runtime_error("the manager closed too early, with status " + std::to_string(status));
    if (scene.action == Action::StartWithoutPreferences)
        return;
    if (status != 0)
        throw std::runtime_error("the manager ended with status " + std::to_string(status));
    if (scene.action != Action::Drive)
        return;
    std::ostringstream disabled;
    zetaudiopluginmanager::RunCommandLine({"--prefs", Utf8(preferences), "list", "--disabled"}, disabled);
    if (disabled.str().find("vst2_") == std::string::npos)
        throw std::runtime_error("no plug-in was switched off");
    std::cerr << "switched off:\n" << disabled.str();
}

} // namespace screenshots
