#pragma once

#include <string>

#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zettesting/TestPlugins.h>

#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {

/// The manager dialog with a VST folder of its own, and with the real scanner.
class DialogScansFixture : public DialogFixture
{
  protected:
    DialogScansFixture()
    {
        std::filesystem::create_directory(plugins);
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({zettesting::ToWide(plugins)});
    }
    std::wstring Copy(const char* plugin, const char* title) const
    {
        return zettesting::ToWide(zettesting::CopyTestPlugin(plugin, plugins, title));
    }
    /// Makes files that are no plug-ins, and bans them.
    void BanManyFiles(int count) const
    {
        for (int i = 0; i < count; ++i) {
            const auto file =
                plugins / ("banned" + std::to_string(i) + std::string(zettesting::ModuleSuffix()));
            zettesting::WriteAll(file, "no plug-in");
            Ban(zettesting::ToWide(file), "The user said so.");
        }
    }
    static zetcore::filesupport::File RegistryFile()
    {
        return {zetcore::filesupport::Dir::PrefDir(), Registry::GetSettingsFileName()};
    }
    static zetcore::filesupport::File BannedFile()
    {
        return {zetcore::filesupport::Dir::PrefDir(), Banned::GetSettingsFileName()};
    }
    static bool AnythingIsBanned() { return TheBanned().BannedBegin() != TheBanned().BannedEnd(); }
    static std::wstring NameOfOnlyPlugin()
    {
        return TheRegistry().PluginInfoBegin() == TheRegistry().PluginInfoEnd()
                   ? std::wstring()
                   : (*TheRegistry().PluginInfoBegin())->GetName();
    }
    /// Moves the preferences folder below a file, where nothing can be written.
    void MakePreferencesInaccessible() const
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    }
    float Width(unsigned column) const { return PluginList().GetHeaderRow()->GetColumnWidth(column); }
    void ScrollToTheEnd() const
    {
        PluginList().ScrollToRow(PluginList().GetRowAt(PluginList().GetRowCount() - 1).get());
        HandleEvents();
    }
    bool IsAtItsTop() const
    {
        return PluginList().IsRowVisible(PluginList().GetRowAt(0).get()) &&
               !PluginList().IsRowVisible(PluginList().GetRowAt(PluginList().GetRowCount() - 1).get());
    }

    const std::filesystem::path plugins = folder / "plug-ins";
};

} // namespace zetaudiopluginhostui
