#include "module/CrashRecovery.h"

#include <cstdint>
#include <memory>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/content/IPlatformByteStream.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/dialogs/messagebox.h>

#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
using filesupport::File;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

constexpr std::string_view nameToken = "@PLUGINNAME";
constexpr char messageKey[] =
    "$$$/AudioPluginManager/PluginScanError=An error occurred when scanning the plug-in '@PLUGINNAME' that "
    "caused Sondrel to shut down. This plug-in has been disabled and will be omitted from future scans until "
    "it is manually enabled in Sondrel's Audio Plug-In Manager dialog.";
/// No locator is as long as this. The first part of a longer text might name another plug-in.
constexpr std::uint64_t longestMarker = std::uint64_t{1} << 20;

std::string UnsupportedListResource()
{
    const auto* const resources = GetModuleResources();
    if (!resources)
        return {};
    const auto bytes = resources->LoadResource("UnsupportedAudioPlugIns", "xml");
    return {bytes.begin(), bytes.end()};
}

/// The user may want to repair the file, so it is renamed and not overwritten. If it cannot be renamed, the
/// write that follows fails too and tells the user.
void KeepAsideUnlessEmpty(const File& file)
{
    try {
        if (file.Exists() && file.Size() > 0)
            filesupport::FileUtils::KeepAside(file);
    } catch (const filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, "CrashRecovery", error.what());
    }
}

/// Returns no text for an empty marker, and for one that is too long to name a plug-in.
std::string ReadMarker(const File& marker)
{
    const auto stream = filesupport::IPlatformByteStream::OpenForReading(marker);
    const std::uint64_t length = stream->Length();
    if (length > longestMarker) {
        zetcore::debug::TraceLine(1, "CrashRecovery", marker.FullPathUTF8() + " is too long: it is ignored");
        return {};
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    std::size_t size = 0;
    while (size < text.size()) {
        const std::size_t count = stream->ReadBlock(text.data() + size, text.size() - size);
        if (count == 0)
            break;
        size += count;
    }
    text.resize(size);
    return text;
}

} // namespace

std::string InsertPluginName(std::string_view message, std::string_view name)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = message.find(nameToken); at != std::string_view::npos;
         at = message.find(nameToken, from)) {
        result.append(message.substr(from, at - from)).append(name);
        from = at + nameToken.size();
    }
    return result.append(message.substr(from));
}

CrashRecovery::CrashRecovery(const zetui::pixmill::SupplierInterface* drawingSupplier, HWND parentWindow)
    : supplier(drawingSupplier), parent(parentWindow), preferences(supplier, parent)
{}

void CrashRecovery::Run()
{
    LoadUnsupportedList();
    Preferences::LoadBannedList();
    ActOnMarker();
    Preferences::LoadRegistry();
}

void CrashRecovery::LoadUnsupportedList()
{
    if (Preferences::LoadUnsupportedList())
        return;
    KeepAsideUnlessEmpty(Preferences::UnsupportedListFile());
    preferences.WriteUnsupportedList(UnsupportedListResource());
    preferences.TellUserOnce();
    Preferences::LoadUnsupportedList();
}

void CrashRecovery::ActOnMarker()
{
    const File marker = AudioPluginScan::GetLastScannedPluginPath();
    if (!marker.Exists())
        return;
    const PluginLocator plugin = PluginLocator::FromString(zetcore::string::UTF8to16(ReadMarker(marker)));
    if (!plugin.GetPath().empty())
        BanAndNotify(plugin);
    preferences.Try([&marker] { marker.Delete(); });
    preferences.TellUserOnce();
}

void CrashRecovery::BanAndNotify(const PluginLocator& plugin)
{
    preferences.Try([&plugin] {
        // An update may mend it, so only the build that is there now is banned.
        using zetaudiopluginhost::PluginFailure;
        BannedPluginManager::GetInstance()->AddBannedPlugin(
            plugin, zetaudiopluginhost::BanFor({{.kind = PluginFailure::Kind::EndedTheHost}},
                                               zetaudiofilterhost::GetModuleFileStamp(plugin)));
    });
    preferences.SaveBannedList();
    preferences.TellUserOnce();
    NotifyUser(plugin);
}

void CrashRecovery::NotifyUser(const PluginLocator& plugin)
{
    const std::wstring name = PluginModuleInfoManager::GetInstance()->GetDisplayStringForLocator(plugin);
    const std::string message = InsertPluginName(zetcore::config::Localizer::Get().Localize(messageKey),
                                                 zetcore::string::UTF16to8(name));
    zetui::dialogs::messagebox::ShowCaution(supplier, zetcore::utility::GetClientName(),
                                            zetcore::string::UTF8to16(message),
                                            zetui::ui::WindowVariant(parent));
}

} // namespace zetaudiopluginhostui
