#pragma once

#include <map>
#include <string>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/filesupport/paths/File.h>

/// The manager's window remembers this between two runs of the program; docs/files.md describes
/// the file.
namespace zetaudiopluginmanager {

/// The values that controls remember, by key.
using ControlValues = std::map<std::string, std::string>;

struct WindowSettings
{
    zetaudiopluginhostui::AudioPluginManagerSettings manager;
    ControlValues controls;
};

std::string WindowSettingsToText(const WindowSettings& settings);
/// Settings that the text does not mention get their defaults. Throws `std::runtime_error`, which names line,
/// element and attribute, for a text that cannot be read. Any thread.
WindowSettings WindowSettingsFromText(const std::string& text);

/// In the preferences folder.
zetcore::filesupport::File WindowSettingsFile();
/// Gives the defaults when there is no file. A file that cannot be read is named on standard error and kept
/// aside, and gives the defaults, too.
WindowSettings LoadWindowSettings();
/// Replaces the file when its settings are different. Of the values of controls it replaces those that are
/// given, and the file keeps its others. Throws `file_exception`.
void SaveWindowSettings(const zetaudiopluginhostui::AudioPluginManagerSettings& manager,
                        const ControlValues& controls = {});

} // namespace zetaudiopluginmanager
