#include "screenshots/PlayScene.h"

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
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QWindow>
#include <zetcore/string/Utf.h>
#include <zetui/skins/Skins.h>

#include "commands/CommandLine.h"
#include "screenshots/PathText.h"
#include "screenshots/SavePicture.h"
#include "screenshots/SceneActions.h"
#include "screenshots/SceneWindows.h"
#include "screenshots/StepRunner.h"

namespace screenshots {

namespace {

namespace fs = std::filesystem;

/// Answers all questions with no, until the manager is there.
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

/// The picture shows a window in front of the manager.
bool IsProgressOrAlert(Action action)
{
    return action == Action::ScanAndCancel || action == Action::ScanWithHang ||
           action == Action::AskForDefaultFolders || action == Action::ShowLog;
}

class SceneSteps
{
  public:
    SceneSteps(const Scene& playedScene, const SceneFolders& sceneFolders, fs::path picturesFolder)
        : scene(playedScene), folders(sceneFolders), pictures(std::move(picturesFolder))
    {}

    void AddTo(StepRunner& runner) const;

  private:
    std::function<bool()> Picture(const std::string& name) const;
    void AddDrive(StepRunner& runner) const;
    void AddNote(StepRunner& runner) const;
    static void AddWhen(StepRunner& runner, const std::string& name, bool (*condition)(),
                        std::function<bool()> act);

    const Scene& scene;
    const SceneFolders& folders;
    fs::path pictures;
};

std::function<bool()> SceneSteps::Picture(const std::string& name) const
{
    return [file = pictures / (name + ".png")] {
        QWidget* const window = Modal();
        // A window system shows a window later than Qt does, and a picture of the screen lacks it until then.
        const QWindow* const shown = window ? window->windowHandle() : nullptr;
        if (!shown || !shown->isExposed())
            return false;
        // Only posted events are handled. A timer would begin the next step, which may close the window.
        QApplication::sendPostedEvents();
        SavePicture(*window, file);
        std::cout << file.string() << std::endl;
        return true;
    };
}

/// Waits for the condition, then acts until that succeeds.
void SceneSteps::AddWhen(StepRunner& runner, const std::string& name, bool (*condition)(),
                         std::function<bool()> act)
{
    runner.Then(name + ": window", condition);
    // The event loop runs once more before this step: a window takes its final place and colours after it has
    // been shown.
    runner.Then(name, std::move(act));
}

void SceneSteps::AddDrive(StepRunner& runner) const
{
    AddWhen(runner, "the scan command", IsManager, [] { return Click("UpdateButton"); });
    runner.Then("the scan's progress",
                [] { return IsProgress() && Modal()->findChild<QProgressBar*>()->value() > 0; });
    runner.Then("the picture of the scan", Picture("drive-1-scanning"));
    // Some of the samples do not work.
    AddWhen(runner, "the note after the scan", IsAlert, Picture("drive-2-note"));
    runner.Then("the manager after the note", LeaveAlerts);
    AddWhen(runner, "the list after the scan", IsManager, [] {
        const auto* const list = qobject_cast<QAbstractItemView*>(Control("PluginList"));
        return list && list->model()->rowCount() > 0;
    });
    runner.Then("the picture of the list", Picture("drive-3-scanned"));
    runner.Then("the find box", [] {
        QWidget* const box = Control("FindTextEdit");
        QTest::mouseClick(box, Qt::LeftButton, {}, box->rect().center());
        QTest::keyClicks(box, QStringLiteral("vst2_"));
        return true;
    });
    runner.Then("the checkbox of the first plug-in found", [] {
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
    runner.Then("the picture of the plug-ins found", Picture("drive-4-switched-off"));
    runner.Then("OK", [] { return Click("OKButton"); });
}

void SceneSteps::AddNote(StepRunner& runner) const
{
    if (scene.action == Action::NoteWithoutScanner)
        runner.Then("all plug-ins, and no scanner", [this] {
            folders.TakeScannerAway();
            return Click("RescanExisting");
        });
    runner.Then("the scan command", [] { return Click("UpdateButton"); });
    AddWhen(runner, "the note", IsAlert, Picture(scene.name));
    runner.Then("the manager after the note", LeaveAlerts);
    runner.Then("Escape from the manager", PressEscape);
}

void SceneSteps::AddTo(StepRunner& runner) const
{
    if (scene.action == Action::StartAfterCrash || scene.action == Action::StartWithoutPreferences) {
        AddWhen(runner, "the alert", IsAlert, Picture(scene.name));
        // Closes further alerts of the start, until the manager is there.
        runner.Then("the manager after the alerts", LeaveAlerts);
        runner.Then("Escape", PressEscape);
        return;
    }
    if (scene.action == Action::Drive) {
        AddDrive(runner);
        return;
    }
    AddWhen(runner, "the manager", IsManager, [this] {
        if (scene.size)
            Modal()->resize(*scene.size);
        return true;
    });
    if (EndsWithNote(scene.action)) {
        AddNote(runner);
        return;
    }
    AddAction(runner, scene, folders);
    runner.Then("the picture", Picture(scene.name));
    if (scene.action == Action::OpenMenu)
        runner.Then("the menu's end", [] {
            QApplication::activePopupWidget()->close();
            return true;
        });
    if (IsProgressOrAlert(scene.action)) {
        runner.Then("Escape", PressEscape);
        runner.Then("the manager again", LeaveAlerts);
    }
    runner.Then("Escape from the manager", PressEscape);
}

bool HasLetters(const std::string& language)
{
    if (language == "ja")
        return !QFontDatabase::families(QFontDatabase::Japanese).isEmpty();
    return language != "zh-Hans" || !QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty();
}

} // namespace

void PlayScene(const Scene& scene, const SceneFolders& folders, const fs::path& pictures)
{
    if (!HasLetters(scene.language)) {
        std::cerr << "screenshots: no picture " << scene.name << ", because no font has its letters\n";
        return;
    }
    const fs::path preferences = scene.action == Action::StartWithoutPreferences
                                     ? folders.UnusablePreferences()
                                     : folders.CopyOfPreferences(scene.content == Content::Plugins);
    if (scene.action == Action::StartAfterCrash)
        folders.LeaveMarkerOfCrash(preferences);
    if (scene.action == Action::NoteOfMany)
        folders.AddManyChanges(preferences);
    else if (EndsWithNote(scene.action))
        folders.AddNewPlugins(preferences);
    if (scene.action == Action::OfflineFolder)
        folders.AddOfflineFolder(preferences);
    if (scene.action == Action::ScanWithHang)
        folders.AddHang(preferences);
    zetui::skins::SetScheme(scene.dark ? zetui::skins::Scheme::Dark : zetui::skins::Scheme::Light);

    StepRunner runner;
    const SceneSteps steps(scene, folders, pictures);
    steps.AddTo(runner);
    // When the manager has closed, it tells once more what could not be saved.
    runner.Afterwards([] {
        if (Modal())
            PressEscape();
    });
    runner.Begin();
    const std::vector<std::string> arguments = {"--prefs", Utf8(preferences), "--skin", scene.skin,
                                                "--lang",  scene.language,    "manage"};
    const int status = zetaudiopluginmanager::RunCommandLine(arguments, std::cerr);
    if (!runner.IsDone())
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
