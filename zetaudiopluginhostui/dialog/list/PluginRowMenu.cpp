#include "dialog/list/PluginRowMenu.h"

#include <zetcore/config/Localizer.h>

namespace zetaudiopluginhostui {

using zetcore::config::Localizer;

zetui::controls::UI_ContextMenu MakePluginRowMenu(const PluginListEntry& entry,
                                                  const PluginRowCommands& commands)
{
    Localizer& texts = Localizer::Get();
    zetui::controls::UI_ContextMenu menu;
    if (!entry.info)
        menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/Reload=&Reload"), commands.reload);
    else if (entry.info->IsEnabled())
        menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/Disable=&Disable"),
                        [enable = commands.enable] { enable(false); });
    else
        menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/Enable=&Enable"),
                        [enable = commands.enable] { enable(true); });
    menu.AddSeparator();
    menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/CopyPath=Copy &Path"),
                    commands.copyPath);
    menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/CopyDetails=&Copy Details"),
                    commands.copyDetails);
    menu.AddSeparator();
    menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/ShowInFolder=Show in &Folder"),
                    commands.showInFolder);
    menu.AddCommand(texts.LocalizeWide("$$$/AudioPluginManager/RowMenu/ShowLog=Show &Log"), commands.showLog);
    return menu;
}

} // namespace zetaudiopluginhostui
