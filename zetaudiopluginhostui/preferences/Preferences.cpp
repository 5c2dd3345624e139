#include "preferences/Preferences.h"

#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
using filesupport::File;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

constexpr char accessMessageKey[] =
    "$$$/AudioPluginManager/PreferenceAccessError=Unable to load third-party audio plug-ins. @0 is unable to "
    "access your Preferences folder. Your user account may not have access rights, or the folder may have "
    "been set to Read Only. Please check your permissions and try again.";

File InPreferencesFolder(const std::wstring& name)
{
    return {filesupport::Dir::PrefDir(), name};
}

void ShowCaution(const zetui::pixmill::SupplierInterface* supplier, HWND parent)
{
    const std::wstring clientName = zetcore::utility::GetClientName();
    zetui::dialogs::messagebox::ShowCaution(
        supplier, clientName, zetcore::config::Localizer::Get().LocalizeWide(accessMessageKey, {clientName}),
        zetui::ui::WindowVariant(parent));
}

} // namespace

Preferences::Preferences(const zetui::pixmill::SupplierInterface* supplier, HWND parent)
    : Preferences([supplier, parent] { ShowCaution(supplier, parent); })
{}

Preferences::Preferences(std::function<void()> tellUser) : tell(std::move(tellUser)) {}

File Preferences::RegistryFile()
{
    return InPreferencesFolder(PluginModuleInfoManager::GetSettingsFileName());
}

File Preferences::BannedListFile()
{
    return InPreferencesFolder(BannedPluginManager::GetSettingsFileName());
}

File Preferences::UnsupportedListFile()
{
    return InPreferencesFolder(BannedPluginManager::GetPermanentBannedSettingsFileName());
}

bool Preferences::LoadRegistry()
{
    zetcore::threads::AssertMainThread();
    return PluginModuleInfoManager::GetInstance()->LoadConfiguration(RegistryFile());
}

bool Preferences::LoadBannedList()
{
    zetcore::threads::AssertMainThread();
    return BannedPluginManager::GetInstance()->LoadConfiguration(BannedListFile());
}

bool Preferences::LoadUnsupportedList()
{
    zetcore::threads::AssertMainThread();
    return BannedPluginManager::GetInstance()->LoadStaticConfiguration(UnsupportedListFile());
}

bool Preferences::SaveRegistry()
{
    return Try([] { PluginModuleInfoManager::GetInstance()->SaveConfiguration(RegistryFile(), true); });
}

bool Preferences::SaveBannedList()
{
    return Try([] { BannedPluginManager::GetInstance()->SaveConfiguration(BannedListFile()); });
}

bool Preferences::WriteUnsupportedList(const std::string& bytes)
{
    return Try([&bytes] {
        filesupport::FileUtils::SimpleWriteStringToFile(UnsupportedListFile().FullPath(), bytes);
    });
}

bool Preferences::Try(const std::function<void()>& work)
{
    zetcore::threads::AssertMainThread();
    try {
        work();
        return true;
    } catch (const filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, "Preferences", error.what());
        NoteFailure();
        return false;
    }
}

void Preferences::TellUser()
{
    zetcore::threads::AssertMainThread();
    if (!std::exchange(hasFailed, false))
        return;
    hasTold = true;
    tell();
}

void Preferences::TellUserOnce()
{
    if (!hasTold)
        TellUser();
}

} // namespace zetaudiopluginhostui
