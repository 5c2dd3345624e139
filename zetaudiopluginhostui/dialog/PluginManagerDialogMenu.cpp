// The menus of the plug-in list's rows.
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetscanprotocol/ScanLogFormat.h>
#include <zetui/application/Desktop.h>
#include <zetui/dialogs/messagebox.h>

#include "dialog/PluginManagerDialog.h"
#include "dialog/list/PluginListText.h"
#include "dialog/list/PluginRowMenu.h"
#include "scan/ScanLogs.h"

namespace zetaudiopluginhostui {

namespace messagebox = zetui::dialogs::messagebox;
using zetaudiofilterhost::PluginLocator;
using zetcore::config::Localizer;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

namespace {

/// A longer text would take seconds to lay out, and the end tells why a plug-in failed.
constexpr std::size_t longestShownLog = std::size_t{64} << 10;

std::wstring InKilobytes(std::string_view text)
{
    return std::to_wstring((text.size() + 1023) >> 10);
}

} // namespace

zetui::controls::UI_ContextMenu PluginManagerDialog::MakeRowMenu(const RowPtr& row)
{
    const PluginListEntry* const found = RequirePluginList().EntryOf(row.get());
    if (!found)
        return {};
    // A command is carried out when the menu has closed, and the dialog may be gone then.
    const PluginListEntry entry = *found;
    const auto whileAlive = [key = GetWeakKey()](auto command) {
        return [key, command = std::move(command)](auto... arguments) {
            const auto alive = Lock(key);
            if (auto* const dialog = static_cast<PluginManagerDialog*>(alive.get()))
                command(*dialog, arguments...);
        };
    };
    return MakePluginRowMenu(
        entry,
        {.reload = whileAlive([entry](PluginManagerDialog& dialog) { dialog.ReloadPlugin(entry.locator); }),
         .enable = whileAlive([entry](PluginManagerDialog& dialog, bool enable) {
             dialog.RequirePluginList().EnablePlugin(entry, enable);
         }),
         .copyPath = [entry] { zetui::ui::CopyText(GetCellText(kColumnPath, entry)); },
         .copyDetails = [entry] { zetui::ui::CopyText(GetDetailsToCopy(entry)); },
         .showInFolder = [path = entry.locator.GetPath(),
                          failed = whileAlive([entry](const PluginManagerDialog& dialog) {
                              dialog.TellThatNoFolderOpens(entry.locator);
                          })] { zetui::ui::ShowInFileManager(path, failed); },
         .showLog = whileAlive([entry](const PluginManagerDialog& dialog) { dialog.ShowLog(entry); })});
}

void PluginManagerDialog::TellThatNoFolderOpens(const PluginLocator& locator) const
{
    messagebox::ShowCaution(
        GetSupplier(), zetcore::utility::GetClientName(),
        Localizer::Get().LocalizeWide(
            "$$$/AudioPluginManager/NoFileManagerOpens=No file manager opened this folder: "
            "@0. “Copy Path” in the same menu copies the plug-in's path.",
            {File(locator.GetPath()).GetParent().FullPath()}),
        zetui::ui::WindowVariant(GetNativeWindow()));
}

void PluginManagerDialog::ShowLog(const PluginListEntry& entry) const
{
    const zetui::ui::WindowVariant window(GetNativeWindow());
    const std::wstring name = GetCellText(kColumnName, entry);
    const Dir preferences = Dir::PrefDir();
    const PluginLog log = FindPluginLog(preferences, entry.locator);
    if (log.path.empty()) {
        messagebox::ShowNote(GetSupplier(), zetcore::utility::GetClientName(),
                             Localizer::Get().LocalizeWide(
                                 "$$$/AudioPluginManager/NothingInScanLogs=The latest scans have recorded "
                                 "nothing about @0. Their logs are in this folder: @1",
                                 {name, File(preferences, zetscanprotocol::logFolder).FullPath()}),
                             window);
        return;
    }
    const std::string shown = LastLines(log.part, longestShownLog);
    std::wstring text = log.path;
    if (shown.size() < log.part.size())
        text = Localizer::Get().LocalizeWide("$$$/AudioPluginManager/EndOfScanLog=Only the end is shown: the "
                                             "last @0 KB of @1 KB. The whole log: @2",
                                             {InKilobytes(shown), InKilobytes(log.part), log.path});
    messagebox::ShowText(
        Localizer::Get().LocalizeWide("$$$/AudioPluginManager/ScanLogTitle=Scan Log of @0", {name}),
        text + L"\n\n" + zetcore::string::UTF8to16(shown), window);
}

} // namespace zetaudiopluginhostui
