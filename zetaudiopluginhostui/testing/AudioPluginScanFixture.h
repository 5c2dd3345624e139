#pragma once

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>

#include "preferences/Preferences.h"
#include "testing/RecordingPresentation.h"
#include "testing/ScanFixture.h"

namespace zetaudiopluginhostui {

/// Reaches parts that only the scan itself may touch.
class AudioPluginScanAccess
{
  public:
    using ProgressDialogPtr = zetui::utility::IntrusivePtr<zetui::dialogs::UI_ProgressDialog>;

    static const ExternalAudioPluginScan* Session(const AudioPluginScan& scan)
    {
        return scan.externalScan.get();
    }
    static bool Close(AudioPluginScan& scan, zetui::dialogs::UI_DialogViewContainer::Response response)
    {
        return scan.OnProgressPostClose(response);
    }
    static bool IsCancelled(const AudioPluginScan& scan) { return scan.cancelled; }
    static bool Report(AudioPluginScan& scan, const zetaudiofilterhost::PluginLocator& plugin,
                       const ProgressDialogPtr& dialog)
    {
        Preferences preferences(nullptr, nullptr);
        return scan.ScanProgressCallback(plugin, std::string(), 0, 1, dialog, nullptr, preferences);
    }
    static void ReportExternal(AudioPluginScan& scan, int progress, int total,
                               const ProgressDialogPtr& dialog)
    {
        scan.ExternalScanProgressCallback(zetaudiofilterhost::PluginLocator(), std::string(), progress, total,
                                          dialog);
    }
};

/// Scans, and writes down what is shown and how often the changed signal was raised.
class AudioPluginScanFixture : public ScanFixture
{
  protected:
    AudioPluginScanFixture()
    {
        connection = registry.GetPluginInfosChangedSignal().Connect([this] {
            ++changes;
            atSignal = AudioPluginScan::GetLastEnd();
            if (onSignal)
                onSignal();
        });
    }

    /// Makes a file in `plugins` that is named like a plug-in but is none, so that a scan loads nothing of
    /// it.
    PluginLocator MakeFile(const std::string& name)
    {
        std::filesystem::create_directories(folder / "plugins");
        zettesting::WriteAll(folder / "plugins" / name, "text");
        return Plugin("plugins/" + name);
    }
    /// Makes such a file and a record that says that it works.
    PluginLocator MakeKnownFile(const std::string& name)
    {
        const auto plugin = MakeFile(name);
        registry.AddModule(std::make_shared<zetaudiofilterhost::PluginModuleInfo>(plugin));
        return plugin;
    }
    void Scan(const std::vector<PluginLocator>& plugins, bool useSeparateProcess = false)
    {
        scan->ScanForPlugins(nullptr, plugins, false, true, useSeparateProcess);
    }
    bool IsKnown(const PluginLocator& plugin) const { return registry.Find(plugin) != nullptr; }
    std::filesystem::path Marker() const { return prefs / "ScannedPluginPath.txt"; }
    std::string MarkerText() const
    {
        return std::filesystem::is_regular_file(Marker()) ? zettesting::ReadAll(Marker()) : "no marker";
    }
    static std::string MarkerOf(const PluginLocator& plugin)
    {
        return zetcore::string::UTF16to8(plugin.ToString());
    }
    std::filesystem::path Saved() const
    {
        return prefs / zetaudiofilterhost::PluginModuleInfoManager::GetSettingsFileName();
    }
    /// True when a host that is started now would find the plug-in in its registry.
    bool IsSaved(const PluginLocator& plugin) const
    {
        zetaudiofilterhost::PluginModuleInfoManager loaded;
        loaded.LoadConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())));
        return loaded.Find(plugin) != nullptr;
    }
    /// From now on no file can be written in the preferences folder.
    void MakePrefsUnwritable() const
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    }
    void MakePrefsWritable() const { zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(prefs)); }
    static std::string Path(const PluginLocator& plugin)
    {
        return zetcore::string::UTF16to8(plugin.GetPath());
    }
    static std::string Caution()
    {
        const std::string client = zetcore::string::UTF16to8(zetcore::utility::GetClientName());
        return "caution " + client + ": Unable to load third-party audio plug-ins. " + client +
               " is unable to access your Preferences folder. Your user account may not have access rights, "
               "or the folder may have been set to Read Only. Please check your permissions and try again.";
    }

    zetaudiofilterhost::PluginModuleInfoManager& registry =
        *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    RecordingPresentation shown;
    int changes = 0;
    /// How the scan had ended when the signal was raised last.
    ScanEnd atSignal;
    std::function<void()> onSignal;
    zetcore::events::ScopedConnection connection;
    const PluginLocator none{};
    std::shared_ptr<AudioPluginScan> scan = std::make_shared<AudioPluginScan>(nullptr);
};

} // namespace zetaudiopluginhostui
