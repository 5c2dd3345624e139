#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/threads/MainThread.h>
#include <zettesting/HostFixture.h>
#include <zetui/application/Application.h>

#include "testing/RecordingPresentation.h"

namespace zetaudiopluginhostui {

/// A host that opens the manager. The test posts what the user does there before, and it is done with real
/// events.
class ManagerRunFixture : public zettesting::HostFixture
{
  protected:
    using PluginLocator = zetaudiofilterhost::PluginLocator;
    using PluginModuleInfo = zetaudiofilterhost::PluginModuleInfo;
    using PluginModuleInfoManager = zetaudiofilterhost::PluginModuleInfoManager;
    using TechnologyType = zetaudiofilterhost::TechnologyType;
    using Bounds = zetcore::geom::RectT<int>;

    ManagerRunFixture() : platform("QT_QPA_PLATFORM", "offscreen")
    {
        ResetRegistry(registry);
        ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
        EXPECT_TRUE(zetui::ui::InitializeWindows());
        shown.emplace();
        Initialize();
    }
    ~ManagerRunFixture() override
    {
        Terminate();
        shown.reset();
        zetui::ui::TerminateWindows();
        ResetRegistry(registry);
        ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
    }

    /// Opens the manager, lets the user act, and returns the manager's answer.
    bool Run(std::function<void(QWidget&)> user)
    {
        UserActs(std::move(user));
        return AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    }
    static void PressOk(QWidget& window) { QTest::keyClick(&window, Qt::Key_Return); }
    static void PressCancel(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }
    static void Click(QWidget& window, const std::string& text)
    {
        for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
            if (button->text().remove('&').toStdString() == text ||
                button->accessibleName().toStdString() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        ADD_FAILURE() << "there is no button " << text;
    }
    static std::function<void(QWidget&)> DisableAllAnd(void (*end)(QWidget&))
    {
        return [end](QWidget& window) {
            Click(window, "Disable All");
            end(window);
        };
    }

    /// Puts two plug-ins into the registry, in memory and in the file.
    void SaveTwoPlugins()
    {
        for (const wchar_t* path : {L"/plugins/one.so", L"/plugins/two.so"})
            registry.AddModule(std::make_shared<PluginModuleInfo>(PluginLocator{TechnologyType::VST, path}));
        Vst().SetPluginDirectories({L"/plugins"});
        registry.SaveConfiguration(File(), true);
    }
    zetcore::filesupport::File File() const
    {
        return zetcore::filesupport::File(zettesting::ToWide(configuration));
    }
    zetaudiofilterhost::PluginTechnology& Vst() const
    {
        return *registry.GetPluginTechnology(TechnologyType::VST);
    }
    std::vector<std::wstring> Folders() const { return {Vst().DirectoryBegin(), Vst().DirectoryEnd()}; }
    std::vector<bool> EnabledFlags() const
    {
        std::vector<bool> flags;
        for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
            flags.push_back((*info)->IsEnabled());
        return flags;
    }
    void MakePrefsUnwritable() const
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    const std::filesystem::path configuration = prefs / PluginModuleInfoManager::GetSettingsFileName();
    AudioPluginManagerSettings settings;
    std::optional<RecordingPresentation> shown;

  private:
    /// Posts itself again until the window is there.
    static void UserActs(std::function<void(QWidget&)> user)
    {
        zetcore::threads::AsyncCallFromMainThread(
            [user = std::move(user)]() mutable {
                QWidget* const window = QApplication::activeModalWidget();
                if (window && window->isVisible()) {
                    // The window takes its final place after it has been shown.
                    QCoreApplication::processEvents();
                    user(*window);
                } else {
                    UserActs(std::move(user));
                }
            },
            0);
    }

    zettesting::ScopedEnvironment platform;
};

} // namespace zetaudiopluginhostui
