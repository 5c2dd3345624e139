#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

#include "testing/RecordingPresentation.h"

namespace zetaudiopluginhostui {

/// A host that is about to start. The test says what the run before has left in the preferences folder.
class CrashRecoveryFixture : public zettesting::HostFixture
{
  protected:
    using PluginLocator = zetaudiofilterhost::PluginLocator;
    using PluginModuleInfoManager = zetaudiofilterhost::PluginModuleInfoManager;
    using BannedPluginManager = zetaudiopluginhost::BannedPluginManager;

    CrashRecoveryFixture()
    {
        ForgetAll();
        Initialize();
    }
    ~CrashRecoveryFixture() override
    {
        Terminate();
        ForgetAll();
    }

    /// Begins as a new process does, makes the start-up check, and returns the alerts.
    std::vector<std::string> Start(HWND parent = nullptr)
    {
        ForgetAll();
        shown.calls.clear();
        shown.parents.clear();
        AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr, parent);
        return shown.calls;
    }

    void WriteMarker(const std::string& text) const { zettesting::WriteAll(marker, text); }
    void WriteMarker(const PluginLocator& locator) const
    {
        WriteMarker(zetcore::string::UTF16to8(locator.ToString()));
    }
    /// The user reads this when the plug-in is banned.
    static std::string ScanErrorAlert(const std::string& shownName)
    {
        return "caution " + zetcore::string::UTF16to8(zetcore::utility::GetClientName()) +
               ": An error occurred when scanning the plug-in '" + shownName +
               "' that caused Sondrel to shut down. This plug-in has been disabled and will be omitted from "
               "future scans until it is manually enabled in Sondrel's Audio Plug-In Manager dialog.";
    }
    static std::string AccessAlert()
    {
        const std::string client = zetcore::string::UTF16to8(zetcore::utility::GetClientName());
        return "caution " + client + ": Unable to load third-party audio plug-ins. " + client +
               " is unable to access your Preferences folder. Your user account may not have access rights, "
               "or the folder may have been set to Read Only. Please check your permissions and try again.";
    }
    static void ForgetAll()
    {
        ResetRegistry(*PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*BannedPluginManager::GetInstance());
        BannedPluginManager::GetInstance()->LoadStaticConfiguration(zetcore::filesupport::File());
    }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    RecordingPresentation shown;
    const std::filesystem::path marker = prefs / "ScannedPluginPath.txt";
    const std::filesystem::path unsupportedList =
        prefs / BannedPluginManager::GetPermanentBannedSettingsFileName();
    const std::filesystem::path bannedList = prefs / BannedPluginManager::GetSettingsFileName();
    const std::filesystem::path configuration = prefs / PluginModuleInfoManager::GetSettingsFileName();
    const PluginLocator plugin{zetaudiofilterhost::TechnologyType::VST, L"/plugins/Bad one.so"};
};

} // namespace zetaudiopluginhostui
