#pragma once

#include <string>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/filesupport/paths/File.h>

/// The settings that the manager dialog remembers between two runs of the program; docs/files.md describes
/// the file.
namespace zetaudiopluginmanager {

std::string WindowSettingsToText(const zetaudiopluginhostui::AudioPluginManagerSettings& settings);
/// What the text does not mention has its default. Throws `std::runtime_error` naming line, element and
/// attribute of what cannot be read. Any thread.
zetaudiopluginhostui::AudioPluginManagerSettings WindowSettingsFromText(const std::string& text);

/// In the preferences folder.
zetcore::filesupport::File WindowSettingsFile();
/// The defaults when there is no file. One that cannot be read is said, kept aside, and gives the defaults.
zetaudiopluginhostui::AudioPluginManagerSettings LoadWindowSettings();
/// Replaces the file when it says anything else. Throws `file_exception`.
void SaveWindowSettings(const zetaudiopluginhostui::AudioPluginManagerSettings& settings);

} // namespace zetaudiopluginmanager
